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

template <class Type>
void assignField(Type& field, const WireValue& value) {
    if constexpr (std::is_integral_v<Type>)
        field = static_cast<Type>(std::get<std::int32_t>(value));
    else if constexpr (std::is_same_v<Type, Single>)
        field = std::get<float>(value);
    else if constexpr (requires { field.text(); })
        field = std::get<std::string_view>(value);
    else
        fromHex(std::get<std::string_view>(value)).copy(field.data(), field.size());
}

} // namespace tollwick
