#pragma once

#include "base/Program.h"
#include "desk/windows/DeskState.h"

#include <QWidget>

class QCheckBox;
class QComboBox;
class QLabel;

namespace velmora {

// The printer control: where reports go, which printer and font they are made for, and whether they run without page
// breaks. Each choice is kept for the user at once; at first reports go to the preview.
class PrinterControlBox : public QWidget {
    Q_OBJECT

public:
    explicit PrinterControlBox(const Services& services, QWidget* parent = nullptr);

    // The preview is shown exactly when it is the destination.
    PrinterControl Settings() const;
    void SetSettings(const PrinterControl& settings);
    // What the user chose before.
    static PrinterControl Stored(const UserSettings& settings);

protected:
    // Printers and fonts are looked up when they are on view for the first time, and printers each time anew.
    void showEvent(QShowEvent* event) override;

private:
    void ListPrinters();
    void ListFonts();
    void Keep();
    void TellPrinter();

    const Services& services_;
    PrinterControl settings_;
    QComboBox* Destination;
    QComboBox* PrinterName;
    QComboBox* PrinterFont;
    QCheckBox* Continuous;
    QLabel* lblPrinter;
};

} // namespace velmora
