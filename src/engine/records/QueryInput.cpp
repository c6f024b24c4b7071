#include "engine/records/QueryInput.h"

namespace velmora::engine::records {

namespace {

const Value& ValueOf(const dialect::Binding& binding, const QueryInput& input) {
    const auto index = static_cast<std::size_t>(binding.index);
    switch (binding.source) {
    case dialect::Binding::Source::Literal:
        return input.literals[index];
    case dialect::Binding::Source::Parameter:
        return input.parameters[index];
    case dialect::Binding::Source::Constant:
        break;
    }
    return binding.constant;
}

void BindValue(StoreStatement& statement, int place, const Value& value, FieldType type) {
    if (value.IsNull()) {
        return statement.Bind(place, Field());
    }
    if (value.IsReal()) {
        return statement.Bind(place, Field(FieldType::Unknown, value.ToReal()));
    }
    if (value.IsInteger()) {
        return statement.Bind(place, Field(FieldType::Unknown, value.ToInteger()));
    }
    if (value.IsBool()) {
        return statement.Bind(place, Field(FieldType::Unknown, qint64{value.ToBool()}));
    }
    // A text in a date-time's place is stored as one where it reads as one.
    const bool mayBeMoment = value.IsDateTime() || type == FieldType::DateTime;
    const auto moment = mayBeMoment ? value.ToDateTime() : std::nullopt;
    const QByteArray text = (moment ? StorageText(*moment) : value.ToText()).toUtf8();
    statement.Bind(place, Field(FieldType::Unknown, text.constData(), text.size()));
}

} // namespace

void BindValues(StoreStatement& statement, const std::vector<dialect::Binding>& bindings, const QueryInput& input) {
    int place = 0;
    for (const dialect::Binding& binding : bindings) {
        BindValue(statement, ++place, ValueOf(binding, input), binding.type);
    }
}

} // namespace velmora::engine::records
