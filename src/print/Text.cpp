#include "print/Text.h"

namespace velmora::print {

void AppendUtf8(QByteArray& out, Text text) {
    text.visit([&out](auto view) {
        if constexpr (std::is_same_v<decltype(view), QUtf8StringView>) {
            if (view.isValidUtf8()) {
                out.append(reinterpret_cast<const char*>(view.data()), view.size());
            } else {
                out.append(view.toString().toUtf8());
            }
        } else {
            out.append(view.toUtf8());
        }
    });
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
