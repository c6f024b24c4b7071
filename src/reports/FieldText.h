#pragma once

#include "engine/Recordset.h"
#include "print/Text.h"

namespace velmora {

// A field of the current record as the layout operations take it: a stored text without a copy, anything else as its
// text; empty for an empty field. Good until the recordset moves.
class FieldText {
public:
    explicit FieldText(const engine::Field& field)
        : stored_(field.Utf8()), text_(field.StoredKind() == engine::Field::Kind::Text ? QString() : field.ToText()) {}

    bool IsEmpty() const { return stored_.empty() && text_.isEmpty(); }
    operator print::Text() const { // NOLINT(google-explicit-constructor): it is passed as a text
        return stored_.empty() ? print::Text(text_)
                               : print::Text(QUtf8StringView(stored_.data(), static_cast<qsizetype>(stored_.size())));
    }

private:
    std::string_view stored_;
    QString text_;
};

} // namespace velmora
