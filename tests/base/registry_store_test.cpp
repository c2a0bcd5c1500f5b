#include "base/registry_store.h"
#include "base/system_log.h"
#include "tests/support/code_page.h"

#include <gtest/gtest.h>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace tollwick {
namespace {

using namespace std::string_literals;

// Works below an application name of its own and removes its keys afterwards.
class RegistryStoreTest : public testing::Test {
protected:
    ~RegistryStoreTest() override {
        RegDeleteTreeA(HKEY_LOCAL_MACHINE, top.c_str());
        RegDeleteKeyA(HKEY_LOCAL_MACHINE, parent.c_str()); // goes only when nothing is below it
        for (const std::string& key : {general, top, parent})
            RegDeleteKeyExA(HKEY_LOCAL_MACHINE, key.c_str(), KEY_WOW64_32KEY, 0);
    }

    // Puts a value where 64-bit programs look, or 32-bit ones.
    void put(const char* name, DWORD type, const std::string& bytes, REGSAM view = 0) const {
        HKEY key = nullptr;
        ASSERT_EQ(RegCreateKeyExA(HKEY_LOCAL_MACHINE, general.c_str(), 0, nullptr, 0,
                                  KEY_ALL_ACCESS | view, nullptr, &key, nullptr),
                  ERROR_SUCCESS);
        RegSetKeyValueA(key, nullptr, name, type, bytes.data(), static_cast<DWORD>(bytes.size()));
        RegCloseKey(key);
    }
    // What is stored, whatever its type, as "type:bytes".
    [[nodiscard]] static std::string raw(const std::string& path, const char* name = "Name") {
        DWORD type = 0;
        std::string bytes(1000, '?');
        auto size = static_cast<DWORD>(bytes.size());
        HKEY key = nullptr;
        if (RegOpenKeyA(HKEY_LOCAL_MACHINE, path.c_str(), &key) != ERROR_SUCCESS)
            return "(no key)";
        const LSTATUS status = RegQueryValueExA(key, name, nullptr, &type,
                                                reinterpret_cast<BYTE*>(bytes.data()), &size);
        RegCloseKey(key);
        return status == ERROR_SUCCESS ? std::to_string(type) + ":" + bytes.substr(0, size)
                                       : "(no value)";
    }
    std::optional<std::string> read(const char* name) {
        return store.read(application, "General", name);
    }
    bool write(const char* value) { return store.write(application, "General", "Name", value); }

    const std::string application = "TollwickTest" + std::to_string(GetCurrentProcessId());
    const std::string parent = "SOFTWARE\\Brask software";
    const std::string top = parent + "\\" + application;
    const std::string general = top + "\\General";
    RegistryStore store;
};

TEST_F(RegistryStoreTest, TextsComeBackAsTheyWere) {
    for (const char* value : {"", "  a  ", "C:\\Program"}) {
        EXPECT_TRUE(write(value));
        EXPECT_EQ(store.read(application, "GENERAL", "nAME"), value);
        EXPECT_EQ(raw(general), "1:" + std::string(value) + "\0"s);
    }
    if (ansiIsWindows1252()) {
        EXPECT_TRUE(write("Åsa €"));
        EXPECT_EQ(read("Name"), "Åsa €");
        EXPECT_EQ(raw(general), "1:\xC5sa \x80\0"s);
    }
    // Without an application the key would start with a separator.
    EXPECT_TRUE(store.write("", application, "Name", "top"));
    EXPECT_EQ(raw(top), "1:top\0"s);
}

TEST_F(RegistryStoreTest, OnlyStringsAreReadAndEndAtTheirFirstNul) {
    EXPECT_EQ(read("Name"), std::nullopt);
    EXPECT_EQ(raw(general), "(no value)"); // the read has created the key
    put("Dword", REG_DWORD, "1\0\0\0"s);
    put("Expand", REG_EXPAND_SZ, "text\0"s);
    EXPECT_EQ(read("Dword"), std::nullopt);
    EXPECT_EQ(read("Expand"), std::nullopt);
    put("Cut", REG_SZ, "ab\0cd\0"s);
    put("Open", REG_SZ, "ab");
    put("None", REG_SZ, "");
    EXPECT_EQ(read("Cut"), "ab");
    EXPECT_EQ(read("Open"), "ab");
    EXPECT_EQ(read("None").value_or(""), "");
}

TEST_F(RegistryStoreTest, WhatA32BitProgramLeftIsReadAndNeverWritten) {
    put("Name", REG_SZ, "old\0"s, KEY_WOW64_32KEY);
    put("Dword", REG_SZ, "old\0"s, KEY_WOW64_32KEY);
    EXPECT_EQ(read("Name"), "old");
    EXPECT_TRUE(write("new"));
    put("Name", REG_SZ, "older\0"s, KEY_WOW64_32KEY);
    EXPECT_EQ(read("Name"), "new");
    // A value that is no string hides it all the same.
    put("Dword", REG_DWORD, "1\0\0\0"s);
    EXPECT_EQ(read("Dword"), std::nullopt);
}

TEST(EventLogTest, TakesAnEntryOfAnyLength) {
    EXPECT_TRUE(platformSystemLog()->error(std::string(30'000, 'x')));
}

} // namespace
} // namespace tollwick
