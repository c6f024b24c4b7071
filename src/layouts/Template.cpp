#include "layouts/Template.h"

#include "base/Translate.h"
#include "engine/FieldType.h"

#include <QStringList>

#include <algorithm>

namespace velmora::layouts {

using namespace Qt::StringLiterals;
using engine::FieldType;

namespace {

struct NamedFormat {
    QStringView name;
    FieldFormat format;
    FieldType type;
};

constexpr std::array namedFormats = std::to_array<NamedFormat>({
    {u"date", FieldFormat::ShortDate, FieldType::DateTime},
    {u"long date", FieldFormat::LongDate, FieldType::DateTime},
    {u"weekday", FieldFormat::Weekday, FieldType::DateTime},
    {u"time", FieldFormat::Time, FieldType::DateTime},
    {u"closing date", FieldFormat::ClosingDate, FieldType::DateTime},
    {u"closing long date", FieldFormat::ClosingLongDate, FieldType::DateTime},
    {u"closing time", FieldFormat::ClosingTime, FieldType::DateTime},
    {u"money", FieldFormat::Money, FieldType::Real},
    {u"initial", FieldFormat::Initial, FieldType::Text},
});

bool Suits(FieldType wanted, FieldType type) {
    return wanted == type || (wanted == FieldType::Real && engine::IsNumber(type));
}

bool IsMidnight(DateTime moment) {
    return StartOfDay(DateOf(moment)) == moment;
}

QString FormatMoment(DateTime moment, FieldFormat format, const LocaleText& locale) {
    // What ends at midnight belongs to the day that the midnight closes.
    const Date closing = DateOf(moment - std::chrono::seconds(IsMidnight(moment) ? 1 : 0));
    switch (format) {
    case FieldFormat::ShortDate:
        return locale.ShortDate(DateOf(moment));
    case FieldFormat::LongDate:
        return locale.LongDate(DateOf(moment));
    case FieldFormat::Weekday: {
        const int fromMonday = (Weekday(DateOf(moment)) + 5) % 7 + 1;
        return locale.Locale().standaloneDayName(fromMonday);
    }
    case FieldFormat::Time:
        return locale.MediumTime(moment);
    case FieldFormat::ClosingDate:
        return locale.ShortDate(closing);
    case FieldFormat::ClosingLongDate:
        return locale.LongDate(closing);
    case FieldFormat::ClosingTime:
        return IsMidnight(moment) ? Translate(u"midnight"_s) : locale.MediumTime(moment);
    default:
        return locale.GeneralDate(moment);
    }
}

QString InitialOf(const QString& text) {
    const QString trimmed = text.trimmed();
    return trimmed.left(!trimmed.isEmpty() && trimmed[0].isHighSurrogate() ? 2 : 1).toUpper();
}

struct FormatChoice {
    FieldFormat format = FieldFormat::Plain;
    // The text of the format If.
    QString whenYes = {};
};

// The format that a layout names behind a field's colon. Throws TemplateFault: no such format, or none for a field of
// that kind.
FormatChoice ParseFieldFormat(const QString& text, FieldType type) {
    const QString name = text.trimmed();
    QStringList choices;
    for (const NamedFormat& each : namedFormats) {
        if (each.name == name) {
            if (!Suits(each.type, type)) {
                throw TemplateFault{u"the format \"%1\" is for %2, and the field holds %3"_s.arg(
                    name, engine::Describe(each.type), engine::Describe(type))};
            }
            return {each.format, {}};
        }
        choices += each.name.toString();
    }
    if (name.startsWith(u"if ")) {
        if (type != FieldType::YesNo) {
            throw TemplateFault{u"the format \"if\" is for %1, and the field holds %2"_s.arg(
                engine::Describe(FieldType::YesNo), engine::Describe(type))};
        }
        return {FieldFormat::If, name.sliced(3).trimmed()};
    }
    throw TemplateFault{
        u"there is no format \"%1\"; the formats are %2 and if TEXT"_s.arg(name, choices.join(u", "_s))};
}

// A field as a person reads it; nothing for an empty field.
QString FormatField(const engine::Field& field, FieldFormat format, const LocaleText& locale, const QString& whenYes) {
    if (field.IsNull()) {
        return {};
    }
    if (format == FieldFormat::If) {
        return field.ToBool() ? whenYes : QString();
    }
    if (format == FieldFormat::Money) {
        return locale.Locale().toString(field.ToReal(), 'f', 2);
    }
    const Value value = field.ToValue();
    if (value.IsDateTime()) {
        return FormatMoment(*value.ToDateTime(), format, locale);
    }
    if (value.IsBool()) {
        return Translate(value.ToBool() ? u"Yes"_s : u"No"_s);
    }
    return format == FieldFormat::Initial ? InitialOf(value.ToText()) : value.ToText();
}

} // namespace

int FieldList::Add(const FieldName& field) {
    const auto found = std::find(names_.begin(), names_.end(), field);
    if (found != names_.end()) {
        return static_cast<int>(found - names_.begin());
    }
    names_.push_back(field);
    return static_cast<int>(names_.size()) - 1;
}

// Reads the text of one template.
class Template::Parser {
public:
    Parser(const QString& text, const TemplateUse& use) : text_(text), use_(use) {}

