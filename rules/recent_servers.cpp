#include "rules/recent_servers.h"

#include <algorithm>

namespace tollwick {
namespace {

constexpr std::string_view kSection = "Servers";
constexpr char kSeparator = '|';

std::string nameOf(std::size_t index) {
    return "Server" + std::to_string(index + 1);
}

} // namespace

std::vector<RecentServer> readRecentServers(Settings& settings) {
    std::vector<RecentServer> servers;
    for (std::size_t i = 0; i < kRecentServers; ++i) {
        const std::string text = settings.read({kSection, nameOf(i), ""});
        const std::size_t port = text.find(kSeparator);
        const std::size_t user = port == std::string::npos ? port : text.find(kSeparator, port + 1);
        if (user != std::string::npos)
            servers.push_back({text.substr(0, port), text.substr(port + 1, user - port - 1),
                               text.substr(user + 1)});
    }
    return servers;
}

void rememberServer(Settings& settings, const RecentServer& server) {
    if ((server.host + server.port).find(kSeparator) != std::string::npos)
        return;
    std::vector<RecentServer> servers = readRecentServers(settings);
    if (!servers.empty() && servers.front() == server)
        return;
    std::erase(servers, server);
    servers.insert(servers.begin(), server);
    servers.resize(std::min(servers.size(), kRecentServers));
    for (std::size_t i = 0; i < servers.size(); ++i)
        settings.write({kSection, nameOf(i), ""}, servers[i].host + kSeparator + servers[i].port +
                                                      kSeparator + servers[i].user);
}

} // namespace tollwick
