#include "print/Text.h"

#include <algorithm>
#include <cstring>

namespace velmora::print {

namespace {

// Reports append texts by the ten thousand, most of them short: room is made once per text, and plain letters are
// written straight into it.

void AppendView(QByteArray& out, QUtf8StringView text) {
    if (!text.isValidUtf8()) {
        out.append(text.toString().toUtf8());
        return;
    }
    const qsizetype start = out.size();
    out.resize(start + text.size());
    std::memcpy(out.data() + start, text.data(), static_cast<size_t>(text.size()));
}

void AppendView(QByteArray& out, QStringView text) {
    constexpr char16_t firstNotAscii = 0x80;
    if (!std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < firstNotAscii; })) {
        out.append(text.toUtf8());
        return;
    }
    const qsizetype start = out.size();
    out.resize(start + text.size());
    std::transform(text.begin(), text.end(), out.data() + start,
                   [](QChar c) { return static_cast<char>(c.unicode()); });
}

void AppendView(QByteArray& out, QLatin1StringView text) {
    AppendView(out, QStringView(QString(text)));
}

} // namespace

void AppendUtf8(QByteArray& out, Text text) {
    if (!text.isEmpty()) {
        text.visit([&out](auto view) { AppendView(out, view); });
    }
}

void AppendEscaped(QByteArray& out, Text text) {
    const auto start = out.size();
    AppendUtf8(out, text);
    qsizetype special = 0;
    for (qsizetype i = start; i < out.size(); ++i) {
        const char c = out.at(i);
        special += c == '&' || c == '<' || c == '>' ? 1 : 0;
    }
    if (special == 0) {
        return;
    }
    const QByteArray plain = out.mid(start);
    out.truncate(start);
    for (const char c : plain) {
        switch (c) {
        case '&':
            out.append("&amp;");
            break;
        case '<':
            out.append("&lt;");
            break;
        case '>':
            out.append("&gt;");
            break;
        default:
            out.append(c);
        }
    }
}

} // namespace velmora::print
