// Makes files of the modem catalogue.
#pragma once

#include "base/little_endian.h"
#include "wire/wire_types.h"

#include <string>
#include <vector>

namespace tollwick {

// One modem; its texts are in the code page.
struct Modem {
    std::string make, model = "Model", state = std::string(2, '\0');
    Long number = 1;
    std::string init = "ATI^M";
    Long max_speed = 9600;
};

inline std::string bytesOf(Long number) {
    char bytes[sizeof number];
    storeLittleEndian(number, bytes);
    return {bytes, sizeof bytes};
}

inline std::string modemFile(const std::vector<Modem>& modems) {
    const auto field = [](std::string text, std::size_t width) {
        text.resize(width, ' ');
        return text;
    };
    std::string bytes = bytesOf(static_cast<Long>(modems.size()));
    for (const Modem& m : modems)
        bytes += m.state + bytesOf(m.number) + field(m.make, 25) + field(m.model, 40) +
                 field(m.init, 128) + field("ATT", 30) + field("HANG", 50) + field("RESET", 30) +
                 field("ANSWER", 30) + field("DIAL", 30) + field("BUSY!", 30) +
                 bytesOf(m.max_speed) + field("CONN", 40);
    return bytes;
}

} // namespace tollwick
