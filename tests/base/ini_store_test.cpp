#include "base/ini_store.h"
#include "base/platform_folders.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <random>
#include <sys/wait.h>
#include <unistd.h>

namespace tollwick {
namespace {

const std::string kOld = "[Tollwick\\General]\nName=old\n";

class IniStoreTest : public testing::Test {
protected:
    std::string get(std::string_view section, std::string_view name) {
        return store.read("Tollwick", section, name).value_or("(none)");
    }
    bool set(std::string_view section, std::string_view name, std::string_view value) {
        return store.write("Tollwick", section, name, value);
    }

    TemporaryFolder folder;
    IniStore store{folder / "user.ini", {folder / "machine1.ini", folder / "machine2.ini"}};
};

TEST_F(IniStoreTest, WritesOneLinePerSettingBelowItsSection) {
    EXPECT_TRUE(set("General", "ServerConnectIp", "192.168.1.2"));
    EXPECT_TRUE(set("Environment", "Windowstate", "2"));
    EXPECT_TRUE(set("General", "ServerConnectUsername", "åsa"));
    EXPECT_TRUE(set("GENERAL", "serverconnectip", " "));
    EXPECT_EQ(folder.read("user.ini"), "[Tollwick\\General]\n"
                                       "serverconnectip= \n"
                                       "ServerConnectUsername=åsa\n"
                                       "\n"
                                       "[Tollwick\\Environment]\n"
                                       "Windowstate=2\n");
    EXPECT_EQ(get("environment", "WindowState"), "2");
    EXPECT_EQ(store.read("Other", "General", "ServerConnectUsername"), std::nullopt);
    // A break would start another line.
    EXPECT_TRUE(set("General", "Value", " ;=a\r\n[Tollwick\\Application]\nInstallDir=/evil\r"));
    EXPECT_EQ(get("General", "Value"), " ;=a  [Tollwick\\Application] InstallDir=/evil ");
    EXPECT_EQ(get("Application", "InstallDir"), "(none)");
}

TEST_F(IniStoreTest, KeepsTheLinesItDoesNotKnow) {
    using namespace std::string_literals;
    const std::string before = "# a comment\nBefore=1\n[Other\\General]\nName=other\n"
                               "\x7F\0\0\n[\n]\n=\n[Tollwick\\General\n\0=\0\n"s;
    const std::string between = "Name=second\n\n[Unknown\n\xFF\xFE\n[Tollwick\\General]\n";
    folder.write("user.ini", before +
                                 "[tollwick\\GENERAL]\r\r\n; Name=commented out\nno setting\n"
                                 "  NAME =first\n" +
                                 between + "Again=3"); // no line end
    EXPECT_EQ(get("General", "Name"), "first");
    EXPECT_EQ(get("General", "Before"), "(none)");
    EXPECT_EQ(get("General", "Again"), "3");
    EXPECT_TRUE(set("General", "Name", "new"));
    EXPECT_TRUE(set("General", "Again", "4"));
    EXPECT_EQ(folder.read("user.ini"),
              before + "[tollwick\\GENERAL]\n; Name=commented out\nno setting\nName=new\n" +
                  between + "Again=4\n");
    // All that looks like the mark of an editor goes, so that the next read finds the section.
    const std::string mark = "\xEF\xBB\xBF";
    folder.write("user.ini", mark + mark + kOld);
    EXPECT_TRUE(set("Application", "InstallDir", "/x"));
    EXPECT_EQ(get("General", "Name"), "old");
}

TEST_F(IniStoreTest, TheUsersFileLiesOverTheMachines) {
    const std::string machine = "[Tollwick\\General]\nA=machine1\nB=machine1\n";
    folder.write("machine1.ini", machine);
    folder.write("machine2.ini", "[Tollwick\\General]\nA=machine2\nB=machine2\nC=machine2\n");
    EXPECT_TRUE(set("General", "A", "user"));
    EXPECT_EQ(get("General", "A") + get("General", "B") + get("General", "C"),
              "usermachine1machine2");
    EXPECT_EQ(folder.read("machine1.ini"), machine);
    EXPECT_TRUE(set("General", "B", " ") && set("General", "D", " ")); // nobody's choice
    EXPECT_EQ(get("General", "B") + get("General", "D"), "machine1 ");
}

TEST_F(IniStoreTest, ReplacesTheFileWholeFollowsALinkAndCreatesFolders) {
    folder.write("real/settings", kOld);
    std::filesystem::create_symlink("real/settings", folder / "user.ini");
    std::ifstream reader(folder / "user.ini");
    EXPECT_TRUE(set("General", "Name", "new"));
    // Who reads meanwhile sees the old file to its end.
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(reader), {}), kOld);
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "user.ini"));
    EXPECT_EQ(folder.read("real/settings"), "[Tollwick\\General]\nName=new\n");
    EXPECT_EQ(folder.names("real"), std::vector<std::string>{"settings"});
    EXPECT_TRUE(IniStore(folder / "a/b/user.ini", {}).write("Tollwick", "General", "Name", "1"));
}

