#include "rules/command_rules.h"

#include "rules/node_keys.h"

namespace tollwick {
namespace {

struct Route {
    Command command;
    std::string_view node_key;
    Action action;
};

// Toggle knows no action for "uucphosts": it is not to be offered there.
constexpr Route kRoutes[] = {
    {Command::Properties, node::LoginAccount, Action::ChangeLogin},
    {Command::Properties, node::Schedule, Action::EditSchedule},
    {Command::Properties, node::UucpHosts, Action::EditHost},
    {Command::Properties, node::Admin, Action::EditAdminSetting},
    {Command::Properties, node::Options, Action::EditOptionSetting},
    {Command::Properties, node::UucpDaemon, Action::EditUucpDaemonSetting},
    {Command::Properties, node::SmtpServer, Action::EditSmtpServiceSetting},
    {Command::Properties, node::SmtpForward, Action::EditSmtpForwardSetting},
    {Command::Properties, node::Logs, Action::EditLogPeriod},

    {Command::Delete, node::Schedule, Action::DeleteSchedule},
    {Command::Delete, node::UucpHosts, Action::DeleteHost},
    {Command::Delete, node::Outbox, Action::DeleteMail},

    {Command::Add, node::Schedule, Action::AddSchedule},
    {Command::Add, node::UucpHosts, Action::AddHost},

    {Command::Toggle, node::Logs, Action::ToggleLogSwitch},
    {Command::Toggle, node::Options, Action::EditOptionSetting},
    {Command::Toggle, node::UucpDaemon, Action::EditUucpDaemonSetting},

    {Command::Refresh, node::Outbox, Action::RefreshOutbox},
    {Command::Refresh, node::ServerName, Action::RefreshOutbox}, // whose mails the overview counts

    {Command::Activate, node::Admin, Action::EditAdminSetting},
    {Command::Activate, node::SmtpServer, Action::EditSmtpServiceSetting},
    {Command::Activate, node::SmtpForward, Action::EditSmtpForwardSetting},
    {Command::Activate, node::Options, Action::EditOptionSetting},
    {Command::Activate, node::UucpDaemon, Action::EditUucpDaemonSetting},
    // Activation switches a log, Properties edits its period: wanted.
    {Command::Activate, node::Logs, Action::ToggleLogSwitch},
    {Command::Activate, node::Schedule, Action::EditSchedule},
    {Command::Activate, node::UucpHosts, Action::EditHost},
};

} // namespace

Action actionFor(Command command, std::string_view node_key) {
    // The rows of a node that groups others lead to them.
    if (isGrouping(node_key) && (command == Command::Properties || command == Command::Activate))
        return Action::GoToNode;
    for (const Route& route : kRoutes)
        if (route.command == command && route.node_key == node_key)
            return route.action;
    return Action::None;
}

EnableFlags enableFlags(const Selection& selection) {
    const auto isGiven = [&](Command command) {
        return selection.connected && actionFor(command, selection.node_key) != Action::None;
    };
    const auto flag = [](bool on) { return on ? kOn : kOff; };

    const Flag add_schedule = flag(selection.connected && selection.node_key == node::Schedule);
    const Flag add_host = flag(selection.connected && selection.node_key == node::UucpHosts);
    const Flag remove = flag(isGiven(Command::Delete) && selection.rows > 0);
    const Flag properties = flag(isGiven(Command::Properties) &&
                                 (selection.rows == 1 || selection.node_key == node::LoginAccount));
    const Flag toggle = flag(isGiven(Command::Toggle) && selection.rows == 1);
    const Flag cancel = flag(selection.connected && selection.node_key == node::UucpMonitor);
    EnableFlags flags{};
    const auto set = [&flags](Item item, Flag value) { flags[indexOf(item)] = value; };
    set(Item::AddMenu, flag(isGiven(Command::Add)));
    set(Item::DeleteMenu, remove);
    set(Item::PropertiesMenu, properties);
    set(Item::Toggmenu, toggle);
    set(Item::OpenMenu, kOff); // it has no action
    set(Item::Refreshmenu, flag(isGiven(Command::Refresh)));
    set(Item::Cancelmenu, cancel);
    set(Item::ToolbarAddSchedule, add_schedule);
    set(Item::ToolbarAddUucpHost, add_host);
    set(Item::ToolbarDelete, remove);
    set(Item::ToolbarProperties, properties);
    return flags;
}

} // namespace tollwick
