#pragma once

#include "engine/salvage/BtreePage.h"

#include <vector>

namespace velmora::engine::salvage {

// One field of a record. The bytes of texts and blobs are those of the record.
struct StoredValue {
    enum class Kind : unsigned char { Null, Integer, Real, Text, Blob };
    Kind kind = Kind::Null;
    qint64 integer = 0;
    double real = 0;
    Bytes bytes;
};

// Takes a record apart; false unless its header describes exactly the bytes behind it.
bool DecodeRecord(Bytes record, std::vector<StoredValue>& values);

} // namespace velmora::engine::salvage