    std::vector<Piece> Parse() {
        std::vector<Piece> pieces = ParsePieces(false);
        if (at_ < text_.size()) {
            throw TemplateFault{u"the \"]\" closes nothing; a bracket itself is written ]]"_s};
        }
        return pieces;
    }

private:
    // Takes a doubled mark, which stands for itself.
    bool TakeDoubled(QChar mark) {
        const bool doubled = text_[at_] == mark && at_ + 1 < text_.size() && text_[at_ + 1] == mark;
        at_ += doubled ? 2 : 0;
        return doubled;
    }

    static void AddText(std::vector<Piece>& pieces, QChar c) {
        if (pieces.empty() || pieces.back().kind != Piece::Kind::Text) {
            pieces.push_back({});
        }
        pieces.back().text += c;
    }

    std::vector<Piece> ParsePieces(bool optional) {
        std::vector<Piece> pieces;
        while (at_ < text_.size()) {
            const QChar c = text_[at_];
            if (QStringView(u"{}[]").contains(c) && TakeDoubled(c)) {
                AddText(pieces, c);
            } else if (c == u'{') {
                pieces.push_back(ParsePlace());
            } else if (c == u'[') {
                pieces.push_back(ParseOptional(optional));
            } else if (c == u']') {
                return pieces;
            } else if (c == u'}') {
                throw TemplateFault{u"the \"}\" closes nothing; a brace itself is written }}"_s};
            } else {
                AddText(pieces, c);
                ++at_;
            }
        }
        return pieces;
    }

    Piece ParseOptional(bool inside) {
        if (inside) {
            throw TemplateFault{u"parts in brackets do not nest; a bracket itself is written [["_s};
        }
        ++at_;
        Piece piece;
        piece.kind = Piece::Kind::Optional;
        piece.inner = ParsePieces(true);
        if (at_ >= text_.size()) {
            throw TemplateFault{u"the closing \"]\" is missing"_s};
        }
        ++at_;
        const bool anyField = std::any_of(piece.inner.begin(), piece.inner.end(),
                                          [](const Piece& each) { return each.kind == Piece::Kind::Field; });
        if (!anyField) {
            throw TemplateFault{
                u"a part in brackets needs a field that decides whether it is shown; a bracket itself is written [["_s};
        }
        return piece;
    }

    Piece ParsePlace() {
        const qsizetype end = text_.indexOf(u'}', at_);
        if (end < 0) {
            throw TemplateFault{u"the closing \"}\" is missing"_s};
        }
        const QString place = text_.mid(at_ + 1, end - at_ - 1);
        at_ = end + 1;
        const QString name = place.section(u':', 0, 0).trimmed();
        return name.contains(u'.') ? ParseField(place, name) : ParseSpecial(name);
    }

