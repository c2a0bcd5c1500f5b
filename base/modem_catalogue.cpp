#include "base/modem_catalogue.h"

#include "base/ansi.h"
#include "base/files.h"
#include "base/little_endian.h"
#include "base/text.h"

#include <algorithm>
#include <optional>
#include <system_error>

namespace tollwick {
namespace {

constexpr Integer kDeleted = -1;

// Takes one field after the other from bytes that are known to be enough.
class FieldReader {
public:
    explicit FieldReader(std::string_view bytes) : rest_(bytes) {}

    template <class Number>
    Number number() {
        return loadLittleEndian<Number>(take(sizeof(Number)).data());
    }

    std::string text(std::size_t width) {
        std::string_view field = take(width);
        field = withoutTrailingBlanks(field.substr(0, field.find('\0')));
        field.remove_prefix(std::min(field.find_first_not_of(' '), field.size()));
        return fromAnsi(field);
    }

private:
    std::string_view take(std::size_t count) {
        const std::string_view field = rest_.substr(0, count);
        rest_.remove_prefix(count);
        return field;
    }

    std::string_view rest_;
};

ModemRecord readRecord(std::string_view bytes) {
    FieldReader reader(bytes);
    ModemRecord modem;
    modem.deleted = reader.number<Integer>() == kDeleted;
    modem.record_number = reader.number<Long>();
    modem.make = reader.text(modem_width::Make);
    modem.model = reader.text(modem_width::Model);
    modem.init = reader.text(modem_width::Init);
    modem.attention = reader.text(modem_width::Attention);
    modem.hang_up = reader.text(modem_width::HangUp);
    modem.reset = reader.text(modem_width::Reset);
    modem.answer = reader.text(modem_width::Answer);
    modem.dial = reader.text(modem_width::Dial);
    modem.busy = reader.text(modem_width::Busy);
    modem.max_speed = reader.number<Long>();
    modem.connect = reader.text(modem_width::Connect);
    return modem;
}

// The records of a file, cut to those that are whole and counted.
std::string_view countedRecords(std::string_view file) {
    if (file.size() < sizeof(Long))
        return {};
    const Long count = std::max(loadLittleEndian<Long>(file.data()), Long{0});
    file.remove_prefix(sizeof(Long));
    const std::size_t whole = file.size() / ModemCatalogue::kRecordSize;
    return file.substr(0, std::min(whole, static_cast<std::size_t>(count)) *
                              ModemCatalogue::kRecordSize);
}

} // namespace

ModemRecord withUsualValues(ModemRecord modem) {
    const auto fill = [](std::string& text, std::string_view usual) {
        if (text.empty())
            text = usual;
    };
    fill(modem.make, "Generic 2400 Baud Modem");
    fill(modem.init, "AT^M");
    fill(modem.attention, "AT");
    fill(modem.hang_up, "ATH^M");
    fill(modem.reset, "ATZ^M");
    fill(modem.answer, "ATA^M");
    fill(modem.dial, "ATDT");
    fill(modem.busy, "BUSY");
    fill(modem.connect, "CONNECT");
    if (modem.max_speed <= 0)
        modem.max_speed = 2400;
    return modem;
}

ModemCatalogue ModemCatalogue::load(const std::string& file) {
    const std::optional<std::string> bytes = readWholeFile(toPath(file), kMaxFileSize);
    if (!bytes)
        return {};
    if (bytes->empty()) {
        std::error_code ignored;
        std::filesystem::remove(toPath(file), ignored);
    }
    return parse(*bytes);
}

ModemCatalogue ModemCatalogue::parse(std::string_view bytes) {
    ModemCatalogue catalogue;
    const std::string_view records = countedRecords(bytes);
    catalogue.records_.reserve(records.size() / kRecordSize);
    for (std::size_t at = 0; at < records.size(); at += kRecordSize) {
        const ModemRecord& modem =
            catalogue.records_.emplace_back(readRecord(records.substr(at, kRecordSize)));
        catalogue.largest_record_number_ =
            std::max(catalogue.largest_record_number_, modem.record_number);
        if (modem.deleted || catalogue.SearchModemList(modem.make))
            continue;
        auto& makes = catalogue.makes_;
        makes.insert(std::lower_bound(makes.begin(), makes.end(), modem.make), modem.make);
    }
    return catalogue;
}

bool ModemCatalogue::SearchModemList(std::string_view make) const {
    std::size_t first = 0;
    std::size_t end = makes_.size();
    while (first < end) {
        const std::size_t middle = first + (end - first) / 2;
        const int order = makes_[middle].compare(make);
        if (order == 0)
            return true;
        if (order < 0)
            first = middle + 1;
        else
            end = middle;
    }
    return false;
}

std::vector<std::string> ModemCatalogue::modelsOf(std::string_view make) const {
    std::vector<std::string> models;
    for (const ModemRecord& modem : records_)
        if (!modem.deleted && modem.make == make)
            models.push_back(modem.model);
    return models;
}

const ModemRecord* ModemCatalogue::find(std::string_view make, std::string_view model) const {
    const auto found =
        std::find_if(records_.begin(), records_.end(), [&](const ModemRecord& modem) {
            return !modem.deleted && modem.make == make && modem.model == model;
        });
    return found == records_.end() ? nullptr : &*found;
}

} // namespace tollwick
