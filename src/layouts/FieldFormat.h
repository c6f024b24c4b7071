#pragma once

#include "base/LocaleText.h"
#include "engine/Catalog.h"
#include "engine/Recordset.h"

#include <QString>

namespace velmora::layouts {

// How a field is written.
enum class FieldFormat {
    Plain, // a general date, Yes or No, a number as it is, a text
    ShortDate,
    LongDate,
    Weekday, // the weekday's name
    Time,
    ClosingDate, // the dates of an end: exactly midnight closes the day before
    ClosingLongDate,
    ClosingTime, // "midnight" at exactly midnight
    Money,       // with two decimals
    Initial,     // the first letter, as a capital
    If,          // a fixed text when the yes/no field is a yes
};

// What is wrong with a text that names fields, as words for a person.
struct TemplateFault {
    QString what;
};

struct FormatChoice {
    FieldFormat format = FieldFormat::Plain;
    // The text of the format If.
    QString whenYes;
};

// The format that a layout names behind a field's colon. Throws TemplateFault: no such format, or none for a field of
// that kind.
FormatChoice ParseFieldFormat(const QString& text, engine::FieldType type);

// A field as a person reads it; nothing for an empty field.
QString FormatField(const engine::Field& field, FieldFormat format, const LocaleText& locale,
                    const QString& whenYes = {});

} // namespace velmora::layouts
