#include "engine/dialect/Emitter.h"
#include "engine/dialect/Types.h"

namespace velmora::engine::dialect {

namespace {

SqlText CallOne(const char* function, const SqlText& argument) {
    return CallText(function, std::initializer_list<SqlText>{argument});
}

} // namespace

QByteArray Quoted(const QString& name) {
    QByteArray quoted = name.toUtf8();
    quoted.replace('"', "\"\"");
    return '"' + quoted + '"';
}

// 1 for true, 0 for false, NULL for neither.
SqlText Emitter::Truth(const SqlText& value, SqlType type) {
    if (type == SqlType::YesNo && !value.stored) {
        return value;
    }
    return Infix(value, "<>", {QByteArrayLiteral("0")}, Binds::Equality);
}

SqlText Emitter::AsNumber(const SqlText& value, SqlType type) {
    if (type == SqlType::YesNo) {
        const SqlText truth = Truth(value, type).Within(Binds::Whole);
        return {'-' + truth.text, Binds::Sign, truth.pending + 1, false};
    }
    return type == SqlType::Unknown ? CallOne("dialect_number", value) : value;
}

SqlText Emitter::AsText(const SqlText& value, SqlType type) {
    switch (type) {
    case SqlType::Text:
        return value;
    case SqlType::Integer:
        return {"CAST(" + value.text + " AS TEXT)", Binds::Whole, value.pending + 2, false};
    case SqlType::DateTime:
        return CallOne("dialect_general_date", value);
    case SqlType::YesNo: {
        const SqlText truth = Truth(value, type);
        return {"CASE " + truth.text + " WHEN 1 THEN 'True' WHEN 0 THEN 'False' END", Binds::Whole, truth.pending + 5,
                false};
    }
    case SqlType::Real:
    case SqlType::Unknown:
        break;
    }
    return CallOne("dialect_text", value);
}

SqlText Emitter::Convert(const SqlText& value, SqlType from, SqlType to) {
    if (from == to || to == SqlType::Unknown) {
        return value;
    }
    if (from == SqlType::Unknown) {
        SqlText result = value;
        result.stored = true;
        return result;
    }
    return to == SqlType::Text ? AsText(value, from) : AsNumber(value, from);
}

// As a field of a table keeps it: flags as 0 or 1, whole numbers whole, dates always with the time.
SqlText Emitter::ForField(const SqlText& value, SqlType from, SqlType field) {
    switch (field) {
    case SqlType::YesNo:
        return Truth(value, from);
    case SqlType::Integer:
        return from == SqlType::Integer ? value
               : from == SqlType::YesNo ? AsNumber(value, from)
                                        : CallOne("dialect_whole", value);
    case SqlType::Real:
        return AsNumber(value, from);
    case SqlType::Text:
        return AsText(value, from);
    case SqlType::DateTime:
        return from == SqlType::DateTime ? value : CallOne("dialect_moment", value);
    case SqlType::Unknown:
        break;
    }
    return value;
}

SqlText Emitter::Collated(const SqlText& value, SqlType type) {
    if (type != SqlType::Text && type != SqlType::Unknown) {
        return value;
    }
    const SqlText inner = value.Within(Binds::Collation);
    return {inner.text + " COLLATE NOCASE", Binds::Collation, inner.pending + 1, false};
}

} // namespace velmora::engine::dialect
