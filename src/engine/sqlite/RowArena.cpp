#include "engine/sqlite/RowArena.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>

namespace velmora::engine::sqlite {

namespace {

// What a field's first byte says. Texts of up to `shortTextLimit` bytes have their length in it.
enum Tag : unsigned char {
    tagNull,
    tagZero,
    tagOne,
    tagInt8,
    tagInt16,
    tagInt32,
    tagInt64,
    tagReal,
    tagLongText,
    tagShortText
};

constexpr int shortTextLimit = 255 - tagShortText;
constexpr std::size_t longestNumber = 8;
constexpr std::size_t lengthOfLongText = sizeof(quint32);

constexpr std::size_t firstChunk = std::size_t{4} << 10;
constexpr std::size_t largestChunk = std::size_t{256} << 10;
constexpr std::size_t rowsKept = 512;

// Bytes behind the tags; of a long text only its length.
constexpr auto fixedSizes = [] {
    std::array<unsigned char, 256> sizes{};
    sizes[tagInt8] = 1;
    sizes[tagInt16] = 2;
    sizes[tagInt32] = 4;
    sizes[tagInt64] = 8;
    sizes[tagReal] = 8;
    sizes[tagLongText] = lengthOfLongText;
    for (std::size_t tag = tagShortText; tag < sizes.size(); ++tag) {
        sizes[tag] = static_cast<unsigned char>(tag - tagShortText);
    }
    return sizes;
}();

template <typename T>
T Load(const unsigned char* from) {
    T value;
    std::memcpy(&value, from, sizeof value);
    return value;
}

template <typename T, typename From>
unsigned char* Put(unsigned char* to, From from) {
    const T value = static_cast<T>(from);
    std::memcpy(to, &value, sizeof value);
    return to + sizeof value;
}

template <typename T>
bool Fits(qint64 number) {
    return number >= std::numeric_limits<T>::min() && number <= std::numeric_limits<T>::max();
}

unsigned char* PutInteger(unsigned char& tag, unsigned char* to, qint64 number) {
    if (number == 0 || number == 1) {
        tag = number == 0 ? tagZero : tagOne;
        return to;
    }
    if (Fits<qint8>(number)) {
        tag = tagInt8;
        return Put<qint8>(to, number);
    }
    if (Fits<qint16>(number)) {
        tag = tagInt16;
        return Put<qint16>(to, number);
    }
    if (Fits<qint32>(number)) {
        tag = tagInt32;
        return Put<qint32>(to, number);
    }
    tag = tagInt64;
    return Put<qint64>(to, number);
}

unsigned char* PutText(unsigned char& tag, unsigned char* to, std::string_view text) {
    if (text.size() <= shortTextLimit) {
        tag = static_cast<unsigned char>(tagShortText + text.size());
    } else {
        tag = tagLongText;
        to = Put<quint32>(to, text.size());
    }
    return std::copy(text.begin(), text.end(), to);
}

// The fields of a statement's current row. A value is asked for once and then read without further checks.
template <typename PositionOf>
class StatementFields {
public:
    StatementFields(sqlite3_stmt* statement, PositionOf positionOf)
        : statement_(statement), positionOf_(std::move(positionOf)) {}

    Field::Kind Next(std::size_t i) {
        value_ = sqlite3_column_value(statement_, positionOf_(i));
        switch (sqlite3_value_type(value_)) {
        case SQLITE_NULL:
            return Field::Kind::Null;
        case SQLITE_INTEGER:
            return Field::Kind::Integer;
        case SQLITE_FLOAT:
            return Field::Kind::Real;
        default:
            return Field::Kind::Text;
        }
    }
    qint64 Integer() const { return sqlite3_value_int64(value_); }
    double Real() const { return sqlite3_value_double(value_); }
    std::string_view Text() const {
        const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value_));
        return {text, static_cast<std::size_t>(sqlite3_value_bytes(value_))};
    }

private:
    sqlite3_stmt* statement_;
    PositionOf positionOf_;
    sqlite3_value* value_ = nullptr;
};

class GivenFields {
public:
    explicit GivenFields(const std::vector<Field>& fields) : fields_(fields) {}

    Field::Kind Next(std::size_t i) {
        field_ = fields_[i];
        return field_.StoredKind();
    }
    qint64 Integer() const { return field_.StoredInteger(); }
    double Real() const { return field_.ToReal(); }
    std::string_view Text() const { return field_.Utf8(); }

private:
    const std::vector<Field>& fields_;
    Field field_;
};

} // namespace

void RowArena::Reset(int fieldsPerRow) {
    fieldsPerRow_ = fieldsPerRow;
    rows_.clear();
    if (rows_.capacity() > rowsKept) {
        rows_.shrink_to_fit();
    }
    if (!chunks_.empty()) {
        chunks_.resize(1);
        if (chunks_.front().size > firstChunk) {
            chunks_.clear();
        }
    }
    rowStart_ = next_ = chunks_.empty() ? nullptr : chunks_.front().bytes.get();
    end_ = chunks_.empty() ? nullptr : next_ + chunks_.front().size;
}

