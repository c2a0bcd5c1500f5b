// MODEMS.DAT of any bytes.
#include "app/modem_catalogue.h"
#include "link/little_endian.h"
#include "tests/fuzz/fuzz.h"

namespace tollwick {

void fuzz(Input& input) {
    const ModemCatalogue catalogue = ModemCatalogue::parse(input.rest);
    const std::size_t whole =
        input.rest.size() < 4 ? 0 : (input.rest.size() - 4) / ModemCatalogue::kRecordSize;
    const Long said =
        input.rest.size() < 4 ? 0 : std::max(loadLittleEndian<Long>(input.rest.data()), 0);
    check(catalogue.records().size() == std::min(whole, static_cast<std::size_t>(said)));
    for (const ModemRecord& modem : catalogue.records()) {
        check(modem.record_number <= catalogue.largestRecordNumber());
        for (const std::string* text : {&modem.make, &modem.model, &modem.init, &modem.connect})
            check(toAnsi(*text).size() <= 128 && !text->starts_with(' ') && !text->ends_with(' '));
        check(!withDefaults(modem).make.empty() && withDefaults(modem).max_speed > 0);
        if (modem.deleted)
            continue;
        const ModemRecord* found = catalogue.find(modem.make, modem.model);
        check(found && found <= &modem && !found->deleted && found->model == modem.model);
        check(catalogue.SearchModemList(modem.make));
    }
    check(std::ranges::is_sorted(catalogue.makes(), std::ranges::less_equal()));
    for (const std::string& make : catalogue.makes())
        check(!catalogue.modelsOf(make).empty());
}

} // namespace tollwick
