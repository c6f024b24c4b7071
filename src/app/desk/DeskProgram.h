#pragma once

#include "base/windows/WindowServices.h"
#include "desk/windows/DeskWindows.h"
#include "desk/windows/frmScmain.h"
#include "ops/ErrorReport.h"
#include "ops/windows/frmHelp.h"
#include "ops/windows/frmMailText.h"
#include "ops/windows/frmProgress.h"
#include "platform/LogFile.h"
#include "platform/NativeUserSettings.h"
#include "platform/SystemClock.h"
#include "platform/printers/SystemPrinters.h"
#include "print/ReportFile.h"
#include "print/pages/PageWriters.h"
#include "print/windows/frmPrintPreview.h"

namespace velmora::desk {

// The desk: its services, in the order in which they need each other, its print job and its main window. There is an
// application before it is made.
class DeskProgram {
public:
    // `startupArgument` is what follows the program's name on its command line.
    explicit DeskProgram(const QString& startupArgument);

    // Shows the start-up window, then the main window. Throws StopProgram when the program must not run.
    void Start();

private:
    print::PrintServices JobServices();
    void ShowNotes(qint32 reservation, QWidget* owner);
    QString HelpTopic() const;

    LocaleText locale_;
    SystemClock clock_;
    LogFile log_;
    WindowDialogs dialogs_;
    ErrorReport errors_;
    WindowEventLoop eventLoop_;
    printers::SystemPrinters printers_;
    WindowProgress progress_;
    WindowMail mail_;
    DeskWindows windows_;
    NativeUserSettings settings_;
    Program program_;
    ProgramInstaller installer_;
    print::DialogDelivery delivery_;
    print::PageOutput output_;
    print::WindowPreviews previews_;
    print::PageWriters pages_;
    print::PrintJob job_;
    print::PrintJob notesJob_;
    HelpKey help_;
    std::unique_ptr<frmScmain> main_;
};

} // namespace velmora::desk
