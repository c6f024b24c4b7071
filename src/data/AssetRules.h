#pragma once

#include <QByteArrayView>
#include <QUtf8StringView>

namespace velmora {

// Assets below this number are conference rooms.
inline constexpr qint16 firstOtherAsset = 256;

inline bool IsConferenceRoom(qint64 asset) {
    return asset < firstOtherAsset;
}

// The event types of reservations that only say that nobody uses an asset, or that nobody can use it.
inline constexpr QUtf8StringView unusedEvent = "UNUSED";
inline constexpr QUtf8StringView unavailableEvent = "UNAVAILABLE";

// True for the name of an asset that is not in use: it begins with that word, letter case included.
inline bool IsUnusedName(QByteArrayView utf8Name) {
    return utf8Name.startsWith("Unused");
}

} // namespace velmora
