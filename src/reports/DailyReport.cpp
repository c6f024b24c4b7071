#include "reports/DailyReport.h"

#include "base/Translate.h"
#include "data/AssetRules.h"
#include "data/Helpers.h"
#include "reports/ReportFrame.h"

#include <cmath>
#include <map>

namespace velmora {

using namespace Qt::StringLiterals;
using engine::Database;
using engine::Recordset;
using print::Text;

namespace {

// The stored queries whose records are listed, by DailyVariant.
constexpr std::array queries{u"QReport3", u"QReport4", u"QReport5"};

bool LeavesOut(const DailyRequest& request, const DailyLine& line, const engine::Field& isLocation) {
    const bool starts = request.variant == DailyVariant::Starts;
    // A combined list has both tasks of a reservation, so neither flag alone makes it done.
    const bool hasOneTask = request.variant != DailyVariant::Combined;
    const bool moved = hasOneTask && (starts ? line.movedIn : line.movedOut);
    const bool phoned = hasOneTask && (starts ? line.phoneConnected : line.phoneDisconnected);
    return (request.excludeConferenceRooms && IsConferenceRoom(line.asset)) || IsUnusedName(line.assetName) ||
           (!isLocation.IsNull() && !isLocation.ToBool()) || line.eventType == unusedEvent ||
           !BeginsWith(line.assetName, request.startupArgument) || (request.excludeCompletedMoves && moved) ||
           (request.excludeCompletedPhones && phoned);
}

DailyPerson ReadPerson(Database& database, TextPool& texts, const QString& lastName, const QString& firstName) {
    const auto records =
        database.OpenRecordset(u"Select FirstName, LastName, SecretaryFirst, SecretaryLast, Storage, Phone, Extension, "
                               "Code1, Code2, Code3 from Person where "_s +
                               PersonCondition(lastName, firstName));
    const Recordset& person = *records;
    if (person.EndOfFile()) {
        return {};
    }
    const auto text = [&](const char* field) { return texts.Keep(person[field]); };
    return {.found = true,
            .firstName = text("FirstName"),
            .lastName = text("LastName"),
            .secretaryFirst = text("SecretaryFirst"),
            .secretaryLast = text("SecretaryLast"),
            .storage = text("Storage"),
            .phone = text("Phone"),
            .extension = text("Extension"),
            .codes = {text("Code1"), text("Code2"), text("Code3")}};
}

DailyLocation ReadLocation(Database& database, TextPool& texts, qint64 asset) {
    const auto records = database.OpenRecordset(
        u"Select Name, Description, Jack, Port, StationType, SwitchInterface from Asset where AssetID = "_s +
        QString::number(asset));
    const Recordset& location = *records;
    if (location.EndOfFile()) {
        return {};
    }
    const auto text = [&](const char* field) { return texts.Keep(location[field]); };
    return {.found = true,
            .name = text("Name"),
            .description = text("Description"),
            .jack = text("Jack"),
            .port = text("Port"),
            .stationType = text("StationType"),
            .switchInterface = text("SwitchInterface")};
}

// The lines of a list that are read together.
using Lines = std::span<std::optional<DailyLine>>;

void ForEachLine(Lines lines, const std::function<void(DailyLine&)>& visit) {
    for (std::optional<DailyLine>& line : lines) {
        if (line) {
            visit(*line);
        }
    }
}

// The reservations of the lines as the dialect lists them: "(12, 15)"; at least one.
QString ReservationList(Lines lines) {
    QStringList numbers;
    ForEachLine(lines, [&](const DailyLine& line) { numbers += QString::number(line.reservation); });
    return u'(' + numbers.join(u", "_s) + u')';
}

void ReadGuestLocations(Database& database, TextPool& texts, Lines lines) {
    std::map<qint64, qint16> guests;
    const auto extensions = database.OpenRecordset(
        u"Select Link, Asset from Reservation where EventType = \"Guest Extension\" and Link In "_s +
        ReservationList(lines));
    for (; !extensions->EndOfFile(); extensions->MoveNext()) {
        // The first of a reservation counts.
        guests.emplace((*extensions)["Link"].ToInteger(), static_cast<qint16>((*extensions)["Asset"].ToInteger()));
    }
    ForEachLine(lines, [&](DailyLine& line) {
        const auto guest = guests.find(line.reservation);
        line.guestLocation =
            guest == guests.end() ? std::optional<DailyLocation>() : ReadLocation(database, texts, guest->second);
    });
}

void ReadNotes(Database& database, TextPool& texts, Lines lines) {
    std::map<qint64, std::vector<DailyNote>> read;
    const auto notes = database.OpenRecordset(
        u"Select Reservation, NoteCategory, Name, [Note] from [Note] where Reservation In "_s + ReservationList(lines));
    for (; !notes->EndOfFile(); notes->MoveNext()) {
        const Recordset& note = *notes;
        read[note["Reservation"].ToInteger()].push_back(
            {texts.Keep(note["NoteCategory"]), texts.Keep(note["Name"]), texts.Keep(note["Note"])});
    }
    ForEachLine(lines, [&](DailyLine& line) { line.notes = std::move(read[line.reservation]); });
}

// The line without its details; none when the list leaves it out.
std::optional<DailyLine> ReadLine(const DailyRequest& request, const Recordset& record, TextPool& texts) {
    DailyLine line;
    line.reservation = static_cast<qint32>(record["ID"].ToInteger());
    line.asset = static_cast<qint32>(record["AssetID"].ToInteger());
    line.start = record["Start"].ToDateTime();
    line.end = record["End"].ToDateTime();
    line.movedIn = record["SLockStart"].ToBool();
    line.movedOut = record["SLockEnd"].ToBool();
    line.phoneConnected = record["TLockStart"].ToBool();
    line.phoneDisconnected = record["TLockEnd"].ToBool();
    ReadTexts<DailyLine>(record, dailyTexts, line, texts);
    return LeavesOut(request, line, record["Location"]) ? std::nullopt : std::optional(std::move(line));
}

// By DailyVariant.
constexpr std::array titles{u"Reservation Starts", u"Reservation Ends", u"Reservation Starts and Ends"};

// Both texts with something between them.
QByteArray Joined(Text first, const char* between, Text second) {
    QByteArray text;
    print::AppendUtf8(text, first);
    text += between;
    print::AppendUtf8(text, second);
    return text;
}

// Prints the lines of a daily list into the report that is open.
class DailyPrinter {
public:
    DailyPrinter(ReportContext& context, const DailyRequest& request, QString printedAt)
        : job_(context.job), locale_(context.program.services().localeText),
          pageWidth_(context.program.services().printers.PageWidth()), request_(request),
          combined_(request.variant == DailyVariant::Combined),
          title_(Translate(QString::fromUtf16(titles.at(static_cast<size_t>(request.variant))))),
          printedAt_(std::move(printedAt)) {}

