#pragma once

#include <QtGlobal>

#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace velmora::engine::salvage {

using Bytes = std::span<const unsigned char>;

enum class PageKind : unsigned char { IndexInterior = 2, TableInterior = 5, IndexLeaf = 10, TableLeaf = 13 };

// One entry of a page. The bytes are those of the page.
struct Cell {
    // On interior pages: the page with the entries up to this one.
    quint32 child = 0;
    // On pages of a table: the row number.
    qint64 key = 0;
    // What of the entry's record stands on the page, of how many bytes in all, and the page on which it goes on (0: it
    // is complete).
    Bytes local;
    quint64 recordSize = 0;
    quint32 overflow = 0;
};

// A page of a table's or an index's tree, taken apart. Reused from page to page to save allocations.
struct BtreePage {
    PageKind kind = PageKind::TableLeaf;
    std::vector<Cell> cells;
    // On interior pages: the page with the entries behind the last cell.
    quint32 rightChild = 0;

    // Fills this from a page's bytes. False, with the contents undefined, unless the page is sound in itself: every
    // byte of its content area belongs to exactly one entry or free block, and every entry is well formed. A page that
    // was overwritten, wholly or in part, does not pass.
    // `number` counts from 1 (the first page carries the file's header), `usable` is the page size without the bytes
    // reserved at each page's end.
    bool Parse(Bytes page, quint32 number, quint32 usable);

    bool IsLeaf() const { return kind == PageKind::IndexLeaf || kind == PageKind::TableLeaf; }
    bool IsTable() const { return kind == PageKind::TableInterior || kind == PageKind::TableLeaf; }

private:
    bool ParseCell(Bytes page, quint32 usable, quint32 offset);
    bool ParseRecord(Bytes page, quint32 usable, quint32& at, Cell& cell) const;
    bool AddFreeBlocks(Bytes page, quint32 usable, quint32 first);
    bool FillsContentArea(quint32 contentStart, quint32 usable, quint32 fragments);

    // Begin and end of everything in the content area.
    std::vector<std::pair<quint32, quint32>> extents_;
};

quint32 BigEndian16(Bytes bytes, size_t at);
quint32 BigEndian32(Bytes bytes, size_t at);
// The number of 1 to 9 bytes at `at`, which is moved behind it; false when it does not end before `bytes` does.
bool ReadVarint(Bytes bytes, quint32& at, quint64& number);

// One field of a record. The bytes of texts and blobs are those of the record.
struct RecordField {
    enum class Kind : unsigned char { Null, Integer, Real, Text, Blob };
    Kind kind = Kind::Null;
    qint64 integer = 0;
    double real = 0;
    Bytes bytes;
};

// Takes a record apart; false unless its header describes exactly the bytes behind it.
bool DecodeRecord(Bytes record, std::vector<RecordField>& values);

} // namespace velmora::engine::salvage
