#include "app/main_module.h"
#include "tests/support/memory_settings_store.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/test_log.h"

#include <gtest/gtest.h>

namespace tollwick {
namespace {

using Names = std::vector<std::string>;

constexpr const char* kCountryCode = "tollwick\\general\\countrycode";
constexpr const char* kInstallDir = "tollwick\\application\\installdir";

// The entry of the system log for a folder that start-up creates.
std::string recreated(const std::string& path) {
    return "M: Directory: " + path +
           " was missing and has been recreated, No action required unless this message is coming "
           "repeatedly.(See corvale.log for details)";
}
std::string notCreated(const std::string& path) {
    return "M: Creation of directory: " + path +
           " failed!!!, Check directory structure and diskspace, call support if permanent "
           "error.(See corvale.log for details)";
}

class MainModuleTest : public testing::Test {
protected:
    MainModuleTest() { std::filesystem::create_directory(folder / "install"); }

    MainModule started() {
        MainModule module(store, log.writer, {folder.text("supplied"), folder.text("install")});
        module.loadLanguage();
        module.loadConnectionSettings();
        return module;
    }

    TemporaryFolder folder;
    MemorySettingsStore store;
    TestLog log;
};

TEST_F(MainModuleTest, CountryCodeSelectsTheLanguage) {
    EXPECT_EQ(started().texts().LangBase(), 1000);
    const std::pair<std::string_view, Integer> cases[] = {
        {"4000", 4000}, {"7000", 7000},   {" ", 1000}, {" 4000x", 4000},
        {"abc", 0},     {"4000.5", 4000}, {"-1", -1},  {"32767", 32767}};
    for (const auto& [stored, base] : cases) {
        store.values[kCountryCode] = stored;
        EXPECT_EQ(started().texts().LangBase(), base) << stored;
    }
    store.values[kCountryCode] = "40000";
    EXPECT_THROW(started(), RunTimeError);
}

TEST_F(MainModuleTest, ConnectionSettingsAreLoadedAndSaved) {
    MainModule module = started();
    EXPECT_EQ(module.connection.ServerConnectIp + ' ' + module.connection.ServerConnectPort + ' ' +
                  module.connection.ServerConnectUsername,
              "127.0.0.1 542 admin");
    EXPECT_EQ(module.connection.ComTimeout, 30.0F);
    EXPECT_FALSE(module.connection.no_server_address);
    module.connection.ServerConnectIp = "mail.example";
    module.connection.ServerConnectPort = "5420";
    module.connection.ServerConnectUsername = "";
    module.saveConnectionSettings();
    EXPECT_EQ(store.values, (std::map<std::string, std::string>{
                                {kInstallDir, " "}, // the default is not stored
                                {"tollwick\\general\\serverconnectip", "mail.example"},
                                {"tollwick\\general\\serverconnectport", "5420"},
                                {"tollwick\\general\\serverconnectusername", " "}}));
    store.values["tollwick\\general\\comtimeout"] = " 2.5 s";
    const MainModule again = started();
    EXPECT_EQ(again.connection.ServerConnectIp, "mail.example");
    EXPECT_EQ(again.connection.ServerConnectUsername, "admin");
    EXPECT_EQ(again.connection.ComTimeout, 2.5F);
}

TEST_F(MainModuleTest, EveryMissingFolderOfTheInstallationIsCreatedAndLogged) {
    EXPECT_EQ(started().installFolder(), folder.text("install")); // the default
    EXPECT_EQ(toPath(joinPath("ä", "ö")), toPath("ä") / toPath("ö"));
    const std::string one = folder.text("one");
    const std::string two = one + kPathSeparator + "två";
    const std::string logs = two + kPathSeparator + "Logs";
    store.values[kInstallDir] = two + kPathSeparator;
    MainModule module = started();
    module.saveConnectionSettings();
    EXPECT_EQ(store.values[kInstallDir], two + kPathSeparator);
    for (int start = 0; start < 2; ++start)
        module.prepareFolders();
    EXPECT_EQ(log.writer.folder(), logs);
    EXPECT_EQ(log.system.entries, (Names{recreated(one), recreated(two), recreated(logs)}));
    EXPECT_EQ(folder.names("one/två/Logs"), (Names{"Tollwick.log", "error.log"}));
}

TEST_F(MainModuleTest, AFolderThatCannotBeCreatedIsLogged) {
    folder.write("file", "");
    const std::string file = store.values[kInstallDir] = folder.text("file");
    started().prepareFolders();
    // Walked for itself, and for the logs.
    EXPECT_EQ(log.system.entries,
              (Names{notCreated(file), notCreated(file), notCreated(joinPath(file, "Logs"))}));
}

TEST_F(MainModuleTest, SuppliedFilesAreCopiedWhereTheyAreMissingAndHelpGetsItsCommonName) {
    const auto installed = [this] {
        std::string files;
        for (const std::string& name : folder.names("install"))
            files += name + "=" + folder.read("install/" + name) + " ";
        return files;
    };
    started().copySuppliedFiles(); // none are supplied
    started().placeHelpFiles();
    EXPECT_EQ(installed(), "");
    for (const char* file : {"MODEMS.DAT", "note.txt", "Tollw-se.hlp", "Tollw-se.cnt",
                             "Tollw-us.hlp", "Tollw-us.cnt", "other"})
        folder.write(std::string("supplied/") + file, file);
    folder.write("install/note.txt", "own");
    started().copySuppliedFiles();
    EXPECT_EQ(installed(), "MODEMS.DAT=MODEMS.DAT Tollw-us.cnt=Tollw-us.cnt "
                           "Tollw-us.hlp=Tollw-us.hlp note.txt=own ");
    folder.write("install/Tollw-se.hlp", "se"); // gone after the one that comes first
    started().placeHelpFiles();
    EXPECT_EQ(installed(), "MODEMS.DAT=MODEMS.DAT Tollwick.cnt=Tollw-us.cnt "
                           "Tollwick.hlp=Tollw-us.hlp note.txt=own ");
    // Another language at a later start brings its own help.
    store.values[kCountryCode] = "4000";
    started().copySuppliedFiles();
    started().placeHelpFiles();
    EXPECT_EQ(installed(), "MODEMS.DAT=MODEMS.DAT Tollwick.cnt=Tollw-se.cnt "
                           "Tollwick.hlp=Tollw-se.hlp note.txt=own ");
    std::filesystem::remove(folder / "install/Tollwick.hlp");
    folder.write("install/Tollwick.hlp/in the way", "");
    folder.write("install/Tollw-us.hlp", "us");
    EXPECT_THROW(started().placeHelpFiles(), std::filesystem::filesystem_error);
}

} // namespace
} // namespace tollwick
