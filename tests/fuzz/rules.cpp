// The rules of dialogs and lists, and the conversions below them, on any texts and records.
#include "app/numeric.h"
#include "app/utf8.h"
#include "link/record_packing.h"
#include "tests/fuzz/fuzz.h"
#include "ui/dialogs/schedule_rules.h"
#include "ui/dialogs/setting_rules.h"
#include "ui/hostsetup/host_rules.h"
#include "ui/main/list_export.h"
#include "ui/main/list_order.h"

#include <cmath>

namespace tollwick {

const StringTable kTexts(kSwedish);

template <class Record>
void readFrom(std::string_view bytes, Record& record) {
    Comrecord packed;
    bytes.copy(packed.ComrecordData.data(), kDataBlockSize);
    unpackRecord(packed, record);
}

void convertTexts(Input& input) {
    const std::string text(input.rest);
    check(toAnsi(fromAnsi(text)) == text && isValidUtf8(fromAnsi(text)));
    check(toAnsi(text).size() <= text.size() && toUpper(toUpper(text)) == toUpper(text));
}

void readNumbers(Input& input) {
    std::string text = input.text();
    if (input.number() % 4 == 1)
        text.insert(text.find('.') + 1, std::size_t{2} * input.number(), '0');
    const double value = numericValue(text);
    // What the library makes of the same, where both go by the same rules.
    if (text.find_first_not_of("0123456789.eE-") == std::string::npos)
        check(value == std::strtod(text.c_str(), nullptr));
    check(portNumber(text).value_or(0) >= 0 && portNumber(text).value_or(0) <= 32766);
    if (SilentPrompter prompter; input.number() % 2 == 1 && !InvalidIpNumber(text, prompter))
        check(std::ranges::count(text, '.') == 3);
    check(std::abs(toLong(value) - value) <= 0.5 && std::abs(toInteger(value) - value) <= 0.5);
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
    const auto storeAsShown = [&]() noexcept { storeEntry(entryOf(stored), true, stored); };
    storeAsShown();
    const HostRecord once = stored;
    storeAsShown();
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

void editSchedule(Input& input) {
    ScheduleEntry entry{
        input.number<Integer>(), input.number() % 2 == 1, input.number(), {}, {}, {}, {}};
    for (auto* text : {&entry.timed, &entry.between_first, &entry.between_second, &entry.delay})
        *text = input.text();
    if (!checkSchedule(entry, scheduleIntervals(kTexts)))
        check((entry.is_interval ? entry.between_second : entry.timed).find(':') + 1 > 1);
    ScheduleRecord record;
    storeSchedule(entry, record);
    check(entryOf(record)->day == entry.day && scheduleExists(record, {&record, 1}));
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
    const auto parts = {convertTexts, readNumbers, editHost, editSchedule, arrangeLists};
    parts.begin()[input.number() % parts.size()](input);
}

} // namespace tollwick
