#include "rules/overview.h"

#include "base/numeric.h"
#include "base/text.h"
#include "base/utf8.h"
#include "rules/next_start.h"
#include "rules/node_keys.h"
#include "rules/schedule_lists.h"
#include "rules/setting_rows.h"

#include <algorithm>
#include <cstdio>
#include <map>

namespace tollwick {
namespace {

std::string grouped(std::size_t number) {
    return groupedNumber(static_cast<std::int64_t>(number));
}

// The mails that wait for each node, by its name without regard to case.
struct Waiting {
    std::string node; // as the first of them has it
    std::size_t mails = 0;
};
std::map<std::string, Waiting> waitingByNode(const std::vector<OutboxRecord>& outbox) {
    std::map<std::string, Waiting> by_node;
    for (const OutboxRecord& mail : outbox) {
        const std::string node = trimmed(mail.node.text());
        Waiting& waiting = by_node[toUpper(node)];
        if (waiting.mails++ == 0)
            waiting.node = node;
    }
    return by_node;
}

class Overview {
public:
    Overview(const ServiceData& data, const StringTable& texts, const Surroundings& around)
        : data_(data), texts_(texts), around_(around) {}

    std::vector<ListRow> ofService() {
        const SettingsRecord& settings = data_.settings;
        add(Text::OverviewService, around_.host + ':' + around_.port, node::Admin);
        add(Text::OverviewVersion, shortNumber(settings.service_version), node::Admin);
        add(Text::OverviewUser, data_.user_id, node::LoginAccount);
        add(Text::OverviewTransport, transport(), node::UucpMonitor);
        add(Text::OverviewSchedules, yesOrNo(settings.schedule_activated != kFalse), node::Options);
        add(Text::OverviewNextStart, nextStartText(), node::Schedule);
        add(Text::OverviewHosts, hosts(), node::UucpHosts);
        add(Text::OverviewOutbox, outbox(true), node::Outbox);
        add(Text::OverviewLogs, logsOn(), node::Logs);
        addWarnings();
        return std::move(rows_);
    }

    std::vector<ListRow> ofChildren(std::string_view node_key) {
        for (const TreeNode& child : treeNodes())
            if (child.parent == node_key)
                addRow(std::string(texts_(child.caption)), summaryOf(child.key), child.key);
        return std::move(rows_);
    }

private:
    void addRow(std::string item, std::string status, std::string_view node_key) {
        const auto found = std::ranges::find(treeNodes(), node_key, &TreeNode::key);
        std::string identity = item + '\n' + status;
        rows_.push_back({std::string(node_key),
                         found->image,
                         {std::move(item), std::move(status)},
                         std::move(identity)});
    }
    void add(Text item, std::string status, std::string_view node_key) {
        addRow(std::string(texts_(item)), std::move(status), node_key);
    }
    void warn(std::string status, std::string_view node_key) {
        add(Text::OverviewWarning, std::move(status), node_key);
    }
    void addWarnings() {
        if (activeHosts() == 0)
            warn(text(Text::WarnNoActiveHost), node::UucpHosts);
        if (data_.settings.schedule_activated == kFalse)
            warn(text(Text::WarnSchedulesOff), node::Options);
        for (const auto& [key, waiting] : waitingByNode(data_.outbox))
            if (!isNodeOfHost(key))
                warn(filledIn(texts_(Text::WarnNodeUnknown), {waiting.node}), node::Outbox);
        if (data_.password.empty())
            warn(text(Text::WarnNoPassword), node::LoginAccount);
    }

    [[nodiscard]] std::string text(Text id) const { return std::string(texts_(id)); }
    [[nodiscard]] std::string orNone(const std::string& found) const {
        return found.empty() ? text(Text::OverviewNone) : found;
    }
    [[nodiscard]] std::string yesOrNo(bool yes) const {
        return text(yes ? Text::HostActiveYes : Text::HostActiveNo);
    }

    // As of the last status that was asked for.
    [[nodiscard]] std::string transport() const {
        const std::string state = data_.uucp_status.state.text();
        return state.empty() ? text(Text::OverviewNotAsked) : state;
    }

    [[nodiscard]] std::string nextStartText() const {
        const auto next = data_.settings.schedule_activated != kFalse
                              ? nextStart(data_.schedules, weekTime(around_.now))
                              : std::nullopt;
        if (!next)
            return text(Text::OverviewNone);
        std::array<char, 16> time{};
        std::snprintf(time.data(), time.size(), " %02d:%02d", next->minute / 60, next->minute % 60);
        return scheduleDays(texts_).at(static_cast<std::size_t>(next->day)) + time.data();
    }

