#include "app/ini_store.h"
#include "app/platform_folders.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <cstdlib>

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
    EXPECT_EQ(get("General", "ServerConnectIp"), "(none)");
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
    EXPECT_EQ(folder.names(), std::vector<std::string>{"user.ini"});
}

TEST_F(IniStoreTest, KeepsTheLinesItDoesNotKnow) {
    using namespace std::string_literals;
    const std::string before = "# a comment\nBefore=1\n[Other\\General]\nName=other\n"
                               "\x7F"
                               "ELF\0\0\n[\n]\n=\n[Tollwick\\General\n\0=\0\n"s;
    const std::string between = "Name=second\n\n[Unknown\n\xFF\xFE\n[Tollwick\\General]\n";
    folder.write("user.ini", before +
                                 "[tollwick\\GENERAL]\r\n; Name=commented out\nno setting\n"
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
}

TEST_F(IniStoreTest, AnyTextOfOneLineComesBackAsItWas) {
    for (const char* value : {"", " ", "  a  ", "a=b", "=", "; no comment", "[Tollwick\\General]",
                              "\\n \"q\" 'q'", "C:\\Program\\Tollwick", "åäö €"}) {
        EXPECT_TRUE(set("General", "Value", value));
        EXPECT_EQ(get("General", "Value"), value);
    }
    // A break would start another line.
    EXPECT_TRUE(set("General", "Value", "a\r\n[Tollwick\\Application]\nInstallDir=/evil\r"));
    EXPECT_EQ(get("General", "Value"), "a  [Tollwick\\Application] InstallDir=/evil ");
    EXPECT_EQ(get("Application", "InstallDir"), "(none)");
}

TEST_F(IniStoreTest, AWriteChangesNoOtherSetting) {
    const std::string mark = "\xEF\xBB\xBF";
    for (const std::string& file :
         {std::string("[Tollwick\\General]\nName=old\r\r\n"), mark + mark + kOld}) {
        folder.write("user.ini", file);
        EXPECT_EQ(get("General", "Name"), "old");
        EXPECT_TRUE(set("Application", "InstallDir", "/x"));
        EXPECT_EQ(get("General", "Name"), "old");
    }
}

TEST_F(IniStoreTest, TheUsersFileLiesOverTheMachines) {
    const std::string machine = "[Tollwick\\General]\nA=machine1\nB=machine1\n";
    folder.write("machine1.ini", machine);
    folder.write("machine2.ini", "[Tollwick\\General]\nA=machine2\nB=machine2\nC=machine2\n");
    EXPECT_TRUE(set("General", "A", "user"));
    EXPECT_EQ(get("General", "A") + get("General", "B") + get("General", "C"),
              "usermachine1machine2");
    EXPECT_EQ(get("General", "D"), "(none)");
    EXPECT_EQ(folder.read("user.ini"), "[Tollwick\\General]\nA=user\n");
    EXPECT_EQ(folder.read("machine1.ini"), machine);
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
    IniStore deep(folder / "a/b/user.ini", {});
    EXPECT_TRUE(deep.write("Tollwick", "General", "Name", "1"));
    EXPECT_EQ(folder.read("a/b/user.ini"), "[Tollwick\\General]\nName=1\n");
}

TEST_F(IniStoreTest, LeavesAloneWhatItCannotReplace) {
    const std::string oversized = kOld + std::string(1 << 20, '#');
    folder.write("user.ini", oversized);
    folder.write("machine1.ini", "[Tollwick\\General]\nName=machine\n");
    EXPECT_EQ(get("General", "Name"), "machine");
    EXPECT_FALSE(set("General", "Name", "new"));
    EXPECT_EQ(folder.read("user.ini"), oversized);

    // The new line would make it too large to be read again.
    const std::string full = kOld + std::string((1 << 20) - kOld.size() - 1, '#') + '\n';
    folder.write("user.ini", full);
    EXPECT_FALSE(set("General", "Longer", "new"));
    EXPECT_EQ(folder.read("user.ini"), full);
    EXPECT_EQ(get("General", "Name"), "old");

    // The temporary file cannot be written.
    folder.write("user.ini", kOld);
    folder.write("user.ini.new/in the way", "");
    EXPECT_FALSE(set("General", "Name", "new"));
    EXPECT_EQ(folder.read("user.ini"), kOld);
    EXPECT_EQ(folder.names("user.ini.new"), std::vector<std::string>{"in the way"});
    std::filesystem::remove_all(folder / "user.ini.new");

    // The file is written, but cannot take its place.
    std::filesystem::remove(folder / "user.ini");
    folder.write("user.ini/in the way", "");
    EXPECT_EQ(get("General", "Name"), "machine");
    EXPECT_FALSE(set("General", "Name", "new"));
    EXPECT_FALSE(replaceFile(folder / "user.ini", kOld));
    EXPECT_FALSE(std::filesystem::is_regular_file(folder / "user.ini.new"));

    IniStore below_a_file(folder / "machine1.ini/user.ini", {});
    EXPECT_FALSE(below_a_file.write("Tollwick", "General", "Name", "new"));
    EXPECT_EQ(below_a_file.read("Tollwick", "General", "Name"), std::nullopt);
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
