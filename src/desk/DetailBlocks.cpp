#include "desk/DetailBlocks.h"

#include "base/Translate.h"
#include "data/Helpers.h"
#include "desk/FieldText.h"

#include <array>
#include <cmath>

namespace velmora {

using namespace Qt::StringLiterals;
using engine::Recordset;

namespace {

// "First Last", the blank also when a part is empty.
QByteArray FullName(const FieldText& first, const FieldText& last) {
    QByteArray name;
    print::AppendUtf8(name, first);
    name += ' ';
    print::AppendUtf8(name, last);
    return name;
}

std::unique_ptr<Recordset> OpenLocation(ReportContext& context, qint16 asset) {
    return context.database.OpenRecordset(u"Select * from Asset where AssetID = "_s + QString::number(asset));
}

void PrintLocation(ReportContext& context, const Recordset& location) {
    print::PrintJob& job = context.job;
    if (location.EndOfFile()) {
        job.PrintParagraph("Unable to open location record");
        return;
    }
    struct Line {
        const char* label;
        FieldText value;
        bool isPhone = false;
    };
    const std::array lines{
        Line{"Description", FieldText(location["Description"])}, Line{"Jack", FieldText(location["Jack"]), true},
        Line{"Port", FieldText(location["Port"]), true}, Line{"Station Type", FieldText(location["StationType"]), true},
        Line{"Switch Interface", FieldText(location["SwitchInterface"]), true}};
    job.PrintLabelValue("Location", FieldText(location["Name"]));
    for (const Line& line : lines) {
        if (!line.value.IsEmpty() && (context.state.IncludePhoneInfo || !line.isPhone)) {
            job.PrintLabelValue(line.label, line.value);
        }
    }
}

} // namespace

void PrintPersonBlock(ReportContext& context, const QString& lastName, const QString& firstName) {
    print::PrintJob& job = context.job;
    const auto rows = context.database.OpenRecordset(u"Select * from Person where LastName = "_s + SqlText(lastName) +
                                                     u" and FirstName = "_s + SqlText(firstName));
    if (rows->EndOfFile()) {
        job.PrintParagraph(Translate(u"Unable to open person record"_s));
        return;
    }
    const Recordset& person = *rows;
    const FieldText secretaryFirst(person["SecretaryFirst"]);
    const FieldText secretaryLast(person["SecretaryLast"]);
    const FieldText storage(person["Storage"]);
    const FieldText phone(person["Phone"]);
    const FieldText extension(person["Extension"]);
    const std::array codes{FieldText(person["Code1"]), FieldText(person["Code2"]), FieldText(person["Code3"])};

    job.PrintLabelValue(Translate(u"Reserved by"_s),
                        FullName(FieldText(person["FirstName"]), FieldText(person["LastName"])));
    if (!secretaryLast.IsEmpty() || !secretaryFirst.IsEmpty()) {
        job.PrintLabelValue(Translate(u"Secretary"_s), FullName(secretaryFirst, secretaryLast));
    }
    if (!storage.IsEmpty()) {
        job.PrintLabelValue(Translate(u"Storage"_s), storage);
    }
    if (context.state.IncludePhoneInfo) {
        job.PrintTwoLabelValues(Translate(u"Phone"_s), phone, Translate(u"Extension"_s), extension);
    }
    const std::array codeKeys{u"PersonCode1"_s, u"PersonCode2"_s, u"PersonCode3"_s};
    for (size_t i = 0; i < codeKeys.size(); ++i) {
        const QString caption = Translate(codeKeys.at(i));
        if (caption != codeKeys.at(i)) {
            job.PrintLabelValue(caption, codes.at(i));
        }
    }
}

void PrintGuestExtension(ReportContext& context, qint32 reservation) {
    const auto extensions = context.database.OpenRecordset(u"Select * from Reservation where EventType = "_s +
                                                           SqlText(u"Guest Extension"_s) + u" and Link = "_s +
                                                           QString::number(reservation));
    if (extensions->EndOfFile()) {
        return;
    }
    const auto location = OpenLocation(context, static_cast<qint16>((*extensions)["Asset"].ToInteger()));
    context.job.PrintSectionHeading(Translate(u"Guest Extension Reserved"_s));
    PrintLocation(context, *location);
}

void PrintLocationBlock(ReportContext& context, qint16 asset) {
    PrintLocation(context, *OpenLocation(context, asset));
}

void PrintReservationNotes(ReportContext& context, qint32 reservation) {
    const auto notes =
        context.database.OpenRecordset(u"Select * from [Note] where Reservation = "_s + QString::number(reservation));
    const int indent = static_cast<int>(std::lrint(context.program.services().printers.PageWidth() * 0.1));
    QByteArray heading;
    for (; !notes->EndOfFile(); notes->MoveNext()) {
        heading.clear();
        print::AppendUtf8(heading, FieldText((*notes)["NoteCategory"]));
        heading += ": ";
        print::AppendUtf8(heading, FieldText((*notes)["Name"]));
        context.job.EnsureRoom(5);
        context.job.PrintSectionHeading(heading, indent);
        context.job.PrintParagraph(FieldText((*notes)["Note"]));
    }
}

} // namespace velmora
