#include "rules/node_keys.h"

#include <algorithm>

namespace tollwick {
namespace {

constexpr TreeNode kTreeNodes[] = {
    {node::ServerName, "", Text::NodeConfiguration, "server"},
    {node::Configuration, node::ServerName, Text::NodeConfiguration, "config2"},
    {node::LoginAccount, node::Configuration, Text::NodeLoginAccount, "lock"},
    {node::Schedule, node::Configuration, Text::NodeSchedules, "schedule"},
    {node::System, node::Configuration, Text::NodeSystem, "system"},
    {node::Admin, node::System, Text::NodeAdmin, "admin"},
    {node::Logs, node::System, Text::NodeLogs, "log"},
    {node::Options, node::System, Text::NodeOptions, "options"},
    {node::SmtpServer, node::System, Text::NodeSmtpServer, "mailin"},
    {node::SmtpForward, node::System, Text::NodeSmtpForward, "mailout"},
    {node::UucpDaemon, node::System, Text::NodeUucpDaemon, "modem"},
    {node::UucpHosts, node::Configuration, Text::NodeUucpHosts, "transport"},
    {node::View, node::ServerName, Text::NodeView, "view"},
    {node::Outbox, node::View, Text::NodeOutbox, "mailbox"},
    {node::UucpMonitor, node::View, Text::NodeUucpMonitor, "monitor"},
};

} // namespace

bool isGrouping(std::string_view node_key) {
    return !node_key.empty() &&
           std::ranges::find(kTreeNodes, node_key, &TreeNode::parent) != std::end(kTreeNodes);
}

std::span<const TreeNode> treeNodes() {
    return kTreeNodes;
}

} // namespace tollwick
