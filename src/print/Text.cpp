#include "print/Text.h"

#include <algorithm>

namespace velmora::print {

namespace {

void AppendView(QByteArray& out, QUtf8StringView text) {
    if (text.isValidUtf8()) {
        out.append(text.data(), text.size());
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
    if (!text.isEmpty()) {
        text.visit([&out](auto view) { AppendView(out, view); });
    }
}

void AppendEscaped(QByteArray& out, Text text) {
    const auto start = out.size();
    AppendUtf8(out, text);
    const QByteArrayView added = QByteArrayView(out).sliced(start);
    if (std::any_of(added.begin(), added.end(), [](char c) { return c == '&' || c == '<' || c == '>'; })) {
        QByteArray escaped = added.toByteArray();
        out.truncate(start);
        out.append(escaped.replace('&', "&amp;").replace('<', "&lt;").replace('>', "&gt;"));
    }
}

} // namespace velmora::print
