#pragma once

#include "layouts/file/Layout.h"

namespace velmora::layouts {

// Reads a layout file's bytes. `file` is its name for messages. The layout's scope refers to the catalog's tables.
// Throws Error naming file, line and key for whatever is not as docs/layouts.md has it.
Layout ReadLayout(const QByteArray& bytes, const QString& file, const engine::Catalog& catalog);

// Reads the file at a native path. Throws Error, also when there is no such file.
Layout ReadLayoutFile(const QString& path, const engine::Catalog& catalog);

} // namespace velmora::layouts