    Piece ParseSpecial(const QString& name) const {
        static constexpr std::array<QStringView, 6> names = {u"Count", u"Now", u"Page", u"Pages", u"Period", u"Today"};
        const auto found = std::find(names.begin(), names.end(), QStringView(name));
        if (found == names.end()) {
            throw TemplateFault{u"there is nothing called {%1}; a field is written {Table.Field}"_s.arg(name)};
        }
        Piece piece;
        piece.kind = Piece::Kind::Special;
        piece.special = static_cast<Special>(found - names.begin());
        if (piece.special == Special::Count && !use_.count) {
            throw TemplateFault{u"{Count} belongs into \"total\" and into a group's \"footer\""_s};
        }
        if ((piece.special == Special::Page || piece.special == Special::Pages) && !use_.pages) {
            throw TemplateFault{u"{%1} belongs into \"pageHeader\" and \"pageFooter\""_s.arg(name)};
        }
        return piece;
    }

    Piece ParseField(const QString& place, const QString& name) {
        if (use_.scope == nullptr) {
            throw TemplateFault{u"there is no record here to take {%1} from"_s.arg(name)};
        }
        const auto field = use_.scope->Find(name);
        if (!field) {
            throw TemplateFault{u"there is no field {%1}; %2"_s.arg(name, use_.scope->Choices(name))};
        }
        Piece piece;
        piece.kind = Piece::Kind::Field;
        piece.field = use_.fields->Add(*field);
        if (place.contains(u':')) {
            const FormatChoice choice = ParseFieldFormat(place.section(u':', 1), field->type);
            piece.format = choice.format;
            piece.text = choice.whenYes;
        }
        return piece;
    }

    const QString& text_;
    const TemplateUse& use_;
    qsizetype at_ = 0;
};

Template::Template(const QString& text, const TemplateUse& use) : pieces_(Parser(text, use).Parse()) {}

// Puts a text together so that a field without a value leaves no blank or comma of its own behind.
class Template::Filling {
public:
    void AddFixed(QStringView text) {
        const bool isOpen = text_.isEmpty() || text_.endsWith(u' ');
        while (gap_ && isOpen && !text.isEmpty() && IsSeparator(text.front())) {
            text = text.sliced(1);
        }
        gap_ = gap_ && text.isEmpty();
        const auto seen = std::find_if_not(text.rbegin(), text.rend(), IsSeparator);
        kept_ = seen == text.rend() ? kept_ : text_.size() + (text.rend() - seen);
        text_ += text;
    }
    void AddValue(const QString& value) {
        gap_ = gap_ || value.isEmpty();
        endsOpen_ = value.isEmpty();
        if (!value.isEmpty()) {
            text_ += value;
            kept_ = text_.size();
            gap_ = false;
        }
    }
    QString Finished() && {
        if (endsOpen_) {
            text_.truncate(kept_);
        }
        return std::move(text_);
    }

private:
    static bool IsSeparator(QChar c) { return c == u' ' || c == u','; }

    QString text_;
    // How much of it ends with something to see.
    qsizetype kept_ = 0;
    // A value is missing where the text ends now.
    bool gap_ = false;
    // The last value is missing.
    bool endsOpen_ = false;
};

QString Template::Fill(const FillIn& from) const {
    Filling filling;
    FillPieces(pieces_, from, filling);
    return std::move(filling).Finished();
}

QString Template::ValueOf(const Piece& piece, const FillIn& from) {
    return piece.kind == Piece::Kind::Special
               ? from.specials[static_cast<size_t>(piece.special)]
               : FormatField(from.rows->FieldAt(piece.field), piece.format, from.locale, piece.text);
}

bool Template::HasField(const std::vector<Piece>& pieces, const FillIn& from) {
    return std::any_of(pieces.begin(), pieces.end(), [&](const Piece& piece) {
        return piece.kind == Piece::Kind::Field && !ValueOf(piece, from).isEmpty();
    });
}

void Template::FillPieces(const std::vector<Piece>& pieces, const FillIn& from, Filling& filling) {
    for (const Piece& piece : pieces) {
        if (piece.kind == Piece::Kind::Text) {
            filling.AddFixed(piece.text);
        } else if (piece.kind != Piece::Kind::Optional) {
            filling.AddValue(ValueOf(piece, from));
        } else if (HasField(piece.inner, from)) {
            FillPieces(piece.inner, from, filling);
        } else {
            filling.AddValue({});
        }
    }
}

} // namespace velmora::layouts
