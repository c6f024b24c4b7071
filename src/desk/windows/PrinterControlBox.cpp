#include "desk/windows/PrinterControlBox.h"

#include "base/Steps.h"
#include "base/Translate.h"
#include "desk/windows/PageParts.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFontDatabase>
#include <QFormLayout>
#include <QLabel>
#include <QSignalBlocker>

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

constexpr qint16 preview = 1;

struct Place {
    QString application = u"Velmora"_s;
    QString section = u"Printer Settings"_s;
};

} // namespace

PrinterControlBox::PrinterControlBox(const Services& services, QWidget* parent)
    : QWidget(parent), services_(services), settings_(Stored(services.userSettings)), Destination(new QComboBox),
      PrinterName(new QComboBox), PrinterFont(new QComboBox),
      Continuous(NewControl<QCheckBox>(u"Continuous"_s, u"Continuo&us, without page breaks"_s)),
      lblPrinter(NewHint(u"lblPrinter"_s, {})) {
    Destination->setObjectName(u"Destination"_s);
    PrinterName->setObjectName(u"PrinterName"_s);
    PrinterFont->setObjectName(u"PrinterFont"_s);
    const std::pair<QString, int> destinations[] = {
        {u"Preview"_s, preview}, {u"Printer"_s, 0}, {u"Mail"_s, 2}, {u"Text file"_s, 3}, {u"HTML file"_s, 4}};
    for (const auto& [caption, number] : destinations) {
        Destination->addItem(Translate(caption), number);
    }
    constexpr int fieldWidth = 320;
    auto* form = new QFormLayout(this);
    form->setContentsMargins(0, 0, 0, 0);
    form->setHorizontalSpacing(spacing::large);
    form->setVerticalSpacing(spacing::normal);
    for (QComboBox* box : {Destination, PrinterName, PrinterFont}) {
        box->setMinimumWidth(fieldWidth);
    }
    form->addRow(u"&Send reports to"_s, Destination);
    form->addRow(u"Printer &name"_s, PrinterName);
    form->addRow(QString(), lblPrinter);
    form->addRow(u"&Font"_s, PrinterFont);
    form->addRow(QString(), Continuous);
    SetSettings(settings_);
    connect(Destination, &QComboBox::activated, this, &PrinterControlBox::Keep);
    connect(PrinterName, &QComboBox::activated, this, &PrinterControlBox::Keep);
    connect(PrinterFont, &QComboBox::activated, this, &PrinterControlBox::Keep);
    connect(Continuous, &QCheckBox::clicked, this, &PrinterControlBox::Keep);
}

PrinterControl PrinterControlBox::Stored(const UserSettings& settings) {
    const Place place;
    const auto read = [&](const QString& key) { return settings.Read(place.application, place.section, key); };
    PrinterControl control;
    bool isNumber = false;
    const short destination = read(u"Destination"_s).value_or(QString()).toShort(&isNumber);
    control.Destination = isNumber && destination >= 0 && destination <= 4 ? destination : preview;
    control.ShowPreview = control.Destination == preview;
    control.Continuous = read(u"Continuous"_s) == u"1"_s;
    control.PrinterName = read(u"Printer"_s).value_or(QString());
    control.PrinterFont = read(u"Font"_s).value_or(QString());
    return control;
}

PrinterControl PrinterControlBox::Settings() const {
    return settings_;
}

void PrinterControlBox::SetSettings(const PrinterControl& settings) {
    settings_ = settings;
    settings_.ShowPreview = settings_.Destination == preview;
    const auto show = [](QComboBox* box, const QString& text) {
        if (box->findText(text) < 0) {
            box->insertItem(0, text);
        }
        box->setCurrentIndex(box->findText(text));
    };
    Destination->setCurrentIndex(std::max(0, Destination->findData(settings_.Destination)));
    show(PrinterName, settings_.PrinterName);
    show(PrinterFont, settings_.PrinterFont);
    Continuous->setChecked(settings_.Continuous);
}

void PrinterControlBox::showEvent(QShowEvent* event) {
    ListPrinters();
    if (PrinterFont->count() <= 1) {
        ListFonts();
    }
    QWidget::showEvent(event);
}

void PrinterControlBox::ListPrinters() {
    const Printers& printers = services_.printers;
    QStringList names;
    try {
        names = printers.DeviceNames();
        if (settings_.PrinterName.isEmpty()) {
            settings_.PrinterName = printers.CurrentDevice();
        }
    } catch (const std::exception&) { // NOLINT(bugprone-empty-catch)
        // The line below the box says that the printer is not there.
    }
    PrinterName->clear();
    PrinterName->addItems(names);
    SetSettings(settings_);
    TellPrinter();
}

void PrinterControlBox::ListFonts() {
    const QString known =
        settings_.PrinterFont.isEmpty() ? services_.printers.CurrentFont().family : settings_.PrinterFont;
    PrinterFont->clear();
    for (const QString& family : QFontDatabase::families()) {
        if (!QFontDatabase::isPrivateFamily(family)) {
            PrinterFont->addItem(family);
        }
    }
    settings_.PrinterFont = known;
    SetSettings(settings_);
}

void PrinterControlBox::TellPrinter() {
    QString remark;
    try {
        if (!services_.printers.DeviceNames().contains(settings_.PrinterName)) {
            remark = Translate(u"\"%1\" is not installed. Reports are made for \"%2\"."_s)
                         .arg(settings_.PrinterName, services_.printers.CurrentDevice());
        }
    } catch (const std::exception& failure) {
        remark = QString::fromUtf8(failure.what());
    }
    lblPrinter->setText(remark);
    lblPrinter->setVisible(!remark.isEmpty());
}

void PrinterControlBox::Keep() {
    settings_.Destination = static_cast<qint16>(Destination->currentData().toInt());
    settings_.ShowPreview = settings_.Destination == preview;
    settings_.PrinterName = PrinterName->currentText();
    settings_.PrinterFont = PrinterFont->currentText();
    settings_.Continuous = Continuous->isChecked();
    const Place place;
    const auto write = [&](const QString& key, const QString& value) {
        services_.userSettings.Write(place.application, place.section, key, value);
    };
    Steps steps(services_.errors, u"Service Administration"_s, u"Printer Settings"_s);
    steps.Step(u"Keeping Printer Settings"_s, [&] {
        write(u"Destination"_s, QString::number(settings_.Destination));
        write(u"Printer"_s, settings_.PrinterName);
        write(u"Font"_s, settings_.PrinterFont);
        write(u"Continuous"_s, settings_.Continuous ? u"1"_s : u"0"_s);
    });
    TellPrinter();
}

} // namespace velmora
