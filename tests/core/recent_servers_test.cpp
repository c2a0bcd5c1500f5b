#include "tests/support/memory_settings_store.h"
#include "ui/main/recent_servers.h"

#include <gtest/gtest.h>

namespace tollwick {
namespace {

TEST(RecentServers, KeepTheLastTenWithoutDoublesLatestFirst) {
    MemorySettingsStore store;
    Settings settings(store);
    EXPECT_TRUE(readRecentServers(settings).empty());
    for (int i = 0; i < 12; ++i)
        rememberServer(settings, {"host" + std::to_string(i), "542", "admin"});
    rememberServer(settings, {"host5", "542", "admin"});
    rememberServer(settings, {"host5", "543", "åsa|b"});
    const std::vector<RecentServer> servers = readRecentServers(settings);
    ASSERT_EQ(servers.size(), kRecentServers);
    EXPECT_EQ(servers[0], (RecentServer{"host5", "543", "åsa|b"}));
    EXPECT_EQ(servers[1], (RecentServer{"host5", "542", "admin"}));
    EXPECT_EQ(servers[2].host, "host11");
    EXPECT_EQ(servers[9].host, "host3");
}

TEST(RecentServers, WhatCannotBeReadBackIsLeftOut) {
    MemorySettingsStore store;
    Settings settings(store);
    rememberServer(settings, {"a|b", "1", "x"});
    settings.write({"Servers", "Server1", ""}, "no separator");
    settings.write({"Servers", "Server2", ""}, "::1|542|");
    const std::vector<RecentServer> servers = readRecentServers(settings);
    ASSERT_EQ(servers.size(), 1U);
    EXPECT_EQ(servers[0], (RecentServer{"::1", "542", ""}));
}

} // namespace
} // namespace tollwick
