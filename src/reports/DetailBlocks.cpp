#include "reports/DetailBlocks.h"

#include "base/Translate.h"
#include "reports/DetailRecords.h"
#include "reports/FieldText.h"

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

} // namespace

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
        if (!line.value.IsEmpty() && (context.run.IncludePhoneInfo || !line.isPhone)) {
            job.PrintLabelValue(line.label, line.value);
        }
    }
}

void PrintPerson(ReportContext& context, const Recordset& person) {
    print::PrintJob& job = context.job;
    if (person.EndOfFile()) {
        job.PrintParagraph(Translate(u"Unable to open person record"_s));
        return;
    }
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
    if (context.run.IncludePhoneInfo) {
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

void PrintGuestLocation(ReportContext& context, const Recordset* location) {
    if (location != nullptr) {
        context.job.PrintSectionHeading(Translate(u"Guest Extension Reserved"_s));
        PrintLocation(context, *location);
    }
}

void PrintNotes(ReportContext& context, Recordset& notes) {
    const int indent = static_cast<int>(std::lrint(context.program.services().printers.PageWidth() * 0.1));
    QByteArray heading;
    for (; !notes.EndOfFile(); notes.MoveNext()) {
        heading.clear();
        print::AppendUtf8(heading, FieldText(notes["NoteCategory"]));
        heading += ": ";
        print::AppendUtf8(heading, FieldText(notes["Name"]));
        context.job.EnsureRoom(5);
        context.job.PrintSectionHeading(heading, indent);
        context.job.PrintParagraph(FieldText(notes["Note"]));
    }
}

void PrintPersonBlock(ReportContext& context, const QString& lastName, const QString& firstName) {
    PrintPerson(context, *OpenPerson(context.database, lastName, firstName));
}

void PrintGuestExtension(ReportContext& context, qint32 reservation) {
    PrintGuestLocation(context, OpenGuestLocation(context.database, reservation).get());
}

void PrintLocationBlock(ReportContext& context, qint16 asset) {
    PrintLocation(context, *OpenLocation(context.database, asset));
}

void PrintReservationNotes(ReportContext& context, qint32 reservation) {
    PrintNotes(context, *OpenNotes(context.database, reservation));
}

} // namespace velmora
