// The dialog of a host and the lists, on any records.
#include "base/numeric.h"
#include "rules/host_rules.h"
#include "rules/list_export.h"
#include "rules/list_order.h"
#include "rules/setting_rules.h"
#include "tests/fuzz/fuzz.h"
#include "wire/record_packing.h"

namespace tollwick {

const StringTable kTexts(kSwedish);

template <class Record>
void readFrom(std::string_view bytes, Record& record) {
    Comrecord packed;
    bytes.copy(packed.ComrecordData.data(), kDataBlockSize);
    unpackRecord(packed, record);
}

void editHost(Input& input) {
    const std::string name = input.text();
    const std::string password = input.text();
    const std::string script = completedScriptName(name);
    check(completedScriptName(script) == script &&
          (checkScriptName(name) || !ContainsAnyChar(toAnsi(name), "\\/:*?<>|\"")));
    check(scriptFits(script, password) ==
          (4 + toAnsi(script).size() + toAnsi(password).size() <= kDataBlockSize));

    const std::string number = input.text();
    HostRecord stored;
    readFrom(input.rest, stored);
    storeEntry(entryOf(stored), true, stored);
    const HostRecord once = stored;
    storeEntry(entryOf(stored), true, stored);
    check(entryOf(stored).password == entryOf(once).password);
    for (const auto password : {&HostRecord::password, &HostRecord::uucp_password})
        stored.*password = once.*password; // scrambled anew each time
    stored.ras_password = once.ras_password;
    check(stored == once); // the defaults come in only the first time

    HostEntry entry = entryOf(stored);
    entry.display_name = entry.remote_uucp_name = name;
    entry.password = password;
    entry.uucp_timeout.text = entry.host_lookup_timeout.text = number;
    if (!checkHost(entry, HostRecord(), {&once, 1}))
        check(!trimmed(name).empty() && numericValue(number) >= 2);
    storeEntry(entry, true, stored);
    check(entryOf(stored).display_name == asStored(name, &HostRecord::display_name) &&
          entryOf(stored).password == fromAnsi(toAnsi(password).substr(0, 29)) &&
          stored.host_lookup_timeout <= kMaxHostLookupTimeout);
}

void arrangeLists(Input& input) {
    const std::string_view nodes[] = {"schedule", "uucphosts", "outbox", "logs", "uucpmonitor"};
    const std::string_view node = nodes[input.number() % std::size(nodes)];
    const ListSort sort{input.number() % 6 - 1, input.number() % 2 == 1};
    const std::string filter = input.text();
    ServiceData data;
    while (!input.rest.empty()) {
        const std::string bytes = input.text();
        readFrom(bytes, data.schedules.emplace_back());
        readFrom(std::string(510, ' ') + bytes, data.hosts.emplace_back());
        readFrom(bytes, data.outbox.emplace_back());
        readFrom(bytes, data.settings);
        readFrom(bytes, data.uucp_status);
    }
    const ListContents contents = listContents(node, data, kTexts);
    const auto column = static_cast<std::size_t>(sort.column);
    const std::vector<std::size_t> rows = orderedRows(contents, sort, filter);
    std::vector<TableRow> table;
    std::optional<double> last;
    for (const std::size_t row : rows) {
        table.push_back(contents.row(row).cells);
        const auto value = column < contents.columns.size() ? contents.value(row, column) : last;
        check(!last || (sort.descending ? *last >= *value : *last <= *value));
        last = value;
    }
    check(!filter.empty() || rows.size() == contents.row_count);
    const std::string comma_separated = commaSeparated(table);
    check(std::ranges::count(comma_separated, '"') % 2 == 0);
}

void fuzz(Input& input) {
    input.number() % 2 == 0 ? editHost(input) : arrangeLists(input);
}

} // namespace tollwick
