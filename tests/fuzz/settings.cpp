// A settings file of any bytes: read, written to and read again.
#include "base/ini_store.h"
#include "rules/list_layout.h"
#include "rules/recent_servers.h"
#include "rules/window_placement.h"
#include "tests/fuzz/fuzz.h"
#include "tests/support/temporary_folder.h"

namespace tollwick {

constexpr Setting kSettings[] = {{"Lists", "mSort", ""},
                                 {"Lists", "mWidths", ""},
                                 {"Servers", "Server1", ""},
                                 setting::CountryCode,
                                 setting::WindowStateWritten};

std::vector<std::optional<std::string>> readAll(IniStore store) {
    std::vector<std::optional<std::string>> values;
    for (const Setting& each : kSettings)
        values.push_back(store.read(kSettingsApplication, each.section, each.name));
    return values;
}

void fuzz(Input& input) {
    static const TemporaryFolder folder;
    const std::size_t changed = input.number() % std::size(kSettings);
    const bool large = input.number() == 'L';
    const std::string value = input.text();
    std::string file(input.rest);
    if (large) // as large as may be, give or take a little
        file.insert(0, (1 << 20) - std::min<std::size_t>(value.size(), 20) - file.size(), '#');
    folder.write("user.ini", file);
    IniStore store(folder / "user.ini", {});
    std::vector<std::optional<std::string>> values = readAll(store);
    check(readAll(IniStore(folder / "none.ini", {folder / "user.ini"})) == values);

    const auto write = [&, set = kSettings[changed]] {
        return store.write(kSettingsApplication, set.section, set.name, value);
    };
    const bool stored = write();
    const std::string written = folder.read("user.ini");
    if (stored) {
        for (char& c : values[changed].emplace(value))
            c = c == '\r' || c == '\n' ? ' ' : c;
        check(write() && folder.read("user.ini") == written);
    }
    check(readAll(store) == values && (stored || (large && written == file)));
    if (large)
        return;

    Settings settings(store);
    const ListLayout layout = readListLayout(settings, "m", 2);
    check(layout.widths.size() % 2 == 0 && layout.sort.column < 2);
    storeListLayout(settings, "m", layout);
    check(readListLayout(settings, "m", 2).widths == layout.widths);
    const RecentServer server{"host", "542", value.substr(0, value.find_first_of({"\0\r\n", 3}))};
    rememberServer(settings, server);
    check(readRecentServers(settings).at(0) == server);
    const ScreenArea screen{0, 0, 28800, 15000};
    check(keptOnScreen(readPlacement(settings), {&screen, 1}).top < screen.height);
}

} // namespace tollwick