std::size_t RowArena::BytesHeld() const {
    std::size_t bytes = rows_.capacity() * sizeof(Row);
    for (const Chunk& chunk : chunks_) {
        bytes += chunk.size;
    }
    return bytes;
}

// Moves the row begun to a chunk that has room for `bytes` more.
void RowArena::MakeRoom(std::size_t bytes) {
    const auto begun = static_cast<std::size_t>(next_ - rowStart_);
    std::size_t size = chunks_.empty() ? firstChunk : std::min(chunks_.back().size * 2, largestChunk);
    size = std::max(size, begun + bytes);
    Chunk chunk{std::make_unique_for_overwrite<unsigned char[]>(size), size};
    if (begun > 0) {
        std::memcpy(chunk.bytes.get(), rowStart_, begun);
    }
    rowStart_ = chunk.bytes.get();
    next_ = rowStart_ + begun;
    end_ = rowStart_ + size;
    chunks_.push_back(std::move(chunk));
}

// `source` gives the fields in their order: Next goes to the next one and says what it is.
template <typename Source>
void RowArena::AppendFrom(Source source) {
    const auto fields = static_cast<std::size_t>(fieldsPerRow_);
    // Room for the tags and all numbers at once; only texts ask again.
    const std::size_t numbers = fields * (1 + longestNumber);
    rowStart_ = next_;
    if (static_cast<std::size_t>(end_ - next_) < numbers) {
        MakeRoom(numbers);
    }
    next_ += fields;
    for (std::size_t i = 0; i < fields; ++i) {
        switch (source.Next(i)) {
        case Field::Kind::Null:
            rowStart_[i] = tagNull;
            break;
        case Field::Kind::Integer:
            next_ = PutInteger(rowStart_[i], next_, source.Integer());
            break;
        case Field::Kind::Real:
            rowStart_[i] = tagReal;
            next_ = Put<double>(next_, source.Real());
            break;
        case Field::Kind::Text: {
            const std::string_view text = source.Text();
            const std::size_t needed = lengthOfLongText + text.size() + (fields - i) * longestNumber;
            if (static_cast<std::size_t>(end_ - next_) < needed) {
                MakeRoom(needed);
            }
            next_ = PutText(rowStart_[i], next_, text);
        }
        }
    }
    rows_.push_back(rowStart_);
}

void RowArena::Append(sqlite3_stmt* statement) {
    AppendFrom(StatementFields(statement, [](std::size_t i) { return static_cast<int>(i); }));
}

void RowArena::Append(sqlite3_stmt* statement, const std::vector<int>& positions) {
    AppendFrom(StatementFields(statement, [&positions](std::size_t i) { return positions[i]; }));
}

void RowArena::Append(const std::vector<Field>& fields) {
    AppendFrom(GivenFields(fields));
}

void RowArena::MoveLastTo(qint64 index) {
    rows_[static_cast<std::size_t>(index)] = rows_.back();
    rows_.pop_back();
}

void RowReader::SetTypes(const std::vector<FieldType>& types) {
    types_ = types.data();
    offsets_.resize(types.size());
    row_ = nullptr;
}

void RowReader::Measure() const {
    const std::size_t fields = offsets_.size();
    auto offset = static_cast<unsigned>(fields);
    for (std::size_t i = 0; i < fields; ++i) {
        const unsigned char tag = row_[i];
        offsets_[i] = offset;
        offset += fixedSizes[tag];
        if (tag == tagLongText) {
            offset += Load<quint32>(row_ + offsets_[i]);
        }
    }
    measured_ = true;
}

Field RowReader::At(int index) const {
    if (!measured_) {
        Measure();
    }
    const auto i = static_cast<std::size_t>(index);
    const FieldType type = types_[i];
    const unsigned char tag = row_[i];
    const unsigned char* bytes = row_ + offsets_[i];
    switch (tag) {
    case tagNull:
        return Field();
    case tagZero:
        return Field(type, qint64{0});
    case tagOne:
        return Field(type, qint64{1});
    case tagInt8:
        return Field(type, qint64{Load<qint8>(bytes)});
    case tagInt16:
        return Field(type, qint64{Load<qint16>(bytes)});
    case tagInt32:
        return Field(type, qint64{Load<qint32>(bytes)});
    case tagInt64:
        return Field(type, Load<qint64>(bytes));
    case tagReal:
        return Field(type, Load<double>(bytes));
    case tagLongText:
        return Field(type, reinterpret_cast<const char*>(bytes) + lengthOfLongText, Load<quint32>(bytes));
    default:
        return Field(type, reinterpret_cast<const char*>(bytes), tag - tagShortText);
    }
}

} // namespace velmora::engine::sqlite
