#include "print/windows/frmPrintOptions.h"

#include "base/Steps.h"
#include "base/Translate.h"
#include "base/windows/CenterForm.h"
#include "base/windows/Look.h"
#include "base/windows/TranslateForm.h"
#include "print/PrintOptions.h"
#include "print/windows/SampleView.h"
#include "print/windows/frmPrintStyles.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>

namespace velmora::print {

frmPrintOptions::frmPrintOptions(const Services& services, engine::Database& database, QWidget* parent)
    : QDialog(parent), services_(services), database_(database), optLeader{new QRadioButton(QStringLiteral("&None")),
                                                                           new QRadioButton(QStringLiteral("&Boxes")),
                                                                           new QRadioButton(QStringLiteral("&Lines"))},
      Command1(new QPushButton(QStringLiteral("&Set Print Styles"))), cmdOK(new QPushButton(QStringLiteral("OK"))),
      cmdCancel(new QPushButton(QStringLiteral("Cancel"))) {
    setObjectName(QStringLiteral("frmPrintOptions"));
    setWindowTitle(QStringLiteral("Print Options"));
    Command1->setObjectName(QStringLiteral("Command1"));
    Command1->setAutoDefault(false);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdOK->setDefault(true);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(spacing::normal);
    buttons->addStretch();
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(spacing::large, spacing::large, spacing::large, spacing::large);
    column->setSpacing(spacing::large);
    column->addWidget(MakeLeaderFrame());
    column->addWidget(MakeStylesFrame());
    column->addStretch();
    column->addLayout(buttons);

    connect(cmdOK, &QPushButton::clicked, this, &frmPrintOptions::cmdOK_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &frmPrintOptions::cmdCancel_Click);
    connect(Command1, &QPushButton::clicked, this, &frmPrintOptions::Command1_Click);
    Form_Load();
}

QWidget* frmPrintOptions::MakeLeaderFrame() {
    auto* frame = new QGroupBox(QStringLiteral("Leader Options"));
    auto* grid = new QGridLayout(frame);
    grid->setContentsMargins(spacing::large, spacing::normal, spacing::large, spacing::large);
    grid->setHorizontalSpacing(spacing::large);
    grid->setVerticalSpacing(spacing::normal);
    for (qint16 style = 0; style < 3; ++style) {
        QRadioButton* option = optLeader[static_cast<size_t>(style)];
        option->setObjectName(QStringLiteral("optLeader%1").arg(style));
        const QString value = style == 1 ? QStringLiteral("  Value") : QStringLiteral("Value");
        grid->addWidget(option, style, 0);
        grid->addWidget(new SampleView({Translate(QStringLiteral("Caption")), Translate(value), style, 0}), style, 1);
        connect(option, &QRadioButton::clicked, this, [this, style] { optLeader_Click(style); });
    }
    grid->setColumnStretch(0, 1);
    return frame;
}

QWidget* frmPrintOptions::MakeStylesFrame() {
    auto* frame = new QGroupBox(QStringLiteral("Print Styles Based on Caption"));
    auto* row = new QHBoxLayout(frame);
    row->setContentsMargins(spacing::large, spacing::normal, spacing::large, spacing::large);
    Command1->setMinimumWidth(Command1->sizeHint().width() + spacing::large);
    row->addWidget(Command1);
    row->addStretch();
    return frame;
}

void frmPrintOptions::Form_Load() {
    selectedStyle_ = LoadLeaderStyle(services_.userSettings);
    if (selectedStyle_ >= 0 && selectedStyle_ < static_cast<qint16>(optLeader.size())) {
        optLeader[static_cast<size_t>(selectedStyle_)]->setChecked(true);
    }
    TranslateForm(*this);
    adjustSize();
    CenterForm(*this);
}

void frmPrintOptions::optLeader_Click(qint16 index) {
    selectedStyle_ = index;
}

void frmPrintOptions::cmdOK_Click() {
    Steps steps(services_.errors, QStringLiteral("Printing"), QStringLiteral("Print Options"));
    if (steps.Step(QStringLiteral("Saving Print Options"),
                   [&] { SaveLeaderStyle(services_.userSettings, selectedStyle_); })) {
        accept();
    }
}

void frmPrintOptions::cmdCancel_Click() {
    reject();
}

void frmPrintOptions::Command1_Click() {
    frmPrintStyles(services_, database_, this).exec();
}

} // namespace velmora::print
