#pragma once

#include "base/LocaleText.h"
#include "base/Value.h"
#include "notes/BoundRows.h"

#include <QStringList>

namespace velmora {

// What cells show, and what people type into them, in the locale's form.
class CellText {
public:
    explicit CellText(const LocaleText& locale) : locale_(locale) {}

    // Empty for an empty field; yes/no as the translated words True and False.
    QString Shown(const Value& value, CellKind kind) const;
    // What an editor begins with: money without its currency sign, everything else as it is shown.
    QString Typed(const Value& value, CellKind kind) const;

    // Reads an entry; an empty one is an empty field. Throws Error that names the entry and what the column takes.
    // Dates are read by the date box. `choices` are what a Choice column offers; the letter case of an entry does not
    // matter there.
    Value Read(const QString& text, const BoundColumn& column, const QStringList& choices = {}) const;

    const LocaleText& Locale() const { return locale_; }

private:
    Value ReadChoice(const QString& text, const BoundColumn& column, const QStringList& choices) const;
    Value ReadMoney(const QString& text, const BoundColumn& column) const;

    const LocaleText& locale_;
};

} // namespace velmora
