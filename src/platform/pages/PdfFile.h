#pragma once

#include "platform/pages/Page.h"

#include <QByteArray>

namespace velmora::pages {

// The document as a PDF file, every page at its own size.
QByteArray PdfBytes(const Document& document);

// The same as a file, a page that PDF has no size for being cut. The file appears as a whole or not at all: a full disk
// or an unwritable folder throws Error that names the file, and an earlier file of that name stays.
void WritePdf(const Document& document, const QString& path);

} // namespace velmora::pages
