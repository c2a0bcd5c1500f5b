// The settings of the connection, and what a start makes of the install folder.
#include "base/connection_settings.h"
#include "base/files.h"
#include "base/install_files.h"
#include "base/run_time_error.h"
#include "base/string_table.h"
#include "tests/support/memory_settings_store.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/test_log.h"

#include <gtest/gtest.h>

#include <thread>

namespace tollwick {
namespace {

using Names = std::vector<std::string>;

class InstallFilesTest : public testing::Test {
protected:
    InstallFilesTest() { std::filesystem::create_directory(folder / "install"); }

    // What a start makes of the files in the folder of the installation.
    std::string filesAfterStart(Integer language, const std::string& install_folder) {
        placeSuppliedFiles(folder.text("supplied"), install_folder, language);
        placeHelpFiles(install_folder);
        std::string files;
        for (const std::string& name : folder.names("install"))
            if (name != "Supplied.lst")
                files += name + "=" + folder.read("install/" + name) + " ";
        return files;
    }
    std::string filesAfterStart(Integer language = kEnglish) {
        return filesAfterStart(language, folder.text("install"));
    }

    TemporaryFolder folder;
    TestLog log;
};

TEST(ConnectionSettings, AreLoadedAndSaved) {
    MemorySettingsStore store;
    Settings settings(store);
    ConnectionSettings connection = loadConnectionSettings(settings);
    EXPECT_EQ(connection.ComTimeout, 30.0F);
    connection.ServerConnectIp = "mail.example";
    connection.ServerConnectPort = "5420";
    connection.ServerConnectUsername = "";
    saveConnectionSettings(settings, connection);
    EXPECT_EQ(store.values["tollwick\\application\\installdir"], " "); // not the default
    store.values["tollwick\\general\\comtimeout"] = " 2.5 s";
    const ConnectionSettings again = loadConnectionSettings(settings);
    EXPECT_EQ(again.ServerConnectIp, "mail.example");
    EXPECT_EQ(again.ServerConnectPort, "5420");
    EXPECT_EQ(again.ServerConnectUsername, "admin");
    EXPECT_EQ(again.ComTimeout, 2.5F);

    std::string& country_code = store.values["tollwick\\general\\countrycode"];
    const std::pair<const char*, Integer> cases[] = {
        {" ", 1000}, {" 4000x", 4000}, {"abc", 0}, {"7000.5", 7000}, {"-1", -1}};
    for (const auto& [stored, base] : cases) {
        country_code = stored;
        EXPECT_EQ(loadLangBase(settings), base) << stored;
    }
    country_code = "40000";
    EXPECT_THROW(loadLangBase(settings), RunTimeError);
}

TEST_F(InstallFilesTest, EveryMissingFolderIsCreatedAndLogged) {
    const std::string one = folder.text("one");
    const std::string two = joinPath(one, "två");
    for (int start = 0; start < 2; ++start)
        prepareFolders(joinPath(two, ""), log.writer);
    Names expected;
    for (const std::string& path : {one, two, joinPath(two, "Logs")})
        expected.push_back("M: Directory: " + path +
                           " was missing and has been recreated, No action required unless this "
                           "message is coming repeatedly.(See corvale.log for details)");
    EXPECT_EQ(log.system.entries, expected);
    EXPECT_EQ(folder.names("one/två/Logs"), (Names{"Tollwick.log", "error.log"}));

    folder.write("file", "");
    prepareFolders(folder.text("file"), log.writer);
    EXPECT_EQ(log.system.entries[3],
              "M: Creation of directory: " + folder.text("file") +
                  " failed!!!, Check directory structure and diskspace, call support if permanent "
                  "error.(See corvale.log for details)");
}

TEST_F(InstallFilesTest, WhatComesWithTheProgramIsPlacedAndASitesOwnStays) {
    EXPECT_EQ(filesAfterStart(), ""); // none are supplied
    const std::string odd = folder.text(std::string(300, 'x'));
    EXPECT_NO_THROW(filesAfterStart(kEnglish, odd)) << "cannot even be looked into";
    for (const char* file : {"MODEMS.DAT", "note.txt", "Tollw-se.hlp", "Tollw-se.cnt",
                             "Tollw-us.hlp", "Tollw-us.cnt", "other"})
        folder.write(std::string("supplied/") + file, file);
    folder.write("install/note.txt", "own");
    EXPECT_EQ(filesAfterStart(), "MODEMS.DAT=MODEMS.DAT Tollwick.cnt=Tollw-us.cnt "
                                 "Tollwick.hlp=Tollw-us.hlp note.txt=own ");
    // Another language at a later start brings its own help, another version its catalogue.
    folder.write("supplied/MODEMS.DAT", "newer");
    EXPECT_EQ(filesAfterStart(kSwedish), "MODEMS.DAT=newer Tollwick.cnt=Tollw-se.cnt "
                                         "Tollwick.hlp=Tollw-se.hlp note.txt=own ");
    // Beside a site's own catalogue a newer one is laid, once.
    folder.write("install/MODEMS.DAT", "own");
    folder.write("install/Tollwick.hlp", "own");
    EXPECT_EQ(filesAfterStart(), "MODEMS.DAT=own Tollwick.cnt=Tollw-us.cnt Tollwick.hlp=own "
                                 "note.txt=own ");
    folder.write("supplied/MODEMS.DAT", "newest");
    const std::string with_both = "MODEMS.DAT=own MODEMS.NEW=newest Tollwick.cnt=Tollw-us.cnt "
                                  "Tollwick.hlp=own note.txt=own ";
    EXPECT_EQ(filesAfterStart(), with_both);
    std::filesystem::remove(folder / "install/MODEMS.NEW");
    EXPECT_EQ(filesAfterStart().find("MODEMS.NEW"), std::string::npos);
    // Help that is laid there under the name of its language is wanted; English wins.
    folder.write("install/Tollw-us.hlp", "us");
    folder.write("install/Tollw-se.hlp", "se");
    EXPECT_NE(filesAfterStart().find("Tollwick.hlp=us"), std::string::npos);
    folder.write("install/Tollw-us.hlp/in the way", "");
    std::filesystem::remove(folder / "install/Tollwick.hlp");
    folder.write("install/Tollwick.hlp/in the way", "");
    EXPECT_THROW(placeHelpFiles(folder.text("install")), std::filesystem::filesystem_error);
}

TEST_F(InstallFilesTest, ConsolesThatStartTogetherAllStart) {
    for (const char* file : {"MODEMS.DAT", "note.txt", "Tollw-us.hlp", "Tollw-us.cnt"})
        folder.write(std::string("supplied/") + file, std::string(100'000, 'x'));
    for (int round = 0; round < 20; ++round) {
        folder.write("install/Tollw-us.hlp", "us");
        std::vector<std::thread> consoles;
        for (int i = 0; i < 3; ++i)
            consoles.emplace_back([this] {
                EXPECT_NO_THROW(
                    placeSuppliedFiles(folder.text("supplied"), folder.text("install"), kEnglish));
                EXPECT_NO_THROW(placeHelpFiles(folder.text("install")));
            });
        for (std::thread& console : consoles)
            console.join();
        EXPECT_EQ(folder.names("install"), (Names{"MODEMS.DAT", "Supplied.lst", "Tollwick.cnt",
                                                  "Tollwick.hlp", "note.txt"}));
    }
}

} // namespace
} // namespace tollwick
