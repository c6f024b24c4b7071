#include "engine/dialect/Parser.h"

#include <algorithm>
#include <array>
#include <optional>

namespace velmora::engine::dialect {

namespace {

struct TypeName {
    QStringView word;
    FieldType type;
};

constexpr std::array typeNames = std::to_array<TypeName>({
    {u"DateTime", FieldType::DateTime}, {u"Date", FieldType::DateTime},   {u"Text", FieldType::Text},
    {u"String", FieldType::Text},       {u"Char", FieldType::Text},       {u"VarChar", FieldType::Text},
    {u"Memo", FieldType::Text},         {u"Long", FieldType::Integer},    {u"Short", FieldType::Integer},
    {u"Integer", FieldType::Integer},   {u"Int", FieldType::Integer},     {u"SmallInt", FieldType::Integer},
    {u"Byte", FieldType::Integer},      {u"Counter", FieldType::Integer}, {u"Double", FieldType::Real},
    {u"Single", FieldType::Real},       {u"IEEEDouble", FieldType::Real}, {u"IEEESingle", FieldType::Real},
    {u"Number", FieldType::Real},       {u"Real", FieldType::Real},       {u"Float", FieldType::Real},
    {u"Currency", FieldType::Real},     {u"Money", FieldType::Real},      {u"YesNo", FieldType::YesNo},
    {u"Bit", FieldType::YesNo},         {u"Boolean", FieldType::YesNo},   {u"Logical", FieldType::YesNo},
    {u"Value", FieldType::Unknown},
});

// The kind that a PARAMETERS clause means by a word; none for a word it does not know.
std::optional<FieldType> TypeOfName(QStringView word) {
    const auto found = std::find_if(typeNames.begin(), typeNames.end(), [&](const TypeName& entry) {
        return entry.word.compare(word, Qt::CaseInsensitive) == 0;
    });
    return found == typeNames.end() ? std::nullopt : std::optional(found->type);
}

} // namespace

Statement Parse(const SourceText& source) {
    return Parser(source).ParseStatement();
}

const Token& Parser::Peek(size_t ahead) const {
    return list_.tokens[std::min(next_ + ahead, list_.tokens.size() - 1)];
}

const Token& Parser::Next() {
    const Token& token = Peek();
    next_ = std::min(next_ + 1, list_.tokens.size() - 1);
    return token;
}

bool Parser::At(QStringView word, size_t ahead) const {
    const Token& token = Peek(ahead);
    const bool written = token.kind == TokenKind::Name || token.kind == TokenKind::Keyword;
    return (written || token.kind == TokenKind::Mark) && token.text.compare(word, Qt::CaseInsensitive) == 0;
}

bool Parser::Take(QStringView word) {
    if (!At(word)) {
        return false;
    }
    Next();
    return true;
}

void Parser::Expect(QStringView word, QStringView what) {
    if (!Take(word)) {
        const QString quoted = QStringLiteral("\"%1\"").arg(word);
        FailExpecting(!what.isEmpty() ? what : word.front().isLetter() ? word : quoted);
    }
}

QString Parser::ExpectName(QStringView what) {
    if (!AtName()) {
        FailExpecting(what);
    }
    return Next().text.toString();
}

void Parser::FailExpecting(QStringView what) const {
    const Token& token = Peek();
    if (token.kind == TokenKind::End) {
        FailAt(QStringLiteral("The text ends where %1 is expected").arg(what), token.at);
    }
    constexpr qsizetype shown = 40;
    const QString written =
        token.text.size() > shown ? token.text.left(shown).toString() + QStringLiteral("...") : token.text.toString();
    FailAt(QStringLiteral("%1 is expected, not \"%2\"").arg(what, written), token.at);
}

void Parser::FailAt(const QString& what, qsizetype at) const {
    Fail(EngineErrorNumber::Syntax, what, source_, at);
}

QScopedValueRollback<int> Parser::Nest() {
    constexpr int limit = 100;
    if (level_ >= limit) {
        FailAt(QStringLiteral("The text nests too deeply (more than %1 levels)").arg(limit), Peek().at);
    }
    return QScopedValueRollback<int>(level_, level_ + 1);
}

Statement Parser::ParseStatement() {
    Statement statement;
    if (Take(u"PARAMETERS")) {
        ParseParameters(statement);
    }
    if (At(u"SELECT")) {
        statement.query = ParseQuery();
    } else if (Take(u"UPDATE")) {
        ParseUpdate(statement);
    } else if (Take(u"INSERT")) {
        ParseInsert(statement);
    } else if (Take(u"DELETE")) {
        ParseDelete(statement);
    } else {
        FailExpecting(u"SELECT, UPDATE, INSERT or DELETE");
    }
    Take(u";");
    if (Peek().kind != TokenKind::End) {
        FailExpecting(u"the end of the statement");
    }
    statement.literalsShapeText = literalsShapeText_;
    return statement;
}

void Parser::ParseParameters(Statement& statement) {
    do {
        ParameterDeclaration declaration;
        declaration.at = Peek().at;
        declaration.name = ExpectName(u"a parameter's name");
        declaration.type = ParseTypeName();
        for (const ParameterDeclaration& other : statement.parameters) {
            if (other.name.compare(declaration.name, Qt::CaseInsensitive) == 0) {
                FailAt(QStringLiteral("The parameter \"%1\" is declared twice: again").arg(declaration.name),
                       declaration.at);
            }
        }
        statement.parameters.push_back(std::move(declaration));
    } while (Take(u","));
    Expect(u";", u"\",\" or \";\" behind the parameter's type");
}

FieldType Parser::ParseTypeName() {
    const Token& token = Peek();
    const auto type = token.kind == TokenKind::Name ? TypeOfName(token.text) : std::nullopt;
    if (!type) {
        FailExpecting(u"the parameter's type (DateTime, Text, Long, Short, Double, Currency, YesNo, ...)");
    }
    Next();
    // Text(255): the length says nothing that matters for a value.
    if (Take(u"(")) {
        if (Peek().kind != TokenKind::Literal) {
            FailExpecting(u"a length");
        }
        Next();
        Expect(u")");
    }
    return *type;
}

SourcePtr Parser::ParseTarget() {
    auto target = std::make_unique<Source>();
    target->at = Peek().at;
    target->name = ExpectName(u"a table's name");
    return target;
}

void Parser::ParseUpdate(Statement& statement) {
    statement.kind = Statement::Kind::Update;
    statement.target = ParseTarget();
    ParseAlias(*statement.target);
    Expect(u"SET", u"SET (an update changes one table)");
    do {
        Assignment assignment;
        assignment.at = Peek().at;
        assignment.column = ExpectName(u"a field's name");
        if (Take(u".")) {
            assignment.qualifier = std::move(assignment.column);
            assignment.column = ExpectName(u"a field's name");
        }
        Expect(u"=");
        assignment.value = ParseExpression();
        statement.assignments.push_back(std::move(assignment));
    } while (Take(u","));
    if (Take(u"WHERE")) {
        statement.where = ParseExpression();
    }
}

void Parser::ParseInsert(Statement& statement) {
    statement.kind = Statement::Kind::Insert;
    Expect(u"INTO");
    statement.target = ParseTarget();
    if (Take(u"(")) {
        statement.listsColumns = true;
        do {
            Assignment assignment;
            assignment.at = Peek().at;
            assignment.column = ExpectName(u"a field's name");
            statement.assignments.push_back(std::move(assignment));
        } while (Take(u","));
        Expect(u")", u"\",\" or \")\"");
    }
    if (At(u"SELECT")) {
        statement.query = ParseQuery();
        return;
    }
    Expect(u"VALUES", u"VALUES or SELECT");
    const qsizetype at = Peek().at;
    Expect(u"(");
    std::vector<ExpressionPtr> values = ParseList();
    Expect(u")", u"\",\" or \")\"");
    if (statement.listsColumns && values.size() != statement.assignments.size()) {
        FailAt(QStringLiteral("%1 fields are named, but %2 values given")
                   .arg(statement.assignments.size())
                   .arg(values.size()),
               at);
    }
    statement.assignments.resize(values.size());
    for (size_t i = 0; i < values.size(); ++i) {
        if (!statement.listsColumns) {
            statement.assignments[i].at = values[i]->at;
        }
        statement.assignments[i].value = std::move(values[i]);
    }
}

void Parser::ParseDelete(Statement& statement) {
    statement.kind = Statement::Kind::Delete;
    Take(u"*");
    Expect(u"FROM");
    statement.target = ParseTarget();
    ParseAlias(*statement.target);
    if (Take(u"WHERE")) {
        statement.where = ParseExpression();
    }
}

std::unique_ptr<Query> Parser::ParseQuery() {
    const auto level = Nest();
    auto query = std::make_unique<Query>();
    ParseSelect(*query, false);
    constexpr size_t maximumSelects = 100;
    for (qsizetype at = Peek().at; Take(u"UNION"); at = Peek().at) {
        if (query->selects.size() == maximumSelects) {
            FailAt(QStringLiteral("A UNION joins at most %1 selects: one more").arg(maximumSelects), at);
        }
        const bool all = Take(u"ALL");
        ParseSelect(*query, all);
    }
    if (Take(u"ORDER")) {
        ParseOrderBy(*query);
    }
    return query;
}

void Parser::ParseSelect(Query& query, bool unionAll) {
    Select select;
    select.at = Peek().at;
    select.unionAll = unionAll;
    Expect(u"SELECT");
    select.distinct = Take(u"DISTINCT");
    ParseTop(select);
    do {
        select.items.push_back(ParseSelectItem());
    } while (Take(u","));
    Expect(u"FROM", u"\",\" or FROM");
    do {
        select.from.push_back(ParseJoins());
    } while (Take(u","));
    if (Take(u"WHERE")) {
        select.where = ParseExpression();
    }
    if (Take(u"GROUP")) {
        Expect(u"BY");
        select.groupBy = ParseList();
    }
    if (Take(u"HAVING")) {
        select.having = ParseExpression();
    }
    query.selects.push_back(std::move(select));
}

void Parser::ParseTop(Select& select) {
    if (!At(u"TOP") || Peek(1).kind != TokenKind::Literal) {
        return;
    }
    Next();
    const Token& count = Next();
    const Value& value = list_.literals[static_cast<size_t>(count.literal)];
    if (!value.IsInteger() || value.ToInteger() < 1) {
        FailAt(QStringLiteral("TOP needs a whole number of at least 1, not %1").arg(count.text), count.at);
    }
    if (At(u"PERCENT") && !At(u",", 1) && !At(u"FROM", 1) && !At(u".", 1)) {
        FailAt(QStringLiteral("TOP with PERCENT is not part of the dialect: \"PERCENT\""), Peek().at);
    }
    select.top = value.ToInteger();
    literalsShapeText_ = true;
}

SelectItem Parser::ParseSelectItem() {
    SelectItem item;
    item.at = Peek().at;
    if (Take(u"*")) {
        item.star = true;
        return item;
    }
    if (AtName() && At(u".", 1) && At(u"*", 2)) {
        item.star = true;
        item.starOf = Next().text.toString();
        Next();
        Next();
        return item;
    }
    item.expression = ParseExpression();
    if (Take(u"AS")) {
        item.alias = ExpectName(u"a name behind AS");
    }
    return item;
}

SourcePtr Parser::ParseJoins() {
    const auto level = Nest();
    SourcePtr left = ParseSource();
    for (;;) {
        JoinKind kind = JoinKind::Inner;
        const qsizetype at = Peek().at;
        if (At(u"LEFT") || At(u"RIGHT")) {
            kind = At(u"LEFT") ? JoinKind::Left : JoinKind::Right;
            Next();
            Take(u"OUTER");
        } else if (At(u"JOIN")) {
            FailAt(QStringLiteral("A join is written INNER JOIN, LEFT JOIN or RIGHT JOIN: \"JOIN\""), at);
        } else if (!Take(u"INNER")) {
            return left;
        }
        Expect(u"JOIN");
        auto join = std::make_unique<Source>();
        join->kind = Source::Kind::Join;
        join->at = at;
        join->join = kind;
        join->left = std::move(left);
        join->right = ParseSource();
        Expect(u"ON");
        join->on = ParseExpression();
        left = std::move(join);
    }
}

SourcePtr Parser::ParseSource() {
    constexpr int maximumSources = 50;
    if (++sources_ > maximumSources) {
        FailAt(QStringLiteral("A text names at most %1 tables and queries: one more").arg(maximumSources), Peek().at);
    }
    if (At(u"(") && !At(u"SELECT", 1)) {
        Next();
        SourcePtr inner = ParseJoins();
        Expect(u")");
        return inner;
    }
    auto source = std::make_unique<Source>();
    source->at = Peek().at;
    if (Take(u"(")) {
        source->kind = Source::Kind::Select;
        source->query = ParseQuery();
        Expect(u")");
    } else {
        source->name = ExpectName(u"a table, a stored query or a select in parentheses");
    }
    ParseAlias(*source);
    return source;
}

void Parser::ParseAlias(Source& source) {
    if (Take(u"AS")) {
        source.alias = ExpectName(u"a name behind AS");
    } else if (AtName()) {
        source.alias = Next().text.toString();
    }
}

void Parser::ParseOrderBy(Query& query) {
    Expect(u"BY");
    do {
        OrderItem item;
        item.expression = ParseExpression();
        item.descending = Take(u"DESC");
        if (!item.descending) {
            Take(u"ASC");
        }
        query.orderBy.push_back(std::move(item));
    } while (Take(u","));
}

} // namespace velmora::engine::dialect
