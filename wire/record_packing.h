// Packing and unpacking of the sub-records: one walk over a record's list of fields serves both
// directions.
#pragma once

#include "base/little_endian.h"
#include "wire/comrecord.h"
#include "wire/records.h"

#include <cstring>
#include <type_traits>

namespace tollwick {

// Writes into a data block; what does not fit is cut.
class BlockWriter {
public:
    explicit BlockWriter(DataBlock& block) : block_(block) {}

    template <class Number>
    requires std::is_arithmetic_v<Number>
    void put(const Number& value) {
        char bytes[sizeof(Number)];
        storeLittleEndian(value, bytes);
        putNumber({bytes, sizeof bytes});
    }
    template <std::size_t N>
    void put(const FixedText<N>& text) {
        putBytes(text.bytes());
    }
    template <std::size_t N>
    void put(const RawBytes<N>& raw) {
        putNumber({raw.data(), raw.size()});
    }
    void put(const VarText& text) {
        const std::size_t length = std::min(text.bytes().size(), VarText::max_bytes);
        put(static_cast<Integer>(static_cast<std::uint16_t>(length)));
        putBytes(std::string_view(text.bytes()).substr(0, length));
    }

    // Where the last number ends that is not 0, without the NULs at its own end.
    [[nodiscard]] std::size_t numberEnd() const { return number_end_; }

private:
    // Bytes that may not be taken for the blanks at the end of a text.
    void putNumber(std::string_view bytes) {
        const std::size_t used = withoutTrailingNuls(bytes).size();
        if (used > 0)
            number_end_ = std::min(position_ + used, block_.size());
        putBytes(bytes);
    }
    void putBytes(std::string_view bytes) {
        position_ += bytes.copy(block_.data() + position_, block_.size() - position_);
    }

    DataBlock& block_;
    std::size_t position_ = 0;
    std::size_t number_end_ = 0;
};

// Reads from a data block; past its end there are only NULs, and a text ends with the block.
class BlockReader {
public:
    explicit BlockReader(const DataBlock& block) : rest_(block.data(), block.size()) {}

    template <class Number>
    requires std::is_arithmetic_v<Number>
    void get(Number& value) {
        char bytes[sizeof(Number)] = {};
        takeBytes(bytes, sizeof bytes);
        value = loadLittleEndian<Number>(bytes);
    }
    template <std::size_t N>
    void get(FixedText<N>& text) {
        text = FixedText<N>();
        takeBytes(text.data(), N);
    }
    template <std::size_t N>
    void get(RawBytes<N>& raw) {
        raw = {};
        takeBytes(raw.data(), N);
    }
    void get(VarText& text) {
        Integer length = 0;
        get(length);
        const std::size_t wanted = static_cast<std::uint16_t>(length);
        const std::string_view bytes = rest_.substr(0, wanted);
        is_cut_ = is_cut_ || bytes.size() < wanted;
        text.setBytes(std::string(bytes));
        rest_.remove_prefix(bytes.size());
    }

    // Whether a text was longer than what the block has of it.
    [[nodiscard]] bool isCut() const { return is_cut_; }

private:
    void takeBytes(char* to, std::size_t wanted) { rest_.remove_prefix(rest_.copy(to, wanted)); }

    std::string_view rest_;
    bool is_cut_ = false;
};

template <class Record, class Visit>
constexpr void forEachField(Visit&& visit) {
    std::apply([&](const auto&... field) { (visit(field), ...); }, Record::fields());
}

// Stores the record into the data block, whose uncovered rest becomes NULs. The header is not
// touched.
template <class Record>
void packRecord(const Record& record, Comrecord& comrecord) {
    comrecord.ComrecordData.fill('\0');
    BlockWriter writer(comrecord.ComrecordData);
    forEachField<Record>([&](const auto& field) { writer.put(record.*field.member); });
    comrecord.data_end = writer.numberEnd();
}

// Reads the record from the start of the data block, replacing all its fields. False when a text
// was longer than the block, whose rest of it the record then holds.
template <class Record>
bool unpackRecord(const Comrecord& comrecord, Record& record) {
    BlockReader reader(comrecord.ComrecordData);
    forEachField<Record>([&](const auto& field) { reader.get(record.*field.member); });
    return !reader.isCut();
}

namespace detail {
template <class Type>
inline constexpr std::size_t wire_size = sizeof(Type);
template <std::size_t N>
inline constexpr std::size_t wire_size<FixedText<N>> = N;
template <>
inline constexpr std::size_t wire_size<VarText> = 2; // its length; the bytes come on top

template <class Record, class Type>
constexpr std::size_t fieldSize(Field<Record, Type>) {
    return wire_size<Type>;
}
} // namespace detail

// Bytes that the record takes on the wire when its variable texts are empty.
template <class Record>
constexpr std::size_t wireSize() {
    std::size_t size = 0;
    forEachField<Record>([&](const auto& field) { size += detail::fieldSize(field); });
    return size;
}

// True when of what has come something belongs to this field or those behind it; the record has no
// variable texts before it.
template <class Record, class Type>
bool reachesField(const Comrecord& comrecord, Type Record::*member) {
    std::size_t offset = 0;
    bool is_before = true;
    forEachField<Record>([&](const auto& field) {
        if constexpr (std::is_same_v<decltype(field.member), Type Record::*const> ||
                      std::is_same_v<decltype(field.member), Type Record::*>)
            is_before = is_before && field.member != member;
        offset += is_before ? detail::fieldSize(field) : 0;
    });
    return comrecord.data_end > offset;
}

static_assert(wireSize<ScheduleRecord>() == 77);
static_assert(wireSize<HostRecord>() == 2292);
static_assert(wireSize<SettingsRecord>() == 86);
static_assert(wireSize<OutboxRecord>() == 12);
static_assert(wireSize<UucpStatusRecord>() == 26);
static_assert(wireSize<LoginRecord>() == 4);
static_assert(wireSize<ScriptRecord>() == 4);
static_assert(wireSize<NameListRecord>() == 2);
static_assert(wireSize<UucpCommandRecord>() == 4);

// Bytes that this record takes on the wire, its variable texts included.
template <class Record>
std::size_t packedSize(const Record& record) {
    std::size_t size = wireSize<Record>();
    forEachField<Record>([&](const auto& field) {
        if constexpr (std::is_same_v<std::decay_t<decltype(record.*field.member)>, VarText>)
            size += (record.*field.member).bytes().size();
    });
    return size;
}

// Whether nothing of the record is cut when it is packed.
template <class Record>
bool fitsBlock(const Record& record) {
    return packedSize(record) <= kDataBlockSize;
}

// Deletes the scratch file "@move@" of the current directory, which this console never makes,
// before a line is sent: wanted.
void removeScratchFile();

} // namespace tollwick
