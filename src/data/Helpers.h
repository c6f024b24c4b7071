#pragma once

#include "base/Value.h"

#include <QByteArray>
#include <QString>

namespace velmora {

// A holder of one text, for keyed collections of texts.
struct MiscString {
    QString Data;
};

// The path with "\" appended unless it already ends in "\".
QString AddBackslash(const QString& path);

// True for a normal file; folders do not count.
bool FileExists(const QString& path);

// The whole content of a file, empty when there is none. As text: UTF-8, or Latin-1 where it is not valid UTF-8.
QString ReadFileText(const QString& path);
QByteArray ReadFileBytes(const QString& path);

// The key of a name in a keyed collection: a name that reads as a number is wrapped, so that it is not taken for a
// position.
QString AssetKey(const Value& value);

// A text inside an SQL text: between double quote characters, embedded ones doubled.
QString SqlText(const QString& text);
// The condition that a record is of the person of that name: LastName = "Abel" and FirstName = "Anna".
QString PersonCondition(const QString& lastName, const QString& firstName);
// A day as a date literal of the dialect, month/day/year whatever the locale, between "#" marks.
QString SqlDate(Date day);
// The same with the time, hours from 0 to 23.
QString SqlDateTime(DateTime moment);

} // namespace velmora
