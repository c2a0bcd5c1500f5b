// The modems that an administrator can choose from, as MODEMS.DAT in the install folder lists them.
//
// The file begins with a Long count, and that many records of kRecordSize bytes follow: Integer
// state, Long record number, make, model, init, attention, hang-up, reset, answer, dial, busy, Long
// maximum speed, connect. Texts are ANSI, padded with blanks; numbers are little-endian.
#pragma once

#include "base/number_types.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tollwick {

// Bytes of the texts of a record.
namespace modem_width {
inline constexpr std::size_t Make = 25;
inline constexpr std::size_t Model = 40;
inline constexpr std::size_t Init = 128;
inline constexpr std::size_t Attention = 30;
inline constexpr std::size_t HangUp = 50;
inline constexpr std::size_t Reset = 30;
inline constexpr std::size_t Answer = 30;
inline constexpr std::size_t Dial = 30;
inline constexpr std::size_t Busy = 30;
inline constexpr std::size_t Connect = 40;
} // namespace modem_width

// Texts are UTF-8, without the blanks around them. "^M" in a command is kept as these two
// characters.
struct ModemRecord {
    bool deleted{};
    Long record_number{};
    std::string make;
    std::string model;
    std::string init;
    std::string attention;
    std::string hang_up;
    std::string reset;
    std::string answer;
    std::string dial;
    std::string busy;
    Long max_speed{}; // bits per second; 0 when not known
    std::string connect;
};

// The modem with a usual value in place of what the catalogue leaves blank: commands, make, speed.
ModemRecord withUsualValues(ModemRecord modem);

class ModemCatalogue {
public:
    static constexpr std::size_t kRecordSize = 443;
    // In bytes; a larger file counts as missing.
    static constexpr std::size_t kMaxFileSize = 8 * 1024 * 1024;

    ModemCatalogue() = default;

    // The catalogue is empty when the file cannot be read; one of length 0 is deleted.
    static ModemCatalogue load(const std::string& file);
    // Takes the whole records that these bytes of a file hold, at most as many as they say.
    static ModemCatalogue parse(std::string_view bytes);

    // In the order of the file, with the deleted ones.
    [[nodiscard]] const std::vector<ModemRecord>& records() const { return records_; }
    // 0 when there are none.
    [[nodiscard]] Long largestRecordNumber() const { return largest_record_number_; }

    // What follows knows nothing of deleted records. Makes and models are told apart by case.

    // Sorted by their bytes, each once.
    [[nodiscard]] const std::vector<std::string>& makes() const { return makes_; }
    // Whether the make is in the list of makes.
    [[nodiscard]] bool SearchModemList(std::string_view make) const;
    // In the order of the file.
    [[nodiscard]] std::vector<std::string> modelsOf(std::string_view make) const;
    // The first such modem, or nullptr. The pointer lasts as long as the catalogue.
    [[nodiscard]] const ModemRecord* find(std::string_view make, std::string_view model) const;

private:
    std::vector<ModemRecord> records_;
    std::vector<std::string> makes_;
    Long largest_record_number_ = 0;
};

} // namespace tollwick
