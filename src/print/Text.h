#pragma once

#include <QAnyStringView>
#include <QByteArray>
#include <QString>

namespace velmora::print {

// Text as the layout operations take it: a view of UTF-8 as the store keeps it, or of UTF-16. It is not kept beyond
// the call.
using Text = QAnyStringView;

// Appends the text as well-formed UTF-8; what is not well formed becomes replacement characters.
void AppendUtf8(QByteArray& out, Text text);

// The same with "&", "<" and ">" written as HTML entities, and nothing else changed.
void AppendEscaped(QByteArray& out, Text text);

} // namespace velmora::print
