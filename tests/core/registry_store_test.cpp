#include "app/registry_store.h"
#include "app/system_log.h"
#include "tests/support/code_page.h"

#include <gtest/gtest.h>

#include <cstring>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace tollwick {
namespace {

// Works below application names of its own and removes their keys afterwards.
class RegistryStoreTest : public testing::Test {
protected:
    RegistryStoreTest() : application("TollwickTest" + std::to_string(GetCurrentProcessId())) {}
    ~RegistryStoreTest() override {
        const std::string parent = "SOFTWARE\\Brask software";
        RegDeleteTreeA(HKEY_LOCAL_MACHINE, (parent + "\\" + application).c_str());
        RegDeleteKeyA(HKEY_LOCAL_MACHINE, parent.c_str()); // goes only when nothing is below it
        for (const std::string& key : {keyOf("General"), parent + "\\" + application, parent})
            RegDeleteKeyExA(HKEY_LOCAL_MACHINE, key.c_str(), KEY_WOW64_32KEY, 0);
    }

    [[nodiscard]] std::string keyOf(const std::string& section) const {
        return "SOFTWARE\\Brask software\\" + application + "\\" + section;
    }
    void put(const char* name, DWORD type, const std::string& bytes) const {
        ASSERT_EQ(RegSetKeyValueA(HKEY_LOCAL_MACHINE, keyOf("General").c_str(), name, type,
                                  bytes.data(), static_cast<DWORD>(bytes.size())),
                  ERROR_SUCCESS);
    }
    // What is stored, whatever its type, as "type:bytes".
    [[nodiscard]] std::string raw(const std::string& key, const char* name) const {
        DWORD type = 0;
        std::string bytes(1000, '?');
        auto size = static_cast<DWORD>(bytes.size());
        HKEY opened = nullptr;
        if (RegOpenKeyA(HKEY_LOCAL_MACHINE, key.c_str(), &opened) != ERROR_SUCCESS)
            return "(no key)";
        const LSTATUS status = RegQueryValueExA(opened, name, nullptr, &type,
                                                reinterpret_cast<BYTE*>(bytes.data()), &size);
        RegCloseKey(opened);
        if (status != ERROR_SUCCESS)
            return "(no value)";
        return std::to_string(type) + ":" + bytes.substr(0, size);
    }

    std::string application;
    RegistryStore store;
};

TEST_F(RegistryStoreTest, TextsComeBackAsTheyWere) {
    for (const std::string value : {"192.168.1.2", " ", "", "  a  ", "C:\\Program\\Tollwick"}) {
        EXPECT_TRUE(store.write(application, "General", "Name", value));
        EXPECT_EQ(store.read(application, "General", "Name"), value);
        EXPECT_EQ(raw(keyOf("General"), "Name"), "1:" + value + std::string(1, '\0'));
    }
    EXPECT_EQ(store.read(application, "GENERAL", "nAME"), "C:\\Program\\Tollwick");
    if (ansiIsWindows1252()) {
        EXPECT_TRUE(store.write(application, "General", "Name", "Åsa €"));
        EXPECT_EQ(store.read(application, "General", "Name"), "Åsa €");
        EXPECT_EQ(raw(keyOf("General"), "Name"), std::string("1:\xC5sa \x80\0", 8));
    }
}

TEST_F(RegistryStoreTest, OnlyStringsAreReadAndEndAtTheirFirstNul) {
    EXPECT_EQ(store.read(application, "General", "Name"), std::nullopt);
    EXPECT_EQ(raw(keyOf("General"), "Name"), "(no value)"); // the read has created the key
    put("Dword", REG_DWORD, std::string("\x31\0\0\0", 4));
    put("Expand", REG_EXPAND_SZ, std::string("text\0", 5));
    put("Binary", REG_BINARY, "text");
    for (const char* name : {"Dword", "Expand", "Binary", "Missing"})
        EXPECT_EQ(store.read(application, "General", name), std::nullopt) << name;
    put("Cut", REG_SZ, std::string("ab\0cd\0", 6));
    put("Open", REG_SZ, "ab");
    put("None", REG_SZ, "");
    EXPECT_EQ(store.read(application, "General", "Cut"), "ab");
    EXPECT_EQ(store.read(application, "General", "Open"), "ab");
    EXPECT_EQ(store.read(application, "General", "None").value_or(""), "");
}

TEST_F(RegistryStoreTest, WhatA32BitProgramLeftIsReadAndNeverWritten) {
    HKEY view = nullptr;
    ASSERT_EQ(RegCreateKeyExA(HKEY_LOCAL_MACHINE, keyOf("General").c_str(), 0, nullptr, 0,
                              KEY_ALL_ACCESS | KEY_WOW64_32KEY, nullptr, &view, nullptr),
              ERROR_SUCCESS);
    const auto putInto32Bit = [&](const char* name, const char* text) {
        RegSetKeyValueA(view, nullptr, name, REG_SZ, text, static_cast<DWORD>(strlen(text) + 1));
    };
    for (const char* name : {"Name", "Dword"})
        putInto32Bit(name, "old");
    EXPECT_EQ(store.read(application, "General", "Name"), "old");
    EXPECT_TRUE(store.write(application, "General", "Name", "new"));
    putInto32Bit("Name", "older");
    EXPECT_EQ(store.read(application, "General", "Name"), "new");
    EXPECT_EQ(raw(keyOf("General"), "Name"), std::string("1:new\0", 6));
    // A value that is no string hides it all the same.
    put("Dword", REG_DWORD, std::string("\x31\0\0\0", 4));
    EXPECT_EQ(store.read(application, "General", "Dword"), std::nullopt);
    RegCloseKey(view);
}

TEST_F(RegistryStoreTest, ALeadingSeparatorOfTheKeyIsDropped) {
    // Without an application the key would start with one.
    EXPECT_TRUE(store.write("", application, "Name", "top"));
    EXPECT_EQ(store.read("", application, "Name"), "top");
    EXPECT_EQ(raw("SOFTWARE\\Brask software\\" + application, "Name"), std::string("1:top\0", 6));
}

TEST(EventLogTest, TakesAnEntryOfAnyLength) {
    EXPECT_TRUE(platformSystemLog()->error("M: Directory: C:\\Program\\Malmö was missing"));
    EXPECT_TRUE(platformSystemLog()->error(std::string(30'000, 'x')));
}

} // namespace
} // namespace tollwick
