// Bytes as hex digits, for expectations that can be read.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <string>
#include <string_view>

namespace tollwick {

// Pairs of digits; blanks are skipped, and "*N" after a pair stands for that byte N times in all.
inline std::string fromHex(std::string_view hex) {
    std::string bytes;
    for (std::size_t i = 0; i < hex.size();) {
        if (hex[i] == '*') {
            std::size_t end = i + 1;
            while (end < hex.size() && hex[end] != ' ')
                ++end;
            bytes.append(std::stoul(std::string(hex.substr(i + 1, end - i - 1))) - 1, bytes.back());
            i = end;
        } else if (hex[i] == ' ') {
            ++i;
        } else {
            const std::string pair(hex.substr(i, 2));
            bytes.push_back(static_cast<char>(std::strtoul(pair.c_str(), nullptr, 16)));
            i += 2;
        }
    }
    return bytes;
}

inline std::string toHex(std::string_view bytes) {
    std::string hex;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        hex.push_back("0123456789abcdef"[byte >> 4]);
        hex.push_back("0123456789abcdef"[byte & 15]);
    }
    return hex;
}

} // namespace tollwick
