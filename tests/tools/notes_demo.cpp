// Shows the notes of a demo site's reservation for trying them by hand: notes_demo FOLDER [RESERVATION] [dark] [many]
// Makes the site where the folder has none. Without a number it takes a reservation that has notes. "many" gives it
// 5,000. Two of them on one folder are two desks.
#include "base/windows/Look.h"
#include "base/windows/WindowDialogs.h"
#include "base/windows/WindowEventLoop.h"
#include "data/Configuration.h"
#include "site/Site.h"
#include "demo/CreateDemoSite.h"
#include "notes/windows/WindowNotes.h"
#include "ops/ErrorReport.h"
#include "platform/NativeUserSettings.h"
#include "platform/SystemClock.h"
#include "print/DialogDelivery.h"
#include "print/ReadPrintAttributes.h"
#include "print/windows/WindowPreviews.h"
#include "tests/print_windows/PreviewReports.h"
#include "tests/support/Fakes.h"

#include <QApplication>
#include <QFileInfo>
#include <QPushButton>
#include <QVBoxLayout>

#include <cstdio>

using namespace velmora;
using namespace Qt::StringLiterals;

namespace {

class OnlyPreviews : public print::PageWriterFactory {
public:
    std::unique_ptr<print::ReportWriter> MakeWriter(print::JobState&) override {
        throw ProgramError(ErrorNumber::Unavailable, u"This demo prints into the preview alone."_s);
    }
};

qint32 ReservationWithNotes(engine::Database& database, const QStringList& words) {
    for (const QString& word : words) {
        if (word.toInt() > 0) {
            return word.toInt();
        }
    }
    return static_cast<qint32>(
        database.OpenRecordset(u"Select Top 1 Reservation from [Note] Order by Reservation")->FieldAt(0).ToInteger());
}

void GiveMany(engine::Database& database, qint32 reservation) {
    engine::Transaction together(database);
    auto notes = database.OpenRecordset(u"Select * from [Note] where ID = 0", engine::RecordsetKind::Updatable);
    for (int i = 0; i < 5000; ++i) {
        notes->AddNew();
        notes->Set("Reservation", Value(qint64{reservation}));
        notes->Set("Name", Value(u"Note %1"_s.arg(i)));
        notes->Set("NoteCategory", Value(u"Catering"_s));
        notes->Set("Note", Value(u"Coffee for %1 persons\nat the door"_s.arg(i)));
        notes->Set("Cost", Value(i * 0.25));
        notes->Update();
    }
    together.Commit();
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    const QStringList words = application.arguments();
    ApplyLook(application, words.contains(u"dark"_s) ? Shade::Dark : Shade::Light);
    SystemClock clock;
    const QString folder = words.value(1, u"notes-demo"_s);
    const Site site(folder);
    if (!site.Exists()) {
        demo::CreateDemoSite(folder, {demo::Tier::Typical, clock.Today()});
    }

    fakes::TestProgram fakes;
    WindowDialogs dialogs;
    WindowEventLoop eventLoop;
    ErrorReport reporter(dialogs, fakes.log);
    NativeUserSettings userSettings;
    const Services& known = fakes.program.services();
    const Services services{dialogs,
                            clock,
                            eventLoop,
                            known.printers,
                            known.progress,
                            known.mail,
                            reporter,
                            known.windows,
                            known.process,
                            userSettings,
                            known.log,
                            {},
                            {},
                            LocaleText(QLocale::system())};
    Program program(services, u"Service Administration"_s);

    const auto database = site.Open();
    print::FakePagePrinter printer;
    print::WindowPreviews previews(services, printer);
    print::DialogDelivery delivery(services);
    OnlyPreviews none;
    print::PreviewPages pages(services, previews, none, u"Demo"_s);
    print::PrintJob job({services, delivery, [&] { return print::ReadPrintAttributes(*database); }, &pages});
    job.SetOutputTarget(1);

    const qint32 reservation = ReservationWithNotes(*database, words);
    if (words.contains(u"many"_s)) {
        GiveMany(*database, reservation);
    }
    const NotesContext context{program, *database, job};
    QWidget owner;
    owner.setWindowTitle(u"Desk"_s);
    auto* open = new QPushButton(u"Notes of %1"_s.arg(reservation));
    (new QVBoxLayout(&owner))->addWidget(open);
    QObject::connect(open, &QPushButton::clicked, &owner, [&] {
        OpenNotes(context, reservation, &owner);
    });
    owner.resize(300, 120);
    owner.show();
    return application.exec();
}
