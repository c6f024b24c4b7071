#include "engine/salvage/Record.h"

#include <array>
#include <bit>

namespace velmora::engine::salvage {

namespace {

using Kind = StoredValue::Kind;

constexpr quint64 firstBlobType = 12;

// The size of a field by its type number; none for the two numbers that no file may hold.
std::optional<quint64> SizeOf(quint64 type) {
    constexpr std::array<quint64, 10> sizes = {0, 1, 2, 3, 4, 6, 8, 8, 0, 0};
    if (type < sizes.size()) {
        return sizes[type];
    }
    return type < firstBlobType ? std::nullopt : std::optional<quint64>((type - firstBlobType) / 2);
}

qint64 SignedInteger(Bytes bytes) {
    quint64 number = (bytes[0] & 0x80u) != 0 ? ~quint64{0} : 0;
    for (const unsigned char byte : bytes) {
        number = number << 8 | byte;
    }
    return static_cast<qint64>(number);
}

StoredValue MakeValue(quint64 type, Bytes bytes) {
    constexpr quint64 null = 0;
    constexpr quint64 real = 7;
    constexpr quint64 zero = 8;
    constexpr quint64 one = 9;
    StoredValue value;
    if (type >= firstBlobType) {
        value.kind = type % 2 == 0 ? Kind::Blob : Kind::Text;
        value.bytes = bytes;
    } else if (type == real) {
        value.kind = Kind::Real;
        value.real = std::bit_cast<double>(SignedInteger(bytes));
    } else if (type != null) {
        value.kind = Kind::Integer;
        value.integer = type == zero || type == one ? static_cast<qint64>(type - zero) : SignedInteger(bytes);
    }
    return value;
}

} // namespace

bool DecodeRecord(Bytes record, std::vector<StoredValue>& values) {
    values.clear();
    quint32 at = 0;
    quint64 headerSize = 0;
    if (!ReadVarint(record, at, headerSize) || headerSize < at || headerSize > record.size()) {
        return false;
    }
    const Bytes header = record.first(headerSize);
    quint64 body = headerSize;
    while (at < headerSize) {
        quint64 type = 0;
        if (!ReadVarint(header, at, type)) {
            return false;
        }
        const std::optional<quint64> size = SizeOf(type);
        if (!size || *size > record.size() - body) {
            return false;
        }
        values.push_back(MakeValue(type, record.subspan(body, *size)));
        body += *size;
    }
    return body == record.size();
}

} // namespace velmora::engine::salvage