TEST_F(IniStoreTest, LeavesAloneWhatItCannotReplace) {
    const auto cannotBeChanged = [this](const std::string& content) {
        folder.write("user.ini", content);
        return !set("General", "Longer", "new") && folder.read("user.ini") == content;
    };
    folder.write("machine1.ini", "[Tollwick\\General]\nName=machine\n");
    EXPECT_TRUE(cannotBeChanged(kOld + std::string(1 << 20, '#'))); // too large to be read
    EXPECT_EQ(get("General", "Name"), "machine");
    // The new line would make it so.
    EXPECT_TRUE(cannotBeChanged(kOld + std::string((1 << 20) - kOld.size() - 1, '#') + '\n'));
    EXPECT_EQ(get("General", "Name"), "old");

    // The file is written, but cannot take its place.
    std::filesystem::remove(folder / "user.ini");
    folder.write("user.ini/in the way", "");
    EXPECT_FALSE(set("General", "Name", "new"));
    EXPECT_FALSE(replaceFile(folder / "user.ini", kOld));
    EXPECT_EQ(folder.names(""), (std::vector<std::string>{"machine1.ini", "user.ini"}));

    IniStore below_a_file(folder / "machine1.ini/user.ini", {});
    EXPECT_FALSE(below_a_file.write("Tollwick", "General", "Name", "new"));
}

// A process of its own writes without an end, and is killed at a random moment, again and again.
TEST_F(IniStoreTest, AKillAtAnyMomentLeavesTheOldSettingsOrTheNew) {
    set("General", "Kept", "as it was");
    // Long enough for a write that takes several steps.
    const auto value = [](int round) {
        return std::string(20'000, static_cast<char>('a' + round % 26));
    };
    std::minstd_rand random(20261123);
    std::uniform_int_distribution<useconds_t> moment(200, 8'000); // microseconds
    for (int kill_number = 0; kill_number < 200; ++kill_number) {
        set("General", "Long", value(kill_number));
        const pid_t writer = fork();
        ASSERT_GE(writer, 0);
        for (int round = kill_number; writer == 0; ++round)
            set("General", "Long", value(round));
        usleep(moment(random));
        kill(writer, SIGKILL);
        int status = 0;
        ASSERT_EQ(waitpid(writer, &status, 0), writer);
        ASSERT_TRUE(WIFSIGNALED(status));
        ASSERT_EQ(get("General", "Kept"), "as it was");
        const std::string found = get("General", "Long");
        ASSERT_EQ(found, value(found[0] - 'a'));
    }
}

TEST(SettingsFiles, LieInTheFoldersOfTheDesktop) {
    using Paths = std::vector<std::filesystem::path>;
    ::setenv("HOME", "/home/u", 1);
    ::setenv("XDG_CONFIG_HOME", "/c", 1);
    ::setenv("XDG_CONFIG_DIRS", "/x::/y", 1);
    ::setenv("XDG_DATA_HOME", "/d", 1);
    EXPECT_EQ(settingsFiles().user, "/c/brask-software/tollwick.ini");
    EXPECT_EQ(settingsFiles().machine,
              (Paths{"/x/brask-software/tollwick.ini", "/y/brask-software/tollwick.ini"}));
    EXPECT_EQ(defaultInstallFolder("/opt/bin"), "/d/tollwick");
    for (const char* name : {"XDG_CONFIG_HOME", "XDG_CONFIG_DIRS", "XDG_DATA_HOME"})
        ::unsetenv(name);
    EXPECT_EQ(settingsFiles().user, "/home/u/.config/brask-software/tollwick.ini");
    EXPECT_EQ(settingsFiles().machine, Paths{"/etc/xdg/brask-software/tollwick.ini"});
    EXPECT_EQ(defaultInstallFolder("/opt/bin"), "/home/u/.local/share/tollwick");
}

} // namespace
} // namespace tollwick
