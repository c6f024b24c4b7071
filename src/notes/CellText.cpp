#include "notes/CellText.h"

#include "base/Error.h"
#include "base/Translate.h"

#include <algorithm>
#include <cmath>

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

constexpr int decimals = 2;
// Above it a real number no longer holds every cent.
constexpr double mostMoney = 1e12;

QString PlainBlanks(QString text) {
    text.replace(QChar(0x00a0), u' ');
    text.replace(QChar(0x202f), u' ');
    return text;
}

QString Shortened(const QString& text) {
    constexpr qsizetype longest = 60;
    return text.size() > longest ? text.first(longest) + u'\u2026' : text;
}

// As many as can be read in a message.
QString SomeOf(const QStringList& choices) {
    constexpr qsizetype most = 12;
    QStringList some;
    for (const QString& choice : choices.first(std::min(most, choices.size()))) {
        some.append(Shortened(choice));
    }
    if (choices.size() > most) {
        some.append(u"\u2026"_s);
    }
    return some.join(u", "_s);
}

Error Refusal(const QString& sentence, const QString& text, const BoundColumn& column, const QString& example) {
    return ProgramError(ErrorNumber::TypeMismatch, Translate(sentence).arg(text, Translate(column.caption), example));
}

} // namespace

QString CellText::Shown(const Value& value, CellKind kind) const {
    if (value.IsNull()) {
        return {};
    }
    switch (kind) {
    case CellKind::YesNo:
        return Translate(value.ToBool() ? u"True"_s : u"False"_s);
    case CellKind::Money:
        return value.IsText() ? value.ToText() : PlainBlanks(locale_.Locale().toCurrencyString(value.ToReal()));
    case CellKind::Moment: {
        const auto moment = value.ToDateTime();
        return moment ? locale_.GeneralDate(*moment) : value.ToText();
    }
    case CellKind::Text:
    case CellKind::Lines:
    case CellKind::Choice:
    case CellKind::Number:
        break;
    }
    return value.ToText();
}

QString CellText::Typed(const Value& value, CellKind kind) const {
    if (kind != CellKind::Money || value.IsNull() || value.IsText()) {
        return Shown(value, kind);
    }
    QLocale plain = locale_.Locale();
    plain.setNumberOptions(QLocale::OmitGroupSeparator);
    return plain.toString(value.ToReal(), 'f', decimals);
}

Value CellText::Read(const QString& text, const BoundColumn& column, const QStringList& choices) const {
    if (column.kind == CellKind::Lines) {
        return text.isEmpty() ? Value() : Value(text);
    }
    const QString entry = text.trimmed();
    if (entry.isEmpty()) {
        return {};
    }
    switch (column.kind) {
    case CellKind::Choice:
        return ReadChoice(entry, column, choices);
    case CellKind::Money:
        return ReadMoney(entry, column);
    default:
        return Value(entry);
    }
}

Value CellText::ReadChoice(const QString& text, const BoundColumn& column, const QStringList& choices) const {
    const auto found = std::find_if(choices.begin(), choices.end(), [&](const QString& choice) {
        return choice.compare(text, Qt::CaseInsensitive) == 0;
    });
    if (found == choices.end()) {
        throw Refusal(u"\"%1\" is not in the list of the column %2. Choose one of its entries: %3."_s, Shortened(text),
                      column, SomeOf(choices));
    }
    return Value(*found);
}

Value CellText::ReadMoney(const QString& text, const BoundColumn& column) const {
    const QLocale& locale = locale_.Locale();
    const QString example = PlainBlanks(locale.toCurrencyString(1234.5));
    QString number = PlainBlanks(text);
    for (const QString& sign : {locale.currencySymbol(), locale.currencySymbol(QLocale::CurrencyIsoCode)}) {
        if (!sign.isEmpty()) {
            number.remove(PlainBlanks(sign));
        }
    }
    number = number.trimmed();
    // Some languages write what is owed in parentheses.
    const bool owed = number.startsWith(u'(') && number.endsWith(u')');
    if (owed) {
        number = u'-' + number.sliced(1, number.size() - 2);
    }
    const bool onlyFigures = std::none_of(number.cbegin(), number.cend(), [](QChar c) { return c.isLetter(); });
    bool read = false;
    double amount = locale.toDouble(number, &read);
    if (!read) {
        // Languages that separate groups with a no-break blank are typed with a plain one.
        amount = locale.toDouble(QString(number).remove(u' '), &read);
    }
    if (!onlyFigures || !read || !std::isfinite(amount) || std::abs(amount) >= mostMoney) {
        throw Refusal(u"\"%1\" is not an amount of money for the column %2. Type it like %3."_s, text, column, example);
    }
    const double cents = std::round(amount * 100);
    if (std::abs(amount * 100 - cents) > 1e-4 * std::max(1.0, std::abs(amount) * 1e-9)) {
        throw Refusal(u"\"%1\" has more than two decimals. Type the column %2 like %3."_s, text, column, example);
    }
    return Value(cents / 100);
}

} // namespace velmora
