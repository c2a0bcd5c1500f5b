#include "app/settings_store.h"
#include "tests/support/memory_settings_store.h"

#include <gtest/gtest.h>

namespace tollwick {
namespace {

TEST(Settings, BlankValuesReadAsTheDefault) {
    using namespace std::string_literals;
    struct {
        std::string stored;
        std::string_view read;
    } const cases[] = {
        {"", "542"},
        {" ", "542"},
        {"   ", "542"},
        {"\0 \0"s, "542"},
        {" \0"s, "542"},
        {"\0"
         "25"s,
         "542"},
        {"25", "25"},
        {"25  ", "25  "},
        {"  25", "  25"},
        {"25\0 26"s, "25"},
        {"\t", "\t"},
    };
    for (const auto& c : cases) {
        MemorySettingsStore store;
        store.values["tollwick\\general\\serverconnectport"] = c.stored;
        Settings settings(store);
        EXPECT_EQ(settings.read(setting::ServerConnectPort), c.read) << '"' << c.stored << '"';
        EXPECT_EQ(settings.status(), kTrue);
    }
}

TEST(Settings, AnEmptyTextIsStoredAsABlank) {
    MemorySettingsStore store;
    Settings settings(store);
    settings.write(setting::ServerConnectIp, "");
    EXPECT_EQ(store.values.at("tollwick\\general\\serverconnectip"), " ");
    EXPECT_EQ(settings.read(setting::ServerConnectIp), "127.0.0.1");
    settings.WriteSetting("Other", "Section", "Name", " x ");
    EXPECT_EQ(settings.ReadSetting("Other", "Section", "Name", "default"), " x ");
    EXPECT_EQ(settings.read(setting::ServerConnectIp), "127.0.0.1");
}

TEST(Settings, EachHasItsDefault) {
    MemorySettingsStore store;
    Settings settings(store);
    struct {
        Setting setting;
        std::string_view value;
    } const cases[] = {
        {setting::CountryCode, "1000"},
        {setting::ComTimeout, "30"},
        {setting::ServerConnectIp, "127.0.0.1"},
        {setting::ServerConnectPort, "542"},
        {setting::ServerConnectUsername, "admin"},
        {setting::InstallDir, ""},
        {setting::WindowStateRead, "0"},
        {setting::WindowXpos, "0"},
        {setting::WindowYpos, "0"},
        {setting::WindowXsize, "7440"},
        {setting::WindowYsize, "5235"},
        {setting::SplitterPos, "2985"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(settings.read(c.setting), c.value) << c.setting.name;
        EXPECT_EQ(settings.status(), kFalse);
    }
}

TEST(Settings, TheWindowStateHasOneValueUnderTwoSpellings) {
    EXPECT_EQ(setting::WindowStateWritten.name, "Windowstate");
    EXPECT_EQ(setting::WindowStateRead.name, "WindowState");
    MemorySettingsStore store;
    Settings settings(store);
    settings.write(setting::WindowStateWritten, "2");
    EXPECT_EQ(settings.read(setting::WindowStateRead), "2");
}

TEST(Settings, AFailedWriteIsLostSilently) {
    MemorySettingsStore store;
    store.writable = false;
    Settings settings(store);
    settings.write(setting::ServerConnectIp, "10.0.0.1");
    EXPECT_EQ(settings.status(), kFalse);
    EXPECT_EQ(settings.read(setting::ServerConnectIp), "127.0.0.1");
}

} // namespace
} // namespace tollwick
