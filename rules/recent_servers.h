// The servers that were logged in to last, kept in the settings; never a password.
#pragma once

#include "base/settings_store.h"

#include <string>
#include <vector>

namespace tollwick {

struct RecentServer {
    std::string host;
    std::string port; // decimal text
    std::string user;

    friend bool operator==(const RecentServer&, const RecentServer&) = default;
};

inline constexpr std::size_t kRecentServers = 10;

// The last one first.
std::vector<RecentServer> readRecentServers(Settings& settings);
// Puts a server at the head of the list. One whose host or port could not be told apart from what
// follows it when read back is not kept.
void rememberServer(Settings& settings, const RecentServer& server);

} // namespace tollwick
