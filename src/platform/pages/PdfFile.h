#pragma once

#include "platform/pages/Page.h"

namespace velmora::pages {

// Writes the document as a PDF file, every page at its own size. The file appears as a whole or not at all: a full disk
// or an unwritable folder throws Error that names the file, and an earlier file of that name stays.
void WritePdf(const Document& document, const QString& path);

// The same into memory.
QByteArray PdfBytes(const Document& document);

} // namespace velmora::pages
