#include "engine/dialect/Parser.h"
#include "engine/dialect/Resolver.h"

namespace velmora::engine::dialect {

// While it lives, the resolver works on a stored query's text: errors name it, its PARAMETERS clause counts, and a
// query that uses itself is found out.
class Resolver::StoredQueryText {
public:
    StoredQueryText(Resolver& resolver, const SourceText& text)
        : resolver_(resolver), outerText_(resolver.text_), outerDeclared_(std::move(resolver.declaredHere_)) {
        resolver_.text_ = &text;
        resolver_.declaredHere_.clear();
        resolver_.openQueries_.push_back(text.storedQuery);
    }
    ~StoredQueryText() {
        resolver_.text_ = outerText_;
        resolver_.declaredHere_ = std::move(outerDeclared_);
        resolver_.openQueries_.pop_back();
    }
    StoredQueryText(const StoredQueryText&) = delete;
    StoredQueryText& operator=(const StoredQueryText&) = delete;

private:
    Resolver& resolver_;
    const SourceText* outerText_;
    QStringList outerDeclared_;
};

void Resolver::ResolveSource(Source& source, const Scope* outer, std::vector<Source*>& leaves) {
    if (source.kind == Source::Kind::Join) {
        // A condition sees the tables of its own join only.
        std::vector<Source*> joined;
        ResolveSource(*source.left, outer, joined);
        ResolveSource(*source.right, outer, joined);
        const Scope scope{joined, outer, nullptr, u"a join's condition"};
        ResolveCondition(*source.on, scope);
        leaves.insert(leaves.end(), joined.begin(), joined.end());
        return;
    }
    if (source.kind == Source::Kind::Select) {
        ResolveQuery(*source.query, outer);
    } else {
        ResolveNamed(source);
    }
    FillColumns(source);
    NameForStore(source);
    leaves.push_back(&source);
}

void Resolver::ResolveNamed(Source& source) {
    source.table = catalog_.FindTable(source.name);
    if (source.table) {
        return;
    }
    const QString* text = catalog_.FindQuery(source.name);
    if (!text) {
        FailAt(EngineErrorNumber::UnknownTable,
               QStringLiteral("There is no table or stored query \"%1\"").arg(source.name), source.at);
    }
    if (openQueries_.contains(source.name, Qt::CaseInsensitive)) {
        FailAt(EngineErrorNumber::Syntax, QStringLiteral("The stored query \"%1\" uses itself").arg(source.name),
               source.at);
    }
    constexpr qsizetype maximumDepth = 20;
    if (openQueries_.size() >= maximumDepth) {
        FailAt(EngineErrorNumber::Syntax,
               QStringLiteral("Stored queries use each other more than %1 levels deep").arg(maximumDepth), source.at);
    }
    const SourceText queryText{*text, source.name};
    Statement statement = Parse(queryText);
    if (statement.kind != Statement::Kind::Select) {
        FailAt(EngineErrorNumber::Syntax,
               QStringLiteral("The stored query \"%1\" changes rows, so it cannot be read from").arg(source.name),
               source.at);
    }
    const StoredQueryText work(*this, queryText);
    Declare(statement.parameters);
    ResolveQuery(*statement.query, nullptr);
    source.query = std::move(statement.query);
}

void Resolver::FillColumns(Source& source) const {
    if (source.table) {
        for (const CatalogColumn& column : source.table->columns) {
            source.columns.push_back({column.name, source.ShownName(), column.type, 0, column.name});
        }
        return;
    }
    const Select& first = source.query->selects.front();
    const bool traceable = source.query->selects.size() == 1;
    for (size_t i = 0; i < first.outputs.size(); ++i) {
        const OutputColumn& output = first.outputs[i];
        source.columns.push_back(
            {output.name, output.table, source.query->types[i], traceable ? output.base : -1, output.baseColumn});
    }
}

void Resolver::NameForStore(Source& source) {
    const QString wanted = source.ShownName().isEmpty() ? QStringLiteral("select") : source.ShownName();
    const QString plain = source.alias.isEmpty() && source.table ? source.table->name : wanted;
    source.sqlAlias = plain;
    for (int number = 2; storeNames_.contains(source.sqlAlias.toLower()); ++number) {
        source.sqlAlias = plain + u'~' + QString::number(number);
    }
    storeNames_.insert(source.sqlAlias.toLower());
    constexpr qsizetype maximumSources = 60; // the store joins 64
    if (storeNames_.size() > maximumSources) {
        FailAt(EngineErrorNumber::Syntax,
               QStringLiteral("The text and its stored queries use more than %1 tables; one more").arg(maximumSources),
               source.at);
    }
}

} // namespace velmora::engine::dialect
