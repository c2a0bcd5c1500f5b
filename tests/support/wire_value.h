// Values for the fields of any record, so that a test can fill one from a list.
#pragma once

#include "link/record_packing.h"
#include "tests/support/hex.h"

#include <cstdint>
#include <string_view>
#include <variant>

namespace tollwick {

// A number, or a text: UTF-8 for text fields, hex for raw bytes.
using WireValue = std::variant<std::int32_t, float, std::string_view>;

inline void assignField(Integer& field, const WireValue& value) {
    field = static_cast<Integer>(std::get<std::int32_t>(value));
}
inline void assignField(Long& field, const WireValue& value) {
    field = std::get<std::int32_t>(value);
}
inline void assignField(Single& field, const WireValue& value) {
    field = std::get<float>(value);
}
template <std::size_t N>
void assignField(FixedText<N>& field, const WireValue& value) {
    field = std::get<std::string_view>(value);
}
inline void assignField(VarText& field, const WireValue& value) {
    field = std::get<std::string_view>(value);
}
template <std::size_t N>
void assignField(RawBytes<N>& field, const WireValue& value) {
    fromHex(std::get<std::string_view>(value)).copy(field.data(), N);
}

// The record whose fields hold `values`, in the order of the wire; fewer values leave the rest
// blank.
template <class Record, class Values>
Record recordOf(const Values& values) {
    Record record;
    auto value = std::begin(values);
    forEachField<Record>([&](const auto& field) {
        if (value != std::end(values))
            assignField(record.*field.member, *value++);
    });
    return record;
}

} // namespace tollwick
