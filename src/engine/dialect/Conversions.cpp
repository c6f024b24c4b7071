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
SqlText Emitter::Truth(const SqlText& value, FieldType type) {
    if (type == FieldType::YesNo && !value.stored) {
        return value;
    }
    return Infix(value, "<>", {QByteArrayLiteral("0")}, Binds::Equality);
}

SqlText Emitter::AsNumber(const SqlText& value, FieldType type) {
    if (type == FieldType::YesNo) {
        const SqlText truth = Truth(value, type).Within(Binds::Whole);
        return {'-' + truth.text, Binds::Sign, truth.pending + 1, false};
    }
    return type == FieldType::Unknown ? CallOne("dialect_number", value) : value;
}

SqlText Emitter::AsText(const SqlText& value, FieldType type) {
    switch (type) {
    case FieldType::Text:
        return value;
    case FieldType::Integer:
        return {"CAST(" + value.text + " AS TEXT)", Binds::Whole, value.pending + 2, false};
    case FieldType::DateTime:
        return CallOne("dialect_general_date", value);
    case FieldType::YesNo: {
        const SqlText truth = Truth(value, type);
        return {"CASE " + truth.text + " WHEN 1 THEN 'True' WHEN 0 THEN 'False' END", Binds::Whole, truth.pending + 5,
                false};
    }
    case FieldType::Real:
    case FieldType::Unknown:
        break;
    }
    return CallOne("dialect_text", value);
}

SqlText Emitter::Convert(const SqlText& value, FieldType from, FieldType to) {
    if (from == to || to == FieldType::Unknown) {
        return value;
    }
    if (from == FieldType::Unknown) {
        SqlText result = value;
        result.stored = true;
        return result;
    }
    return to == FieldType::Text ? AsText(value, from) : AsNumber(value, from);
}

// As a field of a table keeps it: flags as 0 or 1, whole numbers whole, dates always with the time.
SqlText Emitter::ForField(const SqlText& value, FieldType from, FieldType field) {
    switch (field) {
    case FieldType::YesNo:
        return Truth(value, from);
    case FieldType::Integer:
        return from == FieldType::Integer ? value
               : from == FieldType::YesNo ? AsNumber(value, from)
                                          : CallOne("dialect_whole", value);
    case FieldType::Real:
        return AsNumber(value, from);
    case FieldType::Text:
        return AsText(value, from);
    case FieldType::DateTime:
        return from == FieldType::DateTime ? value : CallOne("dialect_moment", value);
    case FieldType::Unknown:
        break;
    }
    return value;
}

SqlText Emitter::Collated(const SqlText& value, FieldType type) {
    if (type != FieldType::Text && type != FieldType::Unknown) {
        return value;
    }
    const SqlText inner = value.Within(Binds::Collation);
    return {inner.text + " COLLATE NOCASE", Binds::Collation, inner.pending + 1, false};
}

} // namespace velmora::engine::dialect
