// The modems that an administrator can choose from, as MODEMS.DAT in the install folder lists them.
//
// The file begins with a Long count, and that many records of kRecordSize bytes follow: Integer
// state, Long record number and the texts of kModemTexts, with the Long maximum speed before the
// last of them. Texts are ANSI, padded with blanks; numbers are little-endian.
#pragma once

#include "base/number_types.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tollwick {

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

// What a blank command stands for, in the catalogue and with a host.
namespace usual_command {
inline constexpr std::string_view Attention = "AT";
inline constexpr std::string_view HangUp = "ATH^M";
inline constexpr std::string_view Reset = "ATZ^M";
inline constexpr std::string_view Answer = "ATA^M";
inline constexpr std::string_view Dial = "ATDT";
inline constexpr std::string_view Busy = "BUSY";
inline constexpr std::string_view Connect = "CONNECT";
} // namespace usual_command

// A text of a record: its column in the readable table, its bytes in the file, and what a blank one
// stands for.
struct ModemText {
    std::string_view column;
    std::string ModemRecord::*text;
    std::size_t width;
    std::string_view usual;
};

// A host keeps so many bytes of the initialisation; the catalogue is not made with a longer one.
inline constexpr std::size_t kHostInitWidth = 60;

// In the order of the file.
inline constexpr ModemText kModemTexts[] = {
    {"make", &ModemRecord::make, 25, "Generic 2400 Baud Modem"},
    {"model", &ModemRecord::model, 40, ""},
    {"init", &ModemRecord::init, 128, "AT^M"},
    {"attention", &ModemRecord::attention, 30, usual_command::Attention},
    {"hang-up", &ModemRecord::hang_up, 50, usual_command::HangUp},
    {"reset", &ModemRecord::reset, 30, usual_command::Reset},
    {"answer", &ModemRecord::answer, 30, usual_command::Answer},
    {"dial", &ModemRecord::dial, 30, usual_command::Dial},
    {"busy", &ModemRecord::busy, 30, usual_command::Busy},
    {"connect", &ModemRecord::connect, 40, usual_command::Connect},
};

// The file that holds these modems. A text that is longer than its field is cut.
std::string catalogueBytes(const std::vector<ModemRecord>& modems);

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
