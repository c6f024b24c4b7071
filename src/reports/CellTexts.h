#pragma once

#include "base/LocaleText.h"
#include "engine/Recordset.h"

namespace velmora {

// The texts that tables of reservations show, as UTF-8. Empty fields give empty texts.

QByteArray Utf8(const engine::Field& field);
// "Last, First".
QByteArray PersonName(const engine::Field& lastName, const engine::Field& firstName);
// "555-0101 ex. 101", with " ex. " also where a part is empty.
QByteArray PhoneText(const engine::Field& phone, const engine::Field& extension);
// The period as ReservationTimeText has it; empty when a date is.
QByteArray PeriodText(const LocaleText& locale, const engine::Field& start, const engine::Field& end, bool permanent);

} // namespace velmora
