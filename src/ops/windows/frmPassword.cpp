#include "ops/windows/frmPassword.h"

#include "base/Translate.h"
#include "base/windows/CenterForm.h"
#include "base/windows/Look.h"
#include "base/windows/TranslateForm.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>

namespace velmora {

using namespace Qt::StringLiterals;

frmPassword::frmPassword(const mail::SmtpServer& server, bool refused, QWidget* parent)
    : QDialog(parent), txtPassword(new QLineEdit), chkRemember(new QCheckBox(u"&Remember the password"_s)) {
    setObjectName(u"frmPassword"_s);
    setWindowTitle(u"Mail Password"_s);
    txtPassword->setObjectName(u"txtPassword"_s);
    txtPassword->setEchoMode(QLineEdit::Password);
    txtPassword->setMinimumWidth(260);
    chkRemember->setObjectName(u"chkRemember"_s);

    const QString question = refused ? u"The mail server %1 did not take the password. Enter it again."_s
                                     : u"The mail server %1 asks for a password."_s;
    auto* text = new QLabel(Translate(question).arg(server.host));
    text->setWordWrap(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* form = new QFormLayout;
    form->setHorizontalSpacing(spacing::large);
    form->setVerticalSpacing(spacing::normal);
    auto* user = new QLabel(server.user);
    user->setTextFormat(Qt::PlainText);
    form->addRow(u"User"_s, user);
    form->addRow(u"&Password"_s, txtPassword);
    form->addRow(QString(), chkRemember);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(spacing::large, spacing::large, spacing::large, spacing::large);
    column->setSpacing(spacing::large);
    column->addWidget(text);
    column->addLayout(form);
    column->addStretch();
    column->addWidget(buttons);
    TranslateForm(*this);
    adjustSize();
    CenterForm(*this);
}

PasswordAnswer frmPassword::Result() const {
    return {txtPassword->text(), chkRemember->isChecked()};
}

} // namespace velmora
