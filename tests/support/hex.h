// Bytes as hex digits, for expectations that can be read.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace tollwick {

// Pairs of digits; blanks are skipped, and "*N" after a pair stands for that byte N times in all.
inline std::string fromHex(std::string_view hex) {
    std::string bytes;
    for (std::size_t i = 0; i < hex.size();) {
        if (hex[i] == '*') {
            const std::size_t end = std::min(hex.find(' ', i), hex.size());
            bytes.append(std::stoul(std::string(hex.substr(i + 1, end - i - 1))) - 1, bytes.back());
            i = end;
        } else if (hex[i] == ' ') {
            ++i;
        } else {
            bytes += static_cast<char>(std::stoul(std::string(hex.substr(i, 2)), nullptr, 16));
            i += 2;
        }
    }
    return bytes;
}

inline std::string toHex(std::string_view bytes) {
    std::string hex;
    for (const char c : bytes) {
        hex += "0123456789abcdef"[static_cast<unsigned char>(c) >> 4];
        hex += "0123456789abcdef"[c & 15];
    }
    return hex;
}

} // namespace tollwick