    [[nodiscard]] std::size_t activeHosts() const {
        return static_cast<std::size_t>(std::ranges::count_if(
            data_.hosts, [](const HostRecord& host) { return host.active != kFalse; }));
    }
    [[nodiscard]] std::string hosts() const {
        return filledIn(texts_(Text::OverviewHostCount),
                        {grouped(data_.hosts.size()), grouped(activeHosts())});
    }
    [[nodiscard]] bool isNodeOfHost(const std::string& upper_node) const {
        return std::ranges::any_of(data_.hosts, [&](const HostRecord& host) {
            return toUpper(trimmed(host.remote_uucp_name.text())) == upper_node;
        });
    }

    [[nodiscard]] std::string outbox(bool with_most) const {
        if (data_.outbox.empty())
            return filledIn(texts_(Text::OverviewMailCount), {"0", "0"});
        std::int64_t size = 0;
        for (const OutboxRecord& mail : data_.outbox)
            size += mail.size;
        std::string status = filledIn(texts_(Text::OverviewMailCount),
                                      {grouped(data_.outbox.size()), groupedNumber(size)});
        const auto by_node = waitingByNode(data_.outbox);
        const auto most = std::ranges::max_element(
            by_node, {}, [](const auto& entry) { return entry.second.mails; });
        if (with_most)
            status += ", " + filledIn(texts_(Text::OverviewMostMails),
                                      {most->second.node, grouped(most->second.mails)});
        return status;
    }

    [[nodiscard]] std::string logsOn() const {
        std::string names;
        for (const SettingRow& row : settingRows())
            if (row.node_key == node::Logs && isOn(row))
                names.append(names.empty() ? "" : ", ").append(texts_(row.caption));
        return orNone(names);
    }
    [[nodiscard]] bool isOn(const SettingRow& row) const {
        return imageOf(row, data_.settings) == kSwitchOnImage;
    }

    // One line on what the node holds: of settings the texts and numbers, and how many switches are
    // on.
    [[nodiscard]] std::string summaryOf(std::string_view node_key) const {
        if (node_key == node::LoginAccount)
            return data_.user_id;
        if (node_key == node::Schedule)
            return filledIn(texts_(Text::OverviewScheduleCount), {grouped(data_.schedules.size())});
        if (node_key == node::UucpHosts)
            return hosts();
        if (node_key == node::Outbox)
            return outbox(false);
        if (node_key == node::UucpMonitor)
            return transport();
        if (isGrouping(node_key))
            return childrenOf(node_key);
        return settingsOf(node_key);
    }
    [[nodiscard]] std::string childrenOf(std::string_view node_key) const {
        std::string names;
        for (const TreeNode& child : treeNodes())
            if (child.parent == node_key)
                names.append(names.empty() ? "" : ", ").append(texts_(child.caption));
        return names;
    }
    [[nodiscard]] std::string settingsOf(std::string_view node_key) const {
        std::string summary;
        std::size_t switches = 0;
        std::size_t on = 0;
        for (const SettingRow& row : settingRows()) {
            if (row.node_key != node_key)
                continue;
            if (row.image.empty()) {
                ++switches;
                on += isOn(row) ? 1 : 0;
            } else if (const std::string value = valueText(row, data_.settings); !value.empty()) {
                summary.append(summary.empty() ? "" : ", ").append(value);
            }
        }
        if (switches > 0)
            summary.append(summary.empty() ? "" : ", ")
                .append(
                    filledIn(texts_(Text::OverviewSwitchesOn), {grouped(on), grouped(switches)}));
        return orNone(summary);
    }

    static std::string shortNumber(Single number) {
        std::array<char, 32> digits{};
        std::snprintf(digits.data(), digits.size(), "%g", static_cast<double>(number));
        return digits.data();
    }

    const ServiceData& data_;
    const StringTable& texts_;
    const Surroundings& around_;
    std::vector<ListRow> rows_;
};

} // namespace

std::vector<ListRow> overviewRows(std::string_view node_key, const ServiceData& data,
                                  const StringTable& texts, const Surroundings& around) {
    Overview overview(data, texts, around);
    return node_key == node::ServerName ? overview.ofService() : overview.ofChildren(node_key);
}

} // namespace tollwick
