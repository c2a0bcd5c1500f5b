// What is stored survives a kill at any moment of a write.
#include "app/ini_store.h"
#include "tests/support/kill_while_writing.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

namespace tollwick {
namespace {

TEST(Crash, SettingsAreOldOrNewNeverBroken) {
    TemporaryFolder folder;
    const auto file = toPath(folder.text("tollwick.ini"));
    IniStore(file, {}).write("Tollwick", "General", "Kept", "as it was");
    // Long enough for a write that takes several steps.
    const auto value = [](int round) {
        return std::string(20'000, static_cast<char>('a' + round % 26));
    };
    killWhileWriting(
        [&](int round) { IniStore(file, {}).write("Tollwick", "General", "Long", value(round)); },
        [&] {
            IniStore store(file, {});
            ASSERT_EQ(store.read("Tollwick", "General", "Kept"), "as it was");
            const std::string found = store.read("Tollwick", "General", "Long").value_or("");
            ASSERT_TRUE(found.empty() || found == std::string(20'000, found[0]));
        });
}

} // namespace
} // namespace tollwick
