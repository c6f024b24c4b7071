#include "tests/engine/dialect/Corpus.h"

#include <QRegularExpression>

#include <stdexcept>

namespace velmora::engine::dialect {

namespace {

Value ReadValue(const QString& written) {
    const QString kind = written.section(u' ', 0, 0);
    const QString rest = written.section(u' ', 1);
    if (kind == u"date") {
        return *ParseStorageText(rest);
    }
    if (kind == u"number") {
        return rest.contains(u'.') ? Value(rest.toDouble()) : Value(rest.toLongLong());
    }
    if (kind == u"flag") {
        return rest == u"true";
    }
    return kind == u"text" ? Value(rest) : Value();
}

void ReadExpectation(const QString& line, CorpusCase& one) {
    const QString head = line.mid(4).trimmed();
    if (!head.startsWith(u"error")) {
        (head.startsWith(u"changes") ? one.expected : one.header) = head;
        return;
    }
    one.expected = head.section(u',', 0, 0);
    static const QRegularExpression quoted(QStringLiteral("`([^`]*)`"));
    for (auto parts = quoted.globalMatch(head); parts.hasNext();) {
        const QString part = parts.next().captured(1);
        static const QRegularExpression place(QStringLiteral("^([0-9]+), ([0-9]+)$"));
        const auto match = place.match(part);
        one.errorParts +=
            match.hasMatch() ? QStringLiteral("at line %1, column %2").arg(match.captured(1), match.captured(2)) : part;
    }
}

} // namespace

std::vector<CorpusCase> ReadCorpus(const QString& file) {
    std::vector<CorpusCase> cases;
    CorpusCase one;
    QStringList text;
    QStringList rows;
    bool expecting = false;
    const auto finish = [&] {
        if (!text.isEmpty()) {
            one.text = text.join(u'\n');
            if (!rows.isEmpty()) {
                one.expected = rows.join(u'\n');
            }
            cases.push_back(one);
        }
        one = {};
        text.clear();
        rows.clear();
        expecting = false;
    };
    const QStringList lines = TestStore::TextFile(file);
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QString& line = lines[i];
        if (line.isEmpty()) {
            finish();
        } else if (line.startsWith(u'%')) {
            continue;
        } else if (line.startsWith(u"----")) {
            ReadExpectation(line, one);
            expecting = true;
        } else if (expecting) {
            rows += line;
        } else if (line.startsWith(u"====")) {
            one.queryName = line.mid(4).trimmed();
        } else if (line.startsWith(u'@')) {
            const qsizetype sign = line.indexOf(u" = ");
            one.parameters[line.mid(1, sign - 1)] = ReadValue(line.mid(sign + 3));
        } else {
            one.line = text.isEmpty() ? static_cast<int>(i + 1) : one.line;
            text += line;
        }
    }
    finish();
    return cases;
}

QString Outcome(const TestStore::Result& result, const CorpusCase& expected) {
    if (expected.expected.startsWith(u"changes")) {
        return QStringLiteral("changes %1").arg(result.changes);
    }
    if (!expected.header.isEmpty() && expected.header != result.header.join(u'|')) {
        return QStringLiteral("header ") + result.header.join(u'|');
    }
    return result.rows.join(u'\n');
}

} // namespace velmora::engine::dialect
