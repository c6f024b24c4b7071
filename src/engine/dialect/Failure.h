#pragma once

#include "engine/EngineError.h"

#include <QString>
#include <QStringView>

namespace velmora::engine::dialect {

// A text under work, for error messages: the caller's, or that of a stored query it uses.
struct SourceText {
    QStringView text;
    QString storedQuery; // empty for the caller's own text
};

// Throws the error with the place in words: "... at line 1, column 23." `at` counts characters of the text from 0;
// beyond its end means its end.
[[noreturn]] void Fail(EngineErrorNumber number, const QString& what, const SourceText& source, qsizetype at);

} // namespace velmora::engine::dialect
