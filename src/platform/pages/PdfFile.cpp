#include "platform/pages/PdfFile.h"

#include "base/Error.h"
#include "platform/pages/PagePainter.h"
#include "platform/pages/Sheets.h"

#include <QBuffer>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

namespace velmora::pages {

namespace {

constexpr int twipsPerInch = 1440;

void SetPage(QPdfWriter& writer, const Page& page) {
    const QSizeF points(page.Width() / 20.0, page.Height() / 20.0);
    writer.setPageSize(QPageSize(points, QPageSize::Point, QString(), QPageSize::ExactMatch));
}

} // namespace

QByteArray PdfBytes(const Document& document) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setResolution(twipsPerInch);
    writer.setPageMargins(QMarginsF(0, 0, 0, 0));
    writer.setTitle(document.name);
    writer.setCreator(QStringLiteral("Velmora"));
    const PagePainter pagePainter(document);
    QPainter painter;
    for (size_t i = 0; i < document.pages.size(); ++i) {
        SetPage(writer, document.pages[i]);
        const bool started = i == 0 ? painter.begin(&writer) : writer.newPage();
        if (!started) {
            throw ProgramError(ErrorNumber::Unavailable, QStringLiteral("The PDF document could not be made"));
        }
        pagePainter.Draw(painter, document.pages[i]);
    }
    painter.end();
    return buffer.data();
}

void WritePdf(const Document& document, const QString& path) {
    const QByteArray bytes = PdfBytes(ForPdf(document));
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        throw ProgramError(ErrorNumber::FileAccess,
                           QStringLiteral("The file %1 could not be written: %2").arg(path, file.errorString()));
    }
}

} // namespace velmora::pages
