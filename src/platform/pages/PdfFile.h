#pragma once

#include "platform/pages/Page.h"
#include "platform/pages/Sheets.h"

#include <QByteArray>

namespace velmora::pages {

// The document as a PDF file, every page at its own size, however long it grew.
QByteArray PdfBytes(const Document& document);

// The document on sheets, in their order.
QByteArray PdfBytes(const Document& document, const std::vector<Sheet>& sheets);

} // namespace velmora::pages
