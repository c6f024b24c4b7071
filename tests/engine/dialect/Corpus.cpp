#include "tests/engine/dialect/Corpus.h"

#include "tests/engine/TestSite.h"
#include "tests/support/Folders.h"

#include <QFile>
#include <QRegularExpression>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::test {

namespace {

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

std::unique_ptr<Database> OpenEmbedded(const QString& folder) {
    const TestSite site;
    site.Run(TestBytes(u"engine/dialect/corpus/rows.sql"_s).constData());
    const QString path = folder + u"/Corpus.MDB"_s;
    EXPECT_TRUE(QFile::copy(site.Path(), path));
    OpenOptions options;
    options.now = [] { return *ParseStorageText(u"2026-03-07 14:15:00"); };
    return Database::Open(path, options);
}

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
    const QStringList lines = TestText(u"engine/dialect/corpus/"_s + file).split(u'\n');
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
        } else if (line.startsWith(u">>>>")) {
            one.changedField = line.section(u'=', 0, 0).mid(4).trimmed();
            one.newValue = line.section(u'=', 1).trimmed();
        } else if (line.startsWith(u'@')) {
            const qsizetype sign = line.indexOf(u" = ");
            one.parameters.push_back({line.mid(1, sign - 1), ReadValue(line.mid(sign + 3))});
        } else {
            one.line = text.isEmpty() ? static_cast<int>(i + 1) : one.line;
            text += line;
        }
    }
    finish();
    return cases;
}

namespace {

QString ShownField(const Field& field, FieldType type) {
    switch (field.StoredKind()) {
    case Field::Kind::Null:
        return QStringLiteral("NULL");
    case Field::Kind::Real:
        return NumberText(field.ToReal());
    case Field::Kind::Integer:
        if (type == FieldType::YesNo) {
            return field.ToBool() ? QStringLiteral("True") : QStringLiteral("False");
        }
        return QString::number(field.StoredInteger());
    case Field::Kind::Text:
        break;
    }
    return field.ToText();
}

void StoreQuery(Database& database, const CorpusCase& one) {
    QString text = one.text;
    database.Execute(QStringLiteral("DELETE FROM StoredQuery WHERE Name = '%1'").arg(one.queryName));
    database.Execute(QStringLiteral("INSERT INTO StoredQuery (Name, Text) VALUES ('%1', '%2')")
                         .arg(one.queryName, text.replace(u'\'', QStringLiteral("''"))));
    database.Idle(IdleOption::RefreshCache);
}

Outcome ReadRows(Recordset& rows) {
    QStringList header;
    for (const FieldDescription& field : rows.Fields()) {
        header += field.name;
    }
    QStringList lines;
    for (; !rows.EndOfFile(); rows.MoveNext()) {
        QStringList fields;
        for (int i = 0; i < static_cast<int>(header.size()); ++i) {
            fields += ShownField(rows.FieldAt(i), rows.Fields()[static_cast<size_t>(i)].type);
        }
        lines += fields.join(u'|');
    }
    return {header.join(u'|'), lines.join(u'\n'), {}};
}

} // namespace

Outcome OutcomeOf(Database& database, const CorpusCase& one, RecordsetKind kind) {
    try {
        if (!one.queryName.isEmpty()) {
            StoreQuery(database, one);
            return {};
        }
        const auto query = database.CreateQueryDef(one.text);
        for (const NamedValue& parameter : one.parameters) {
            query->SetParameter(parameter.name, parameter.value);
        }
        if (!one.changedField.isEmpty()) {
            const std::string field = one.changedField.toStdString();
            const auto rows = query->OpenRecordset(RecordsetKind::Updatable);
            rows->Edit();
            rows->Set(field, one.newValue);
            rows->Update();
            return {{}, (*rows)[field].ToText(), {}};
        }
        if (query->IsAction()) {
            return {{}, QStringLiteral("changes %1").arg(query->Execute()), {}};
        }
        return ReadRows(*query->OpenRecordset(kind));
    } catch (const EngineError& error) {
        return {{}, QStringLiteral("error %1").arg(error.Number()), error.Description()};
    }
}

} // namespace velmora::engine::test
