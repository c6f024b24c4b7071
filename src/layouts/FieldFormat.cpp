#include "layouts/FieldFormat.h"

#include "base/Translate.h"
#include "engine/FieldType.h"

#include <QStringList>

#include <array>

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

} // namespace

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

} // namespace velmora::layouts
