#include "print/Text.h"

namespace velmora::print {

namespace {

void AppendView(QByteArray& out, QUtf8StringView text) {
    if (text.isValidUtf8()) {
        out.append(reinterpret_cast<const char*>(text.data()), text.size());
    } else {
        out.append(text.toString().toUtf8());
    }
}

void AppendView(QByteArray& out, QStringView text) {
    out.append(text.toUtf8());
}

void AppendView(QByteArray& out, QLatin1StringView text) {
    out.append(QString(text).toUtf8());
}

} // namespace

void AppendUtf8(QByteArray& out, Text text) {
    text.visit([&out](auto view) { AppendView(out, view); });
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
