// Recording a report of many pages and writing it as PDF, against a bare painter that draws the same texts at positions
// worked out beforehand into the same kind of file.
#include "platform/pages/PageFont.h"
#include "platform/pages/PdfFile.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

using namespace velmora;
using namespace velmora::pages;

namespace {

constexpr int pageWidth = 12240;
constexpr int pageHeight = 15840;
constexpr int rowsPerPage = 55;
constexpr int cellsPerRow = 5;

std::vector<QString> Texts(int rows) {
    std::vector<QString> texts;
    for (int i = 0; i < rows * cellsPerRow; ++i) {
        texts.push_back(QStringLiteral("Cell %1 of room B%2").arg(i * 7919 % 10000).arg(i % 400));
    }
    return texts;
}

struct Placed {
    QPointF at;
    QString text;
};

double Seconds(const auto& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

qsizetype Recorded(const std::vector<QString>& texts) {
    Document document;
    document.name = QStringLiteral("Bench");
    const PageFont font({QStringLiteral("Liberation Sans"), 10, false, false, false, false});
    const quint16 index = document.FontIndex(font.Spec());
    int y = pageHeight;
    for (size_t i = 0; i < texts.size(); ++i) {
        const int cell = static_cast<int>(i % cellsPerRow);
        if (cell == 0) {
            y += font.LineHeight();
            if (y + font.LineHeight() > pageHeight) {
                document.pages.emplace_back(pageWidth, pageHeight);
                y = 0;
            }
        }
        document.pages.back().AddText(index, cell * pageWidth / cellsPerRow, y, font.TextWidth(texts[i]),
                                      font.LineHeight(), texts[i]);
    }
    return PdfBytes(document).size();
}

qsizetype Bare(const std::vector<std::vector<Placed>>& pages) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setResolution(1440);
    writer.setPageSize(QPageSize(QSizeF(612, 792), QPageSize::Point, QString(), QPageSize::ExactMatch));
    writer.setPageMargins(QMarginsF(0, 0, 0, 0));
    QPainter painter(&writer);
    painter.setFont(PageFont::MakeFont({QStringLiteral("Liberation Sans"), 10, false, false, false, false}));
    for (size_t i = 0; i < pages.size(); ++i) {
        if (i > 0) {
            writer.newPage();
        }
        for (const Placed& placed : pages[i]) {
            painter.drawText(placed.at, placed.text);
        }
    }
    painter.end();
    return buffer.data().size();
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const auto texts = Texts(250 * rowsPerPage);
    const PageFont font({QStringLiteral("Liberation Sans"), 10, false, false, false, false});
    std::vector<std::vector<Placed>> placed;
    int y = pageHeight;
    for (size_t i = 0; i < texts.size(); ++i) {
        const int cell = static_cast<int>(i % cellsPerRow);
        if (cell == 0) {
            y += font.LineHeight();
            if (y + font.LineHeight() > pageHeight) {
                placed.emplace_back();
                y = 0;
            }
        }
        placed.back().push_back({QPointF(cell * pageWidth / cellsPerRow, y + font.Ascent()), texts[i]});
    }
    std::vector<double> recorded;
    std::vector<double> bare;
    for (int run = 0; run < 5; ++run) {
        recorded.push_back(Seconds([&] { std::printf("%lld ", static_cast<long long>(Recorded(texts))); }));
        bare.push_back(Seconds([&] { std::printf("%lld\n", static_cast<long long>(Bare(placed))); }));
    }
    std::printf("pages %zu recorded %.3f bare %.3f ratio %.2f\n", placed.size(), Median(recorded), Median(bare),
                Median(recorded) / Median(bare));
    return 0;
}
