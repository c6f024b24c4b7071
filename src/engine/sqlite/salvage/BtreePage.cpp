#include "engine/sqlite/salvage/BtreePage.h"

#include <algorithm>
#include <array>
#include <bit>

namespace velmora::engine::salvage {

namespace {

constexpr quint32 fileHeaderSize = 100;
constexpr quint32 smallestCell = 4;

} // namespace

quint32 BigEndian16(Bytes bytes, size_t at) {
    return quint32{bytes[at]} << 8 | bytes[at + 1];
}

quint32 BigEndian32(Bytes bytes, size_t at) {
    return BigEndian16(bytes, at) << 16 | BigEndian16(bytes, at + 2);
}

bool ReadVarint(Bytes bytes, quint32& at, quint64& number) {
    number = 0;
    for (int count = 1; at < bytes.size(); ++count) {
        const unsigned char byte = bytes[at++];
        if (count == 9) {
            number = number << 8 | byte;
            return true;
        }
        number = number << 7 | (byte & 0x7fu);
        if ((byte & 0x80u) == 0) {
            return true;
        }
    }
    return false;
}

bool BtreePage::Parse(Bytes page, quint32 number, quint32 usable) {
    const quint32 header = number == 1 ? fileHeaderSize : 0;
    const unsigned char flags = page[header];
    if (flags != 2 && flags != 5 && flags != 10 && flags != 13) {
        return false;
    }
    kind = static_cast<PageKind>(flags);
    cells.clear();
    extents_.clear();
    const quint32 count = BigEndian16(page, header + 3);
    const quint32 storedStart = BigEndian16(page, header + 5);
    const quint32 contentStart = storedStart == 0 ? 65536 : storedStart;
    const quint32 pointers = header + (IsLeaf() ? 8 : 12);
    if (contentStart > usable || pointers + 2 * count > contentStart) {
        return false;
    }
    rightChild = IsLeaf() ? 0 : BigEndian32(page, header + 8);
    for (quint32 index = 0; index < count; ++index) {
        const quint32 offset = BigEndian16(page, pointers + 2 * index);
        if (offset < contentStart || offset + smallestCell > usable || !ParseCell(page, usable, offset)) {
            return false;
        }
    }
    return AddFreeBlocks(page, usable, BigEndian16(page, header + 1)) &&
           FillsContentArea(contentStart, usable, page[header + 7]);
}

bool BtreePage::ParseCell(Bytes page, quint32 usable, quint32 offset) {
    Cell cell;
    quint32 at = offset;
    if (!IsLeaf()) {
        cell.child = BigEndian32(page, at);
        at += 4;
    }
    quint64 key = 0;
    const Bytes used = page.first(usable);
    if (kind == PageKind::TableInterior) {
        if (!ReadVarint(used, at, key)) {
            return false;
        }
        cell.key = static_cast<qint64>(key);
    } else if (!ParseRecord(used, usable, at, cell)) {
        return false;
    }
    const quint32 end = std::max(at, offset + smallestCell);
    if (end > usable) {
        return false;
    }
    extents_.emplace_back(offset, end);
    cells.push_back(cell);
    return true;
}

// How much of a record stands on its page: all of it up to a limit, else as much as fills the overflow pages evenly.
bool BtreePage::ParseRecord(Bytes page, quint32 usable, quint32& at, Cell& cell) const {
    quint64 key = 0;
    if (!ReadVarint(page, at, cell.recordSize) || (kind == PageKind::TableLeaf && !ReadVarint(page, at, key))) {
        return false;
    }
    cell.key = static_cast<qint64>(key);
    const quint32 most = kind == PageKind::TableLeaf ? usable - 35 : (usable - 12) * 64 / 255 - 23;
    quint64 local = cell.recordSize;
    if (local > most) {
        const quint32 least = (usable - 12) * 32 / 255 - 23;
        local = least + (cell.recordSize - least) % (usable - 4);
        local = local > most ? least : local;
    }
    if (local > usable - at) {
        return false;
    }
    cell.local = page.subspan(at, local);
    at += static_cast<quint32>(local);
    if (local < cell.recordSize) {
        if (usable - at < 4) {
            return false;
        }
        cell.overflow = BigEndian32(page, at);
        at += 4;
    }
    return true;
}

bool BtreePage::AddFreeBlocks(Bytes page, quint32 usable, quint32 first) {
    quint32 before = 0;
    for (quint32 block = first; block != 0;) {
        if (block <= before || block + 4 > usable) {
            return false;
        }
        const quint32 size = BigEndian16(page, block + 2);
        if (size < 4 || block + size > usable) {
            return false;
        }
        extents_.emplace_back(block, block + size);
        before = block;
        block = BigEndian16(page, block);
    }
    return true;
}

bool BtreePage::FillsContentArea(quint32 contentStart, quint32 usable, quint32 fragments) {
    std::sort(extents_.begin(), extents_.end());
    quint32 end = contentStart;
    quint32 gaps = 0;
    for (const auto& [from, to] : extents_) {
        if (from < end) {
            return false;
        }
        gaps += from - end;
        end = to;
    }
    return gaps + (usable - end) == fragments;
}

namespace {

using Kind = RecordField::Kind;

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

RecordField MakeValue(quint64 type, Bytes bytes) {
    constexpr quint64 null = 0;
    constexpr quint64 real = 7;
    constexpr quint64 zero = 8;
    constexpr quint64 one = 9;
    RecordField value;
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

bool DecodeRecord(Bytes record, std::vector<RecordField>& values) {
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
