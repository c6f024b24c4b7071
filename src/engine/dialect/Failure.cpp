#include "engine/dialect/Failure.h"

#include <algorithm>

namespace velmora::engine::dialect {

void Fail(EngineErrorNumber number, const QString& what, const SourceText& source, qsizetype at) {
    int line = 1;
    qsizetype lineStart = 0;
    const qsizetype place = std::min(at, source.text.size());
    for (qsizetype i = 0; i < place; ++i) {
        const bool lineFeed = source.text[i] == u'\n';
        const bool loneReturn = source.text[i] == u'\r' && (i + 1 == source.text.size() || source.text[i + 1] != u'\n');
        if (lineFeed || loneReturn) {
            ++line;
            lineStart = i + 1;
        }
    }
    QString description = QStringLiteral("%1 at line %2, column %3").arg(what).arg(line).arg(place - lineStart + 1);
    if (!source.storedQuery.isEmpty()) {
        description += QStringLiteral(" of the stored query \"%1\"").arg(source.storedQuery);
    }
    throw EngineError(number, description + u'.', source.text.toString());
}

} // namespace velmora::engine::dialect
