#include "rules/connection_lists.h"

#include "base/numeric.h"

#include <algorithm>

namespace tollwick {
namespace {

constexpr int kComPorts = 16;

} // namespace

ConnectionLists::ConnectionLists(const StringTable& texts)
    : speeds{"1200", "2400", "4800", "9600", "19200", "38400", "57600", "115200"},
      data_bits{"8", "7"}, stop_bits{"1", "2"}, parities{std::string(texts(Text::ParityNone)),
                                                         std::string(texts(Text::ParityEven)),
                                                         std::string(texts(Text::ParityOdd))},
      protocols{"g", "t", "G"}, packet_sizes{"32",  "64",   "128",  "256",
                                             "512", "1024", "2048", "4096"},
      window_sizes{"1", "2", "3", "4", "5", "6", "7"} {
    for (int port = 1; port <= kComPorts; ++port)
        com_ports.push_back("COM" + std::to_string(port) + ":");
}

std::size_t usableSpeeds(const std::vector<std::string>& speeds, Long max_speed) {
    if (max_speed == 0)
        return speeds.size();
    const auto usable =
        std::count_if(speeds.begin(), speeds.end(), [max_speed](const std::string& speed) {
            return numericValue(speed) <= max_speed;
        });
    return static_cast<std::size_t>(std::max<std::ptrdiff_t>(usable, 1));
}

} // namespace tollwick