    void Print(const DailyRows& rows) {
        if (!request_.onePage) {
            job_.PrintReportTitle(title_, request_.startupArgument, printedAt_);
        }
        for (const DailyLine& line : rows.rows) {
            PrintLocationHeading(line);
            PrintReservationLine(line);
            if (request_.brief) {
                PrintBriefBody(line);
            } else {
                PrintFullBody(line);
            }
            PrintReservationNotes(line);
            if (!request_.brief) {
                // Sets this reservation off from the next.
                job_.PrintSectionHeading({});
            }
        }
    }

private:
    void PrintLocationHeading(const DailyLine& line) {
        const bool isLast = line.assetName == lastAssetName_;
        lastAssetName_ = line.assetName;
        if (combined_ && isLast) {
            return;
        }
        if (request_.onePage) {
            job_.PrintReportTitle(title_, line.assetName, printedAt_);
        } else if (combined_) {
            job_.PrintSectionHeading(line.assetName);
        }
    }

    // "Budget: From 3/6/2026 9:00 AM To 3/6/2026 5:00 PM"
    QByteArray ReservationText(const DailyLine& line) const {
        const QString start = line.start ? locale_.GeneralDate(*line.start) : QString();
        QByteArray text = Joined(line.name, ": From ", start);
        if (line.end && Fields(*line.end).hour != 0) {
            return Joined(text, " To ", locale_.GeneralDate(*line.end));
        }
        // An end in the hour after midnight closes the day before.
        return Joined(text, " Through ", line.end ? locale_.GeneralDate(*line.end - std::chrono::days(1)) : QString());
    }

    void PrintReservationLine(const DailyLine& line) {
        const QByteArray text = ReservationText(line);
        if (request_.onePage) {
            job_.PrintSectionHeading(text);
        } else if (combined_) {
            job_.PrintSectionHeading(text, IndentBy(0.05));
        } else {
            job_.PrintSectionHeading(Joined(text, " In ", line.assetName));
        }
    }

    void PrintBriefBody(const DailyLine& line) {
        job_.PrintTableRow({line.organization, line.eventType, Joined({}, "Storage: ", line.storage),
                            Joined({}, "Ext. ", line.extension), Joined({}, "Rm. Ext. ", line.defaultExtension)});
    }

    void PrintFullBody(const DailyLine& line) {
        job_.PrintTwoLabelValues(Translate(u"Organization"_s), line.organization, Translate(u"Space Type"_s),
                                 line.eventType);
        job_.PrintTwoLabelValues(Translate(u"Permanent"_s), line.permanent, Translate(u"Attendees"_s), line.attendees);
        if (line.person) {
            PrintPersonBlock(*line.person);
        }
        if (request_.includePhone) {
            PrintPhoneLines(line);
        }
        if (line.guestLocation) {
            PrintGuestExtension(*line.guestLocation);
        }
    }

    void PrintFilled(const char* label, QUtf8StringView value) {
        if (!value.isEmpty()) {
            job_.PrintLabelValue(label, value);
        }
    }

