#include "reports/CellTexts.h"

#include "data/ReservationTime.h"

namespace velmora {

namespace {

QByteArray Joined(const engine::Field& first, const char* between, const engine::Field& second) {
    QByteArray text = Utf8(first);
    text += between;
    text += Utf8(second);
    return text;
}

} // namespace

QByteArray Utf8(const engine::Field& field) {
    if (field.StoredKind() == engine::Field::Kind::Text) {
        const std::string_view text = field.Utf8();
        return QByteArray(text.data(), static_cast<qsizetype>(text.size()));
    }
    return field.ToText().toUtf8();
}

QByteArray PersonName(const engine::Field& lastName, const engine::Field& firstName) {
    return Joined(lastName, ", ", firstName);
}

QByteArray PhoneText(const engine::Field& phone, const engine::Field& extension) {
    return Joined(phone, " ex. ", extension);
}

QByteArray PeriodText(const LocaleText& locale, const engine::Field& start, const engine::Field& end, bool permanent) {
    const auto from = start.ToDateTime();
    const auto to = end.ToDateTime();
    return from && to ? ReservationTimeText(locale, *from, *to, permanent).toUtf8() : QByteArray();
}

} // namespace velmora
