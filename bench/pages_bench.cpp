// Printing a report of many rows into a PDF file: recording through the layout operations and writing, against a bare
// painter that draws the same texts, at positions worked out beforehand, into the same kind of file. Times are
// processor times, since other work on the machine would blur the ratios; memory is measured in processes of their own.
#include "bench/Measure.h"
#include "platform/pages/PdfFile.h"
#include "print/pages/PageWriter.h"
#include "print/pages/PageWriters.h"

#include <QBuffer>
#include <QFile>
#include <QGuiApplication>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QProcess>

#include <algorithm>
#include <cstdio>
#include <ctime>

using namespace velmora;
using namespace velmora::pages;

namespace {

// What fits on a page at 9 points.
constexpr int rowsPerPage = 71;
constexpr int cellsPerRow = 5;
constexpr int reportPages = 250;

std::vector<QString> Texts(int rows) {
    std::vector<QString> texts;
    texts.reserve(static_cast<size_t>(rows) * cellsPerRow);
    for (int i = 0; i < rows * cellsPerRow; ++i) {
        texts.push_back(QStringLiteral("Cell %1 of room B%2").arg(i * 7919 % 10000).arg(i % 400));
    }
    return texts;
}

// Lays the texts out as rows and hands the finished pages over, as a print job does.
void Record(const std::vector<QString>& texts, const std::function<void(const Document&)>& deliver) {
    print::JobState state;
    print::PageTarget target;
    target.geometry = {12240, 15840, 360, 360, 11520, 15120, 2.4, 2.4};
    target.font = print::FontOf({DefaultFamily(), 9, false, false, false, false});
    print::PageWriter writer(state, target, QStringLiteral("Bench"));
    state.TabStops = {2304, 4608, 6912, 9216};
    for (size_t i = 0; i + cellsPerRow <= texts.size(); i += cellsPerRow) {
        const std::vector<print::Text> cells(texts.begin() + static_cast<std::ptrdiff_t>(i),
                                             texts.begin() + static_cast<std::ptrdiff_t>(i + cellsPerRow));
        writer.PrintTableRow(cells, print::RowStyle::Wrapped);
    }
    deliver(writer.Pages());
}

Document Recorded(const std::vector<QString>& texts) {
    Document result;
    Record(texts, [&](const Document& document) { result = document; });
    return result;
}

qsizetype RecordedAndWritten(const std::vector<QString>& texts) {
    qsizetype size = 0;
    Record(texts, [&](const Document& document) { size = PdfBytes(document).size(); });
    return size;
}

struct Placed {
    QPointF at;
    QString text;
};
using PlacedPages = std::vector<std::vector<Placed>>;

PlacedPages PlacesOf(const Document& document) {
    const double ascent = PageFont(document.fonts[0]).Ascent();
    PlacedPages pages;
    for (const Page& page : document.pages) {
        std::vector<Placed>& placed = pages.emplace_back();
        for (const Item& item : page.Items()) {
            placed.push_back({QPointF(item.x, item.y + ascent), page.Text(item).toString()});
        }
    }
    return pages;
}

QByteArray Bare(const PlacedPages& pages, const FontSpec& font) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setResolution(1440);
    writer.setPageSize(QPageSize(QSizeF(612, 792), QPageSize::Point, QString(), QPageSize::ExactMatch));
    writer.setPageMargins(QMarginsF(0, 0, 0, 0));
    QPainter painter(&writer);
    for (size_t i = 0; i < pages.size(); ++i) {
        if (i > 0) {
            writer.newPage();
        }
        painter.setFont(PageFont::MakeFont(font));
        for (const Placed& placed : pages[i]) {
            painter.drawText(placed.at, placed.text);
        }
    }
    painter.end();
    return buffer.data();
}

double Seconds(const auto& work) {
    const std::clock_t start = std::clock();
    work();
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

// Megabytes that a line of the process's status tells.
double Status(const char* line) {
    QFile file(QStringLiteral("/proc/self/status"));
    file.open(QIODevice::ReadOnly);
    for (const QByteArray& text : file.readAll().split('\n')) {
        if (text.startsWith(line)) {
            return text.mid(static_cast<qsizetype>(qstrlen(line))).trimmed().split(' ').front().toDouble() / 1024;
        }
    }
    return 0;
}

// What a process of its own measures: its memory after the work that `what` names.
int MeasureMemory(const QString& what) {
    Document kept;
    if (what == u"report") {
        RecordedAndWritten(Texts(reportPages * rowsPerPage));
        std::printf("%.1f", Status("VmHWM:"));
        return 0;
    }
    if (what == u"kept") {
        kept = Recorded(Texts(255 * rowsPerPage));
    } else {
        kept = Recorded(Texts(1));
    }
    std::printf("%.1f", Status("VmRSS:"));
    return kept.pages.empty() ? 1 : 0;
}

double Memory(const QString& what) {
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationFilePath(), {what});
    process.waitForFinished(-1);
    return process.readAllStandardOutput().toDouble();
}

bool Row(const char* what, double measured, double limit, const char* unit) {
    std::printf("%-58s %8.2f %-6s limit %.2f%s\n", what, measured, unit, limit, measured <= limit ? "" : "  EXCEEDED");
    return measured <= limit;
}

int MeasureAll() {
    const auto texts = Texts(reportPages * rowsPerPage);
    const auto twice = Texts(2 * reportPages * rowsPerPage);
    const Document document = Recorded(texts);
    const PlacedPages places = PlacesOf(document);
    std::vector<double> ratios;
    std::vector<double> growth;
    qsizetype sizes[2] = {};
    for (int run = 0; run < 7; ++run) {
        const double bare = Seconds([&] { sizes[1] = Bare(places, document.fonts[0]).size(); });
        const double once = Seconds([&] { sizes[0] = RecordedAndWritten(texts); });
        const double both = Seconds([&] { RecordedAndWritten(twice); });
        ratios.push_back(once / bare);
        growth.push_back(both / once);
        std::printf("bare %.3f s, report %.3f s, twice the rows %.3f s\n", bare, once, both);
    }
    std::printf("%zu pages; %lld bytes, the bare painter's file %lld bytes\n\n", document.pages.size(),
                static_cast<long long>(sizes[0]), static_cast<long long>(sizes[1]));
    bool good = Row("report of 250 pages, recorded and written, to bare painter", bench::Median(ratios), 1.05, "times");
    good &= Row("twice the rows", bench::Median(growth), 2.2, "times");
    good &= Row("peak memory of the report of 250 pages", Memory(QStringLiteral("report")), 60, "MB");
    const double kept = Memory(QStringLiteral("kept")) - Memory(QStringLiteral("empty"));
    good &= Row("255 pages kept, above the program with an empty page", kept, 30, "MB");
    return good ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    return argc > 1 ? MeasureMemory(QString::fromLocal8Bit(argv[1])) : MeasureAll();
}
