// MODEMS.DAT of any bytes.
#include "base/modem_catalogue.h"
#include "tests/fuzz/fuzz.h"

namespace tollwick {

void fuzz(Input& input) {
    const ModemCatalogue catalogue = ModemCatalogue::parse(input.rest);
    check(catalogue.records().size() <= input.rest.size() / ModemCatalogue::kRecordSize);
    for (const ModemRecord& modem : catalogue.records()) {
        check(modem.record_number <= catalogue.largestRecordNumber());
        check(!withUsualValues(modem).make.empty() && withUsualValues(modem).max_speed > 0);
        if (modem.deleted)
            continue;
        const ModemRecord* found = catalogue.find(modem.make, modem.model);
        check(found && found <= &modem && !found->deleted && found->model == modem.model);
        check(catalogue.SearchModemList(modem.make));
    }
    for (const std::string& make : catalogue.makes())
        check(!catalogue.modelsOf(make).empty());
}

} // namespace tollwick
