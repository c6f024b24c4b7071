#pragma once

#include "base/LocaleText.h"
#include "engine/Recordset.h"
#include "layouts/FieldScope.h"

#include <QString>

#include <array>
#include <vector>

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

// The fields that a layout reads, each once, in the order of the query's columns.
class FieldList {
public:
    // The field's place, which is a new one for a field that is not in the list yet.
    int Add(const FieldName& field);
    const std::vector<FieldName>& Names() const { return names_; }

private:
    std::vector<FieldName> names_;
};

// What a text can name besides fields.
enum class Special { Count, Now, Page, Pages, Period, Today };
using SpecialTexts = std::array<QString, 6>;

// Where a text stands decides what it may name.
struct TemplateUse {
    // Null where no record is at hand.
    const FieldScope* scope = nullptr;
    FieldList* fields = nullptr;
    bool count = false;
    bool pages = false;
};

// What a text is filled in from.
struct FillIn {
    // Null where no record is at hand; its fields are in the order of the FieldList.
    const engine::Recordset* rows = nullptr;
    const SpecialTexts& specials;
    const LocaleText& locale;
};

// A text with places to fill in: {Table.Field}, {Table.Field:format}, {Page} and other names. A part in square brackets
// is left out where every field in it is empty, and so are the blanks and commas that an empty field would leave
// doubled or at an end. {{ }} [[ ]] stand for the marks themselves.
class Template {
public:
    Template() = default;
    // Throws TemplateFault.
    Template(const QString& text, const TemplateUse& use);

    bool IsEmpty() const { return pieces_.empty(); }
    QString Fill(const FillIn& from) const;

private:
    struct Piece {
        enum class Kind { Text, Field, Special, Optional } kind = Kind::Text;
        QString text;
        int field = 0;
        FieldFormat format = FieldFormat::Plain;
        Special special = Special::Count;
        std::vector<Piece> inner;
    };
    class Parser;
    class Filling;
    static QString ValueOf(const Piece& piece, const FillIn& from);
    static bool HasField(const std::vector<Piece>& pieces, const FillIn& from);
    static void FillPieces(const std::vector<Piece>& pieces, const FillIn& from, Filling& filling);

    std::vector<Piece> pieces_;
};

} // namespace velmora::layouts
