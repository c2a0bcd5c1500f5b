// The editors of the single settings. Each reads the key of the list's selected row, changes that
// setting, sends all settings to the service and rebuilds the list; a key that it does not know
// makes it return at once.
#pragma once

#include "rules/setting_rows.h"
#include "ui/common/console_context.h"

#include <functional>
#include <string>
#include <string_view>

class QWidget;

namespace tollwick {

struct AddressRule;

class SettingEditors {
public:
    // `selected_key` gives the key of the list's selected row, `rebuild` fills the list of a node
    // anew. `window` is what the dialogs belong to.
    SettingEditors(ConsoleContext& context, std::function<std::string()> selected_key,
                   std::function<void(std::string_view node_key)> rebuild, QWidget* window);

    void EditAdminSetting();
    void EditSmtpServiceSetting();
    void EditSmtpForwardSetting();
    void EditOptionSetting();
    void EditUucpDaemonSetting();
    void ToggleLogSwitch();
    void EditLogPeriod();

private:
    // The selected row of this node, or nullptr.
    const SettingRow* selectedRow(std::string_view node_key) const;
    void editAddress(std::string_view node_key);
    void editIpNumber(const SettingRow& row, const AddressRule& rule);
    void editPort(const SettingRow& row, const AddressRule& rule);
    void editCommand(const SettingRow& row);
    void editDebuggingLevel(const SettingRow& row);
    void flip(const SettingRow& row);
    // The period dialog: gives the new period, or the old one after a cancel.
    Integer AskLogPeriod(Integer period);
    void tell(const struct StyledText& text);

    ConsoleContext& context_;
    std::function<std::string()> selected_key_;
    std::function<void(std::string_view)> rebuild_;
    QWidget* window_;
};

} // namespace tollwick
