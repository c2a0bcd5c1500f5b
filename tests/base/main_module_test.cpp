#include "base/main_module.h"
#include "tests/support/memory_settings_store.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/test_log.h"

#include <gtest/gtest.h>

namespace tollwick {
namespace {

using Names = std::vector<std::string>;

class MainModuleTest : public testing::Test {
protected:
    MainModuleTest() { std::filesystem::create_directory(folder / "install"); }

    MainModule started() {
        MainModule module(store, log.writer, {folder.text("supplied"), folder.text("install")});
        module.loadLanguage();
        module.loadConnectionSettings();
        return module;
    }
    // What a start makes of the files in the folder of the installation.
    std::string filesAfterStart() {
        started().copySuppliedFiles();
        started().placeHelpFiles();
        std::string files;
        for (const std::string& name : folder.names("install"))
            files += name + "=" + folder.read("install/" + name) + " ";
        return files;
    }

    TemporaryFolder folder;
    MemorySettingsStore store;
    TestLog log;
    std::string& country_code = store.values["tollwick\\general\\countrycode"];
    std::string& install_dir = store.values["tollwick\\application\\installdir"];
};

TEST_F(MainModuleTest, CountryCodeSelectsTheLanguage) {
    const std::pair<const char*, Integer> cases[] = {
        {" ", 1000}, {" 4000x", 4000}, {"abc", 0}, {"7000.5", 7000}, {"-1", -1}};
    for (const auto& [stored, base] : cases) {
        country_code = stored;
        EXPECT_EQ(started().texts().LangBase(), base) << stored;
    }
    country_code = "40000";
    EXPECT_THROW(started(), RunTimeError);
}

TEST_F(MainModuleTest, ConnectionSettingsAreLoadedAndSaved) {
    MainModule module = started();
    EXPECT_EQ(module.connection.ComTimeout, 30.0F);
    module.connection.ServerConnectIp = "mail.example";
    module.connection.ServerConnectPort = "5420";
    module.connection.ServerConnectUsername = "";
    module.saveConnectionSettings();
    EXPECT_EQ(install_dir, " "); // not the default
    store.values["tollwick\\general\\comtimeout"] = " 2.5 s";
    const ConnectionSettings again = started().connection;
    EXPECT_EQ(again.ServerConnectIp, "mail.example");
    EXPECT_EQ(again.ServerConnectPort, "5420");
    EXPECT_EQ(again.ServerConnectUsername, "admin");
    EXPECT_EQ(again.ComTimeout, 2.5F);
}

TEST_F(MainModuleTest, EveryMissingFolderOfTheInstallationIsCreatedAndLogged) {
    EXPECT_EQ(started().installFolder(), folder.text("install")); // the default
    const std::string one = folder.text("one");
    const std::string two = joinPath(one, "två");
    install_dir = joinPath(two, "");
    for (int start = 0; start < 2; ++start)
        started().prepareFolders();
    Names expected;
    for (const std::string& path : {one, two, joinPath(two, "Logs")})
        expected.push_back("M: Directory: " + path +
                           " was missing and has been recreated, No action required unless this "
                           "message is coming repeatedly.(See corvale.log for details)");
    EXPECT_EQ(log.system.entries, expected);
    EXPECT_EQ(folder.names("one/två/Logs"), (Names{"Tollwick.log", "error.log"}));

    folder.write("file", "");
    install_dir = folder.text("file");
    started().prepareFolders();
    EXPECT_EQ(log.system.entries[3],
              "M: Creation of directory: " + install_dir +
                  " failed!!!, Check directory structure and diskspace, call support if permanent "
                  "error.(See corvale.log for details)");
}

TEST_F(MainModuleTest, SuppliedFilesAreCopiedWhereTheyAreMissingAndHelpGetsItsCommonName) {
    EXPECT_EQ(filesAfterStart(), "");                 // none are supplied
    install_dir = folder.text(std::string(300, 'x')); // cannot even be looked into
    EXPECT_NO_THROW(filesAfterStart());
    install_dir = "";
    for (const char* file : {"MODEMS.DAT", "note.txt", "Tollw-se.hlp", "Tollw-se.cnt",
                             "Tollw-us.hlp", "Tollw-us.cnt", "other"})
        folder.write(std::string("supplied/") + file, file);
    folder.write("install/note.txt", "own");
    folder.write("install/Tollw-se.hlp", "se"); // gone after the one that comes first
    EXPECT_EQ(filesAfterStart(), "MODEMS.DAT=MODEMS.DAT Tollwick.cnt=Tollw-us.cnt "
                                 "Tollwick.hlp=Tollw-us.hlp note.txt=own ");
    // Another language at a later start brings its own help.
    country_code = "4000";
    EXPECT_EQ(filesAfterStart(), "MODEMS.DAT=MODEMS.DAT Tollwick.cnt=Tollw-se.cnt "
                                 "Tollwick.hlp=Tollw-se.hlp note.txt=own ");
    std::filesystem::remove(folder / "install/Tollwick.hlp");
    folder.write("install/Tollwick.hlp/in the way", "");
    EXPECT_THROW(filesAfterStart(), std::filesystem::filesystem_error);
}

} // namespace
} // namespace tollwick
