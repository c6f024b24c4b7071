#include "desk/windows/frmIntro.h"

#include "base/Steps.h"
#include "base/windows/CenterForm.h"
#include "base/windows/Look.h"
#include "data/Configuration.h"
#include "ops/ErrorReport.h"
#include "ops/Hold.h"

#include <QApplication>
#include <QLabel>
#include <QVBoxLayout>

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

constexpr int leastWidth = 420;

} // namespace

frmIntro::frmIntro(Program& program)
    : QWidget(nullptr, Qt::SplashScreen), program_(program), lblTitle(new QLabel(this)), lblVersion(new QLabel(this)),
      lblDatabase(new QLabel(this)) {
    setObjectName(u"frmIntro"_s);
    setAttribute(Qt::WA_QuitOnClose, false);
    lblTitle->setObjectName(u"lblTitle"_s);
    lblVersion->setObjectName(u"lblVersion"_s);
    lblDatabase->setObjectName(u"lblDatabase"_s);
    lblDatabase->setWordWrap(true);
    lblDatabase->setTextFormat(Qt::PlainText);
    QFont large = lblTitle->font();
    large.setPointSizeF(2 * large.pointSizeF());
    lblTitle->setFont(large);
    QPalette quiet = palette();
    quiet.setColor(QPalette::WindowText, QuietColour(quiet));
    lblVersion->setPalette(quiet);
    lblDatabase->setPalette(quiet);
    setMinimumWidth(leastWidth);
    auto* column = new QVBoxLayout(this);
    constexpr int margin = 2 * spacing::large;
    column->setContentsMargins(margin, margin, margin, margin);
    column->setSpacing(spacing::normal);
    column->addWidget(lblTitle);
    column->addWidget(lblVersion);
    column->addSpacing(spacing::large);
    column->addWidget(lblDatabase);
}

void frmIntro::Form_Load(const std::function<void()>& loadMain, const std::function<void()>& showMain) {
    Steps steps(program_.services().errors, u"Intro Form"_s, u"Load"_s);
    lblVersion->setText(u"Version "_s + QCoreApplication::applicationVersion() + u" - 32 Bit"_s);
    lblTitle->setText(u"Service Administration"_s);
    steps.Step({}, [] { CheckHold(); });
    lblDatabase->setText(u"Database "_s + ConfiguredSite().Location());
    adjustSize();
    CenterForm(*this);
    ShowNow();
    if (!steps.Step({}, loadMain)) {
        // There is nothing to show: the main window has neither its pages nor a database.
        ExitProgram();
        throw StopProgram{1};
    }
    hide();
    showMain();
    program_.services().eventLoop.SetPointer(Pointer::Default);
    close();
}

void frmIntro::ShowNow() {
    show();
    repaint();
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

} // namespace velmora
