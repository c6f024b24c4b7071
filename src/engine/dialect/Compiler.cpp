#include "engine/dialect/Compiler.h"

#include "engine/dialect/Emitter.h"
#include "engine/dialect/Literals.h"
#include "engine/dialect/Parser.h"
#include "engine/dialect/Resolver.h"

#include <algorithm>

namespace velmora::engine::dialect {

namespace {

// The name that a text is, without brackets; empty for a text that is none.
QStringView BareName(QStringView text) {
    if (text.startsWith(u'[') && text.indexOf(u']') == text.size() - 1) {
        return text.mid(1, text.size() - 2).trimmed();
    }
    const bool word = std::all_of(text.begin(), text.end(), [](QChar c) { return IsWordPart(c.unicode()); });
    return word && !IsKeyword(text) ? text : QStringView();
}

// "SELECT * FROM q" and no more: q's own text does, with its tables, its order and its rows to change.
const QString* StoredQueryItself(const Statement& statement, const Catalog& catalog, QString& name) {
    if (statement.kind != Statement::Kind::Select || !statement.parameters.empty() ||
        statement.query->selects.size() != 1 || !statement.query->orderBy.empty()) {
        return nullptr;
    }
    const Select& select = statement.query->selects.front();
    const bool plain = !select.distinct && !select.top && select.items.size() == 1 && select.items[0].star &&
                       select.items[0].starOf.isEmpty() && select.from.size() == 1 && !select.where &&
                       select.groupBy.empty() && !select.having;
    if (!plain || select.from[0]->kind != Source::Kind::Named || !select.from[0]->alias.isEmpty() ||
        catalog.FindTable(select.from[0]->name)) {
        return nullptr;
    }
    name = select.from[0]->name;
    return catalog.FindQuery(name);
}

// A parsed text together with what its error messages show.
struct Work {
    SourceText text;
    Statement statement;
};

Work ParseCaller(QStringView text, const Catalog& catalog, bool& bareName) {
    const QStringView trimmed = text.trimmed();
    QStringView name = BareName(trimmed);
    if (name.isEmpty() && (catalog.FindTable(trimmed) || catalog.FindQuery(trimmed))) {
        name = trimmed;
    }
    bareName = !name.isEmpty();
    Work work{{text, {}}, {}};
    if (!bareName) {
        work.statement = Parse(work.text);
        return work;
    }
    if (const QString* stored = catalog.FindTable(name) ? nullptr : catalog.FindQuery(name)) {
        work.text = {*stored, name.toString()};
        work.statement = Parse(work.text);
        return work;
    }
    auto source = std::make_unique<Source>();
    source->name = name.toString();
    Select select;
    select.items.emplace_back().star = true;
    select.from.push_back(std::move(source));
    work.statement.query = std::make_unique<Query>();
    work.statement.query->selects.push_back(std::move(select));
    return work;
}

void DescribeSelect(const Query& query, CompiledStatement& compiled) {
    compiled.columns = ColumnsOf(query);
    if (query.selects.size() > 1) {
        return;
    }
    int position = static_cast<int>(compiled.columns.size());
    for (const Origin& origin : query.selects.front().origins) {
        BaseTable base{origin.table->name, origin.alias, {}, {}};
        for (const int key : origin.table->key) {
            base.keyColumns.push_back(origin.table->columns[static_cast<size_t>(key)].name);
        }
        for (size_t i = 0; i < std::max<size_t>(base.keyColumns.size(), 1); ++i) {
            base.keyPositions.push_back(position++);
        }
        compiled.bases.push_back(std::move(base));
    }
}

// Declared parameters first; bindings follow them to their new places.
void SortParameters(CompiledStatement& compiled) {
    std::vector<int> place(compiled.parameters.size());
    std::vector<ParameterInfo> sorted;
    for (const bool declared : {true, false}) {
        for (size_t i = 0; i < place.size(); ++i) {
            if (compiled.parameters[i].declared == declared) {
                place[i] = static_cast<int>(sorted.size());
                sorted.push_back(compiled.parameters[i]);
            }
        }
    }
    compiled.parameters = std::move(sorted);
    for (std::vector<Binding>* bindings : {&compiled.bindings, &compiled.rereadBindings}) {
        for (Binding& binding : *bindings) {
            if (binding.source == Binding::Source::Parameter) {
                const size_t index = static_cast<size_t>(place[static_cast<size_t>(binding.index)]);
                binding.index = static_cast<int>(index);
                binding.type = compiled.parameters[index].type;
            }
        }
    }
}

} // namespace

CompiledStatement Compile(QStringView text, const Catalog& catalog, Purpose purpose, const SqlWriter& writer) {
    bool bareName = false;
    Work work = ParseCaller(text, catalog, bareName);
    QString name;
    constexpr int mostQueries = 20;
    for (int i = 0; i < mostQueries; ++i) {
        const QString* stored = StoredQueryItself(work.statement, catalog, name);
        if (!stored) {
            break;
        }
        const SourceText storedText{*stored, name};
        Statement statement = Parse(storedText);
        if (statement.kind != Statement::Kind::Select) {
            break;
        }
        work = {storedText, std::move(statement)};
    }

    Resolver resolver(catalog, work.text, writer.MaximumTables());
    resolver.Resolve(work.statement);
    const Statement& statement = work.statement;
    const bool rows = statement.kind == Statement::Kind::Select;
    CompiledStatement compiled;
    compiled.kind = statement.kind;
    compiled.parameters = resolver.TakeParameters();
    if (rows) {
        DescribeSelect(*statement.query, compiled);
        compiled.updatable = purpose == Purpose::Update && !compiled.bases.empty();
    } else {
        compiled.target = statement.target->table->name;
    }
    Emitter::Emitted emitted = Emitter::Emit(statement, compiled.updatable, writer);
    compiled.sql = std::move(emitted.sql);
    compiled.bindings = std::move(emitted.bindings);
    compiled.literalsShapeText = bareName || resolver.LiteralsShapeText();
    if (compiled.updatable) {
        for (const BaseTable& base : compiled.bases) {
            compiled.hiddenColumns += static_cast<int>(base.keyPositions.size());
        }
        Emitter::Emitted reread = Emitter::EmitReread(*statement.query, writer);
        compiled.rereadSql = std::move(reread.sql);
        compiled.rereadBindings = std::move(reread.bindings);
    } else if (rows) {
        for (BaseTable& base : compiled.bases) {
            base.keyPositions.clear();
        }
    }
    SortParameters(compiled);
    return compiled;
}

} // namespace velmora::engine::dialect
