// The fixed choice lists of the host dialog. What a host stores is a position in them.
#pragma once

#include "base/string_table.h"
#include "wire/wire_types.h"

#include <string>
#include <vector>

namespace tollwick {

struct ConnectionLists {
    explicit ConnectionLists(const StringTable& texts);

    std::vector<std::string> com_ports;
    std::vector<std::string> speeds; // bits per second, ascending
    std::vector<std::string> data_bits;
    std::vector<std::string> stop_bits;
    std::vector<std::string> parities;
    std::vector<std::string> protocols;
    std::vector<std::string> packet_sizes;
    std::vector<std::string> window_sizes;
};

// The position of the protocol for which window and packet size mean nothing.
inline constexpr int kProtocolT = 1;

// How many of the speeds a modem with this maximum can use; all of them when it is 0, and never
// none.
std::size_t usableSpeeds(const std::vector<std::string>& speeds, Long max_speed);

} // namespace tollwick
