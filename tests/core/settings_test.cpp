#include "app/settings_store.h"
#include "tests/support/memory_settings_store.h"

#include <gtest/gtest.h>

namespace tollwick {
namespace {

class SettingsTest : public testing::Test {
protected:
    MemorySettingsStore store;
    Settings settings{store};
};

TEST_F(SettingsTest, BlankValuesReadAsTheDefault) {
    using namespace std::string_literals;
    const std::pair<std::string, std::string_view> cases[] = {
        {"", "542"},      {" ", "542"},       {"   ", "542"}, {"\0 \0"s, "542"},
        {" \0"s, "542"},  {"\0x"s, "542"},    {"25", "25"},   {"25  ", "25  "},
        {"  25", "  25"}, {"25\0 26"s, "25"}, {"\t", "\t"}};
    for (const auto& [stored, read] : cases) {
        store.values["tollwick\\general\\serverconnectport"] = stored;
        EXPECT_EQ(settings.read(setting::ServerConnectPort), read) << '"' << stored << '"';
        EXPECT_EQ(settings.status(), kTrue);
    }
}

TEST_F(SettingsTest, EachHasItsDefault) {
    using namespace setting;
    const std::pair<Setting, std::string_view> cases[] = {{CountryCode, "1000"},
                                                          {ComTimeout, "30"},
                                                          {ServerConnectIp, "127.0.0.1"},
                                                          {ServerConnectPort, "542"},
                                                          {ServerConnectUsername, "admin"},
                                                          {InstallDir, ""},
                                                          {WindowStateRead, "0"},
                                                          {WindowXpos, "0"},
                                                          {WindowYpos, "0"},
                                                          {WindowXsize, "7440"},
                                                          {WindowYsize, "5235"},
                                                          {SplitterPos, "2985"}};
    for (const auto& [each, value] : cases) {
        EXPECT_EQ(settings.read(each), value) << each.name;
        EXPECT_EQ(settings.status(), kFalse);
    }
}

TEST_F(SettingsTest, WhatIsWrittenCanBeReadAndAnEmptyTextIsABlank) {
    settings.write(setting::ServerConnectIp, "");
    EXPECT_EQ(store.values.at("tollwick\\general\\serverconnectip"), " ");
    settings.WriteSetting("Other", "Section", "Name", " x ");
    EXPECT_EQ(settings.ReadSetting("Other", "Section", "Name", "default"), " x ");
    // One value under two spellings.
    EXPECT_EQ(setting::WindowStateWritten.name, "Windowstate");
    EXPECT_EQ(setting::WindowStateRead.name, "WindowState");
    settings.write(setting::WindowStateWritten, "2");
    EXPECT_EQ(settings.read(setting::WindowStateRead), "2");

    store.writable = false; // a failed write is lost silently
    settings.write(setting::ServerConnectIp, "10.0.0.1");
    EXPECT_EQ(settings.status(), kFalse);
    EXPECT_EQ(settings.read(setting::ServerConnectIp), "127.0.0.1");
}

} // namespace
} // namespace tollwick
