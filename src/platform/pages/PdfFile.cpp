#include "platform/pages/PdfFile.h"

#include "base/Error.h"
#include "platform/pages/PagePainter.h"

#include <QBuffer>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>

namespace velmora::pages {

namespace {

constexpr int twipsPerInch = 1440;

void SetPaper(QPdfWriter& writer, const Sheet& sheet) {
    const QSizeF points(sheet.paperWidth / 20.0, sheet.paperHeight / 20.0);
    writer.setPageSize(QPageSize(points, QPageSize::Point, QString(), QPageSize::ExactMatch));
}

} // namespace

QByteArray PdfBytes(const Document& document) {
    return PdfBytes(document, PlanSheets(document, TallPages::Keep));
}

QByteArray PdfBytes(const Document& document, const std::vector<Sheet>& sheets) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setResolution(twipsPerInch);
    writer.setPageMargins(QMarginsF(0, 0, 0, 0));
    writer.setTitle(document.name);
    writer.setCreator(QStringLiteral("Velmora"));
    const PagePainter pagePainter(document);
    QPainter painter;
    for (size_t i = 0; i < sheets.size(); ++i) {
        SetPaper(writer, sheets[i]);
        const bool started = i == 0 ? painter.begin(&writer) : writer.newPage();
        if (!started) {
            throw ProgramError(ErrorNumber::Unavailable, QStringLiteral("The PDF document could not be made"));
        }
        pagePainter.DrawSheet(painter, document, sheets[i]);
    }
    painter.end();
    return buffer.data();
}

} // namespace velmora::pages
