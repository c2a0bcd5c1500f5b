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
    for (const ModemText& field : kModemTexts) {
        if (field.text == &ModemRecord::connect)
            modem.max_speed = reader.number<Long>();
        modem.*field.text = reader.text(field.width);
    }
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

std::string catalogueBytes(const std::vector<ModemRecord>& modems) {
    std::string bytes;
    const auto append = [&bytes](auto number) {
        char stored[sizeof number];
        storeLittleEndian(number, stored);
        bytes.append(stored, sizeof stored);
    };
    append(static_cast<Long>(modems.size()));
    for (const ModemRecord& modem : modems) {
        append(modem.deleted ? kDeleted : Integer{0});
        append(modem.record_number);
        for (const ModemText& field : kModemTexts) {
            if (field.text == &ModemRecord::connect)
                append(modem.max_speed);
            std::string text = toAnsi(modem.*field.text);
            text.resize(field.width, ' ');
            bytes.append(text);
        }
    }
    return bytes;
}

ModemRecord withUsualValues(ModemRecord modem) {
    for (const ModemText& field : kModemTexts)
        if ((modem.*field.text).empty())
            modem.*field.text = field.usual;
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
    return std::binary_search(makes_.begin(), makes_.end(), make);
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
