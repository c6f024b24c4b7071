#pragma once

#include "base/DateTime.h"

#include <QString>
#include <QStringView>

#include <array>
#include <string_view>

namespace velmora::engine::sqlite {

// Texts of values as the function Format makes them: always those of en_US, whatever the desk's locale, since they are
// written into the shared database. All throw FunctionFailure for a pattern that means nothing.

using GeneralDateBuffer = std::array<char, 22>;

// 3/7/2026 2:15 PM; seconds only when they are not zero; the date alone at exactly midnight. The text is in `buffer`:
// statements write millions of these while the database is locked.
std::string_view GeneralDate(DateTime moment, GeneralDateBuffer& buffer);

// By a pattern of d m y h n s, AM/PM, q and w, or by the name of one ("Short Date"). Without a pattern the general
// date. "m" right behind the hours means minutes.
QString FormatMoment(DateTime moment, QStringView pattern);

// By a pattern of 0, #, the point, the comma and %, or by a name ("Fixed"). Without a pattern the shortest form.
QString FormatNumber(double number, QStringView pattern);

} // namespace velmora::engine::sqlite
