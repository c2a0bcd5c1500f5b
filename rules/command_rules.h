// Which command does what on which node, and when it is offered.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace tollwick {

enum class Command {
    Add,
    Delete,
    Properties,
    Toggle,
    Refresh,
    Activate, // double-click or Enter on a row of the list
};

enum class Action {
    None,
    ChangeLogin,
    AddSchedule,
    EditSchedule,
    DeleteSchedule,
    AddHost,
    EditHost,
    DeleteHost,
    DeleteMail,
    RefreshOutbox,
    EditAdminSetting,
    EditSmtpServiceSetting,
    EditSmtpForwardSetting,
    EditOptionSetting,
    EditUucpDaemonSetting,
    EditLogPeriod,
    ToggleLogSwitch,
    GoToNode,
};

// The action of a command on the node with this key; None for a key that gives it none.
Action actionFor(Command command, std::string_view node_key);

// A flag byte: 255 enables its item, 0 disables it, any other leaves it as it is.
using Flag = std::uint8_t;
inline constexpr Flag kOn = 255;
inline constexpr Flag kOff = 0;
inline constexpr Flag kAsIs = 1;

// The items of the setter, in the order of its arguments. The first seven are the entries of the
// Tools menu, the others buttons of the toolbar.
enum class Item {
    AddMenu,
    DeleteMenu,
    PropertiesMenu,
    Toggmenu,
    OpenMenu,
    Refreshmenu,
    Cancelmenu,
    ToolbarAddSchedule,
    ToolbarAddUucpHost,
    ToolbarDelete,
    ToolbarProperties,
};
inline constexpr std::size_t kMenuItems = 7;
inline constexpr std::size_t kAllItems = 11;

constexpr std::size_t indexOf(Item item) {
    return static_cast<std::size_t>(item);
}

using EnableFlags = std::array<Flag, kAllItems>;

// What decides about the commands.
struct Selection {
    bool connected = false;
    std::string_view node_key; // empty when no node is selected
    std::size_t rows = 0;      // of the list that are selected
};

EnableFlags enableFlags(const Selection& selection);

} // namespace tollwick