    void PrintFilledPair(const char* label1, QUtf8StringView value1, const char* label2, QUtf8StringView value2) {
        if (!value1.isEmpty() || !value2.isEmpty()) {
            job_.PrintTwoLabelValues(label1, value1, label2, value2);
        }
    }

    void PrintPhoneLines(const DailyLine& line) {
        PrintFilledPair("Jack", line.jack, "Port", line.port);
        PrintFilledPair("Default Extension", line.defaultExtension, "Station Type", line.stationType);
        PrintFilled("Switch Interface", line.switchInterface);
    }

    // The optional codes stand under the captions that the dictionary gives them.
    void PrintPersonBlock(const DailyPerson& person) {
        if (!person.found) {
            job_.PrintParagraph(Translate(u"Unable to open person record"_s));
            return;
        }
        job_.PrintLabelValue(Translate(u"Reserved by"_s), Joined(person.firstName, " ", person.lastName));
        if (!person.secretaryLast.isEmpty() || !person.secretaryFirst.isEmpty()) {
            job_.PrintLabelValue(Translate(u"Secretary"_s), Joined(person.secretaryFirst, " ", person.secretaryLast));
        }
        if (!person.storage.isEmpty()) {
            job_.PrintLabelValue(Translate(u"Storage"_s), person.storage);
        }
        if (request_.includePhone) {
            job_.PrintTwoLabelValues(Translate(u"Phone"_s), person.phone, Translate(u"Extension"_s), person.extension);
        }
        const std::array codeKeys{u"PersonCode1"_s, u"PersonCode2"_s, u"PersonCode3"_s};
        for (size_t i = 0; i < codeKeys.size(); ++i) {
            const QString caption = Translate(codeKeys.at(i));
            if (caption != codeKeys.at(i)) {
                job_.PrintLabelValue(caption, person.codes.at(i));
            }
        }
    }

    void PrintGuestExtension(const DailyLocation& location) {
        job_.PrintSectionHeading(Translate(u"Guest Extension Reserved"_s));
        PrintLocationBlock(location);
    }

    void PrintLocationBlock(const DailyLocation& location) {
        if (!location.found) {
            job_.PrintParagraph("Unable to open location record");
            return;
        }
        job_.PrintLabelValue("Location", location.name);
        PrintFilled("Description", location.description);
        if (request_.includePhone) {
            PrintFilled("Jack", location.jack);
            PrintFilled("Port", location.port);
            PrintFilled("Station Type", location.stationType);
            PrintFilled("Switch Interface", location.switchInterface);
        }
    }

    void PrintReservationNotes(const DailyLine& line) {
        for (const DailyNote& note : line.notes) {
            job_.EnsureRoom(5);
            job_.PrintSectionHeading(Joined(note.category, ": ", note.name), IndentBy(0.1));
            job_.PrintParagraph(note.text);
        }
    }

    int IndentBy(double share) const { return static_cast<int>(std::lrint(pageWidth_ * share)); }

    print::PrintJob& job_;
    const LocaleText& locale_;
    const int pageWidth_;
    const DailyRequest& request_;
    const bool combined_;
    const QString title_;
    const QString printedAt_;
    // Of the line printed last; empty before the first.
    QUtf8StringView lastAssetName_;
};

} // namespace

DailyRows GatherDaily(const DailyRequest& request, const std::optional<ReportDays>& days, const Gathering& gathering) {
    Database& database = gathering.database;
    const auto read = [&](const Recordset& record, TextPool& texts) { return ReadLine(request, record, texts); };
    const auto complete = [&](Lines lines, TextPool& texts, const Attempt& attempt) {
        if (!std::ranges::any_of(lines, [](const auto& line) { return line.has_value(); })) {
            return;
        }
        if (!request.brief) {
            ForEachLine(lines, [&](DailyLine& line) {
                attempt([&] {
                    line.person = ReadPerson(database, texts, line.lastName.toString(), line.firstName.toString());
                });
            });
        }
        if (!request.brief && request.includePhone) {
            attempt([&] { ReadGuestLocations(database, texts, lines); });
        }
        if (request.includeNotes) {
            attempt([&] { ReadNotes(database, texts, lines); });
        }
    };
    return RowGatherer<DailyLine>(gathering, read, complete)
        .GatherOverDays(queries.at(static_cast<size_t>(request.variant)), days);
}

void PrintDailyReport(ReportContext& context, const DailyRequest& request) {
    ReportFrame frame(context, u"Print Daily Report"_s);
    if (!frame.Start()) {
        return;
    }
    const Services& services = context.program.services();
    std::optional<ReportDays> days;
    frame.Step([&] { days = DailyReportDays(request.days, services.clock.Today(), services.localeText); });
    const QString printedAt = frame.PrintedAt(u"Printed at:"_s, days);
    frame.PreparePrinter();
    context.run.IncludePhoneInfo = request.includePhone;
    const DailyRows rows = GatherDaily(request, days, frame.Gather());
    frame.ShowSending(rows);
    DailyPrinter(context, request, printedAt).Print(rows);
    frame.End(rows, u"Cancelled after %1 of %2 reservations"_s);
}

} // namespace velmora
