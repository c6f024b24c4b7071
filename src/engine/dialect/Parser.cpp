#include "engine/dialect/Parser.h"

#include "engine/dialect/Types.h"

namespace velmora::engine::dialect {

Statement Parse(const SourceText& source) {
    return Parser(source).ParseStatement();
}

Parser::Parser(const SourceText& source) : source_(source), list_(Tokenize(source)) {}

const Token& Parser::Peek(size_t ahead) const {
    return list_.tokens[std::min(next_ + ahead, list_.tokens.size() - 1)];
}

const Token& Parser::Next() {
    const Token& token = Peek();
    next_ = std::min(next_ + 1, list_.tokens.size() - 1);
    return token;
}

bool Parser::AtWord(QStringView word, size_t ahead) const {
    return At(TokenKind::Name, ahead) && Peek(ahead).text.compare(word, Qt::CaseInsensitive) == 0;
}

bool Parser::Take(TokenKind kind) {
    if (!At(kind)) {
        return false;
    }
    Next();
    return true;
}

bool Parser::TakeWord(QStringView word) {
    if (!AtWord(word)) {
        return false;
    }
    Next();
    return true;
}

const Token& Parser::Expect(TokenKind kind, QStringView what) {
    if (!At(kind)) {
        FailExpecting(what);
    }
    return Next();
}

QString Parser::ExpectName(QStringView what) {
    if (!At(TokenKind::Name) && !At(TokenKind::BracketedName)) {
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

Statement Parser::ParseStatement() {
    Statement statement;
    if (TakeWord(u"PARAMETERS")) {
        ParseParameters(statement);
    }
    switch (Peek().kind) {
    case TokenKind::Select:
        statement.query = ParseQuery();
        break;
    case TokenKind::Update:
        ParseUpdate(statement);
        break;
    case TokenKind::Insert:
        ParseInsert(statement);
        break;
    case TokenKind::Delete:
        ParseDelete(statement);
        break;
    default:
        FailExpecting(u"SELECT, UPDATE, INSERT or DELETE");
    }
    Take(TokenKind::Semicolon);
    if (!At(TokenKind::End)) {
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
    } while (Take(TokenKind::Comma));
    Expect(TokenKind::Semicolon, u"\",\" or \";\" behind the parameter's type");
}

FieldType Parser::ParseTypeName() {
    const Token& token = Peek();
    const auto type = token.kind == TokenKind::Name ? TypeOfName(token.text) : std::nullopt;
    if (!type) {
        FailExpecting(u"the parameter's type (DateTime, Text, Long, Short, Double, Currency, YesNo, ...)");
    }
    Next();
    // Text(255): the length says nothing that matters for a value.
    if (Take(TokenKind::Open)) {
        Expect(TokenKind::Literal, u"a length");
        Expect(TokenKind::Close, u"\")\"");
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
    Next();
    statement.target = ParseTarget();
    ParseAlias(*statement.target);
    if (!At(TokenKind::Set)) {
        FailExpecting(u"SET (an update changes one table)");
    }
    Next();
    do {
        Assignment assignment;
        assignment.at = Peek().at;
        assignment.column = ExpectName(u"a field's name");
        if (Take(TokenKind::Point)) {
            assignment.qualifier = std::move(assignment.column);
            assignment.column = ExpectName(u"a field's name");
        }
        Expect(TokenKind::Equal, u"\"=\"");
        assignment.value = ParseExpression();
        statement.assignments.push_back(std::move(assignment));
    } while (Take(TokenKind::Comma));
    if (Take(TokenKind::Where)) {
        statement.where = ParseExpression();
    }
}

void Parser::ParseInsert(Statement& statement) {
    statement.kind = Statement::Kind::Insert;
    Next();
    Expect(TokenKind::Into, u"INTO");
    statement.target = ParseTarget();
    if (Take(TokenKind::Open)) {
        statement.listsColumns = true;
        do {
            Assignment assignment;
            assignment.at = Peek().at;
            assignment.column = ExpectName(u"a field's name");
            statement.assignments.push_back(std::move(assignment));
        } while (Take(TokenKind::Comma));
        Expect(TokenKind::Close, u"\",\" or \")\"");
    }
    if (At(TokenKind::Select)) {
        statement.query = ParseQuery();
        return;
    }
    Expect(TokenKind::Values, u"VALUES or SELECT");
    const qsizetype at = Peek().at;
    Expect(TokenKind::Open, u"\"(\"");
    std::vector<ExpressionPtr> values = ParseList();
    Expect(TokenKind::Close, u"\",\" or \")\"");
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
    Next();
    Take(TokenKind::Star);
    Expect(TokenKind::From, u"FROM");
    statement.target = ParseTarget();
    ParseAlias(*statement.target);
    if (Take(TokenKind::Where)) {
        statement.where = ParseExpression();
    }
}

} // namespace velmora::engine::dialect
