// Numbers as they stand on the wire and in the logs: little-endian, whatever the machine has.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace tollwick {

template <class Number>
using BitsOf = std::conditional_t<sizeof(Number) == 2, std::uint16_t, std::uint32_t>;

template <class Number>
void storeLittleEndian(Number value, char* to) {
    static_assert(sizeof(Number) == sizeof(BitsOf<Number>));
    const auto bits = std::bit_cast<BitsOf<Number>>(value);
    for (std::size_t i = 0; i < sizeof(Number); ++i)
        to[i] = static_cast<char>((bits >> (8 * i)) & 0xFF);
}

template <class Number>
Number loadLittleEndian(const char* from) {
    static_assert(sizeof(Number) == sizeof(BitsOf<Number>));
    BitsOf<Number> bits = 0;
    for (std::size_t i = 0; i < sizeof(Number); ++i)
        bits = static_cast<BitsOf<Number>>(
            bits | static_cast<BitsOf<Number>>(static_cast<unsigned char>(from[i])) << (8 * i));
    return std::bit_cast<Number>(bits);
}

} // namespace tollwick
