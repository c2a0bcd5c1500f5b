// The nodes of the configuration tree. The key of the selected node decides what the list shows and
// what every command does.
#pragma once

#include "base/string_table.h"

#include <span>
#include <string_view>

namespace tollwick {

namespace node {
inline constexpr std::string_view ServerName = "servername";
inline constexpr std::string_view Configuration = "configuration";
inline constexpr std::string_view LoginAccount = "loginaccount";
inline constexpr std::string_view Schedule = "schedule";
inline constexpr std::string_view System = "system";
inline constexpr std::string_view Admin = "admin";
inline constexpr std::string_view Logs = "logs";
inline constexpr std::string_view Options = "options";
inline constexpr std::string_view SmtpServer = "smtpserver";
inline constexpr std::string_view SmtpForward = "smtpforward";
inline constexpr std::string_view UucpDaemon = "uucpdaemon";
inline constexpr std::string_view UucpHosts = "uucphosts";
inline constexpr std::string_view View = "view";
inline constexpr std::string_view Outbox = "outbox";
inline constexpr std::string_view UucpMonitor = "uucpmonitor";
} // namespace node

struct TreeNode {
    std::string_view key;
    std::string_view parent; // empty for the root
    Text caption;            // not used for the root, which names the service's host
    std::string_view image;
};

// Whether the node merely groups others.
bool isGrouping(std::string_view node_key);

// In order of creation: each node is the last child of its parent when it is added.
std::span<const TreeNode> treeNodes();

} // namespace tollwick
