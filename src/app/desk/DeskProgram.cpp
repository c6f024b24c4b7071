#include "app/desk/DeskProgram.h"

#include "desk/windows/frmIntro.h"
#include "notes/windows/frmNotes.h"
#include "ops/SharedDatabase.h"
#include "ops/TranslationLoader.h"
#include "platform/printers/CupsQueues.h"
#include "print/PrintStyles.h"
#include "runner/RunRequest.h"

#include <QApplication>

namespace velmora::desk {

using namespace Qt::StringLiterals;

DeskProgram::DeskProgram(const QString& startupArgument)
    : locale_(QLocale::system()), log_(LogFile::DefaultPath(), clock_), errors_(dialogs_, log_),
      printers_(std::make_unique<printers::CupsQueues>(), locale_.Locale()),
      program_({dialogs_, clock_, eventLoop_, printers_, progress_, mail_, errors_, windows_, settings_, log_,
                QCoreApplication::applicationFilePath(), startupArgument, locale_},
               u"Service Administration"_s),
      installer_(program_), delivery_(program_.services()), output_(printers_, printers_, delivery_),
      previews_(program_.services(), output_), pages_(program_.services(), output_, previews_, program_.Title()),
      job_(JobServices()), notesJob_(JobServices()), help_([this] { return HelpTopic(); }) {}

print::PrintServices DeskProgram::JobServices() {
    return {program_.services(), delivery_, [] { return print::ReadPrintAttributes(OpenedDatabase()); }, &pages_};
}

void DeskProgram::Start() {
    LoadTranslations();
    main_ = std::make_unique<frmScmain>(
        DeskParts{program_, job_,
                  [this](ReportContext& context, const ReportRequest& request) {
                      runner::RunRequest(context, JobServices(), request);
                  },
                  [this](qint32 reservation, QWidget* owner) { ShowNotes(reservation, owner); }});
    frmIntro intro(program_);
    intro.Form_Load([this] { main_->Form_Load(); }, [this] { main_->show(); });
}

void DeskProgram::ShowNotes(qint32 reservation, QWidget* owner) {
    // To where the last report went; a report that is running keeps its job to itself.
    notesJob_.SetOutputTarget(static_cast<qint16>(job_.Choice().OutputTarget));
    notesJob_.SetPreviewMode(job_.Choice().PreviewMode);
    OpenNotes({program_, OpenedDatabase(), notesJob_}, reservation, owner);
}

QString DeskProgram::HelpTopic() const {
    const QWidget* window = QApplication::activeWindow();
    return window == nullptr || window == main_.get() ? main_->CurrentPageKey() : window->objectName();
}

} // namespace velmora::desk
