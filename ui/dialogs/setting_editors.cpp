#include "ui/dialogs/setting_editors.h"

#include "base/numeric.h"
#include "base/text.h"
#include "rules/node_keys.h"
#include "rules/setting_rules.h"
#include "ui/dialogs/edit_form.h"

namespace tollwick {
namespace {

// What txSaveSettings would have to return for the warning about an IP number that no network
// adapter has. It never does, so the warning never comes: wanted.
constexpr Integer kNotAttached = 8;

struct DialogTexts {
    Text caption;
    Text label;
    std::string_view image_key;
};

constexpr DialogTexts kIpTexts{Text::EditIpCaption, Text::EditIpLabel, "netadress32"};
constexpr DialogTexts kPortTexts{Text::EditPortCaption, Text::EditPortLabel, "portin32"};
constexpr DialogTexts kDocViewerTexts{Text::DocViewerCaption, Text::DocViewerLabel, "paper32"};
constexpr DialogTexts kPriorTexts{Text::CommandCaption, Text::PriorCommandLabel, "command32"};
constexpr DialogTexts kAfterTexts{Text::CommandCaption, Text::AfterCommandLabel, "command32"};
constexpr DialogTexts kDebugTexts{Text::DebugLevelCaption, Text::DebugLevelLabel, "debug32"};
constexpr DialogTexts kPeriodTexts{Text::LogPeriodCaption, Text::LogPeriodLabel, "log32"};

// Asks until the user cancels, which gives false, or enters a text that `is_refused` lets pass. It
// tells the user why it refuses one, and that text stays for correction.
template <class Refuse>
bool editText(ConsoleContext& context, QWidget* window, const DialogTexts& texts,
              std::string_view current, Refuse&& is_refused) {
    EditForm form(context, window);
    form.setText(current);
    for (;;) {
        form.setCaptions(texts.caption, texts.label, texts.image_key);
        form.exec();
        if (context.edit.EditCancelled)
            return false;
        if (!is_refused(context.edit.EditResult))
            return true;
        form.setText(context.edit.EditResult);
    }
}

bool acceptAll(const std::string&) {
    return false;
}

// Tells what is wrong with the text as the row's setting, if anything.
bool isRefused(const ConsoleContext& context, const SettingRow& row, const std::string& text) {
    const auto problem = textProblem(row, text, context.data.settings);
    if (!problem)
        return false;
    context.prompter.beep();
    context.prompter.tell(problem->message.icon,
                          std::string(context.text(problem->message.text)).append(problem->listed));
    return true;
}

} // namespace

SettingEditors::SettingEditors(ConsoleContext& context, std::function<std::string()> selected_key,
                               std::function<void(std::string_view)> rebuild, QWidget* window)
    : context_(context), selected_key_(std::move(selected_key)), rebuild_(std::move(rebuild)),
      window_(window) {}

const SettingRow* SettingEditors::selectedRow(std::string_view node_key) const {
    return findSettingRow(node_key, selected_key_());
}

void SettingEditors::tell(const StyledText& text) {
    context_.prompter.tell(text.icon, context_.text(text.text));
}

void SettingEditors::EditAdminSetting() {
    editAddress(node::Admin);
}

void SettingEditors::EditSmtpServiceSetting() {
    editAddress(node::SmtpServer);
}

void SettingEditors::EditSmtpForwardSetting() {
    editAddress(node::SmtpForward);
}

void SettingEditors::editAddress(std::string_view node_key) {
    const SettingRow* row = selectedRow(node_key);
    const AddressRule* rule = row ? findAddressRule(row->key) : nullptr;
    if (!rule)
        return;
    if (std::holds_alternative<TextSetting>(row->place))
        editIpNumber(*row, *rule);
    else
        editPort(*row, *rule);
}

void SettingEditors::editIpNumber(const SettingRow& row, const AddressRule& rule) {
    const auto place = std::get<TextSetting>(row.place).value;
    VarText& setting = context_.data.settings.*place;
    const SettingsRecord before = context_.data.settings;
    const auto refuses = [&](const std::string& text) { return isRefused(context_, row, text); };
    if (!editText(context_, window_, kIpTexts, setting.text(), refuses))
        return;
    setting = context_.edit.EditResult;
    if (const auto notice = noticeOf(row, before, context_.data.settings))
        tell(*notice);
    const Integer status = context_.requests.txSaveSettings();
    if (rule.not_attached && status == kNotAttached) {
        context_.prompter.beep();
        tell(*rule.not_attached);
    } else if (rule.not_attached && status != 0) {
        return; // also for the answers 1 and 2, without a rebuild: wanted
    }
    rebuild_(row.node_key);
}

void SettingEditors::editPort(const SettingRow& row, const AddressRule& rule) {
    Long& setting = context_.data.settings.*std::get<NumberSetting>(row.place).value;
    const SettingsRecord before = context_.data.settings;
    std::optional<Long> entered;
    const auto refuses = [&](const std::string& text) {
        entered = portNumber(text);
        if (entered)
            return false;
        context_.prompter.beep();
        tell(rule.invalid);
        return true;
    };
    if (!editText(context_, window_, kPortTexts, std::to_string(setting), refuses))
        return;
    setting = *entered;
    if (const auto notice = noticeOf(row, before, context_.data.settings))
        tell(*notice);
    context_.requests.txSaveSettings();
    rebuild_(row.node_key);
}

void SettingEditors::EditOptionSetting() {
    const SettingRow* row = selectedRow(node::Options);
    if (!row)
        return;
    if (const auto* text = std::get_if<TextSetting>(&row->place)) {
        VarText& setting = context_.data.settings.*text->value;
        const auto refuses = [&](const std::string& entered) {
            return isRefused(context_, *row, entered);
        };
        if (!editText(context_, window_, kDocViewerTexts, setting.text(), refuses))
            return;
        setting = context_.edit.EditResult;
        context_.requests.txSaveSettings();
    } else {
        flip(*row);
        context_.requests.txSaveSettings();
    }
    rebuild_(row->node_key);
}

void SettingEditors::flip(const SettingRow& row) {
    Integer& setting = context_.data.settings.*std::get<SwitchSetting>(row.place).value;
    setting = flipped(setting);
}

void SettingEditors::EditUucpDaemonSetting() {
    const SettingRow* row = selectedRow(node::UucpDaemon);
    if (!row)
        return;
    SettingsRecord& settings = context_.data.settings;
    if (isCommand(*row))
        return editCommand(*row);
    if (row->key == setting_key::RemoteDebuggingLevel)
        return editDebuggingLevel(*row);

    const SettingsRecord before = settings;
    flip(*row);
    if (const auto notice = noticeOf(*row, before, settings))
        tell(*notice);
    // The one flag is compared with the other, not with its own value: wanted.
    if (row->key == setting_key::DischargeCr || before.force_send_params != settings.discharge_cr)
        context_.requests.txSaveSettings();
    rebuild_(row->node_key);
}

void SettingEditors::editCommand(const SettingRow& row) {
    const auto place = std::get<TextSetting>(row.place).value;
    VarText& setting = context_.data.settings.*place;
    const auto refuses = [&](const std::string& text) { return isRefused(context_, row, text); };
    const DialogTexts& texts = row.key == setting_key::UucpPriorCmd ? kPriorTexts : kAfterTexts;
    if (editText(context_, window_, texts, setting.text(), refuses)) {
        setting = context_.edit.EditResult;
        context_.requests.txSaveSettings();
    }
    rebuild_(row.node_key); // after a cancel, too
}

void SettingEditors::editDebuggingLevel(const SettingRow& row) {
    const auto place = std::get<TextSetting>(row.place).value;
    VarText& setting = context_.data.settings.*place;
    const auto refuses = [&](const std::string& text) {
        return isRefused(context_, row, trimmed(text));
    };
    if (!editText(context_, window_, kDebugTexts, setting.text(), refuses))
        return;
    const SettingsRecord before = context_.data.settings;
    setting = trimmed(context_.edit.EditResult);
    if (const auto notice = noticeOf(row, before, context_.data.settings))
        tell(*notice);
    context_.requests.txSaveSettings();
    rebuild_(row.node_key);
}

void SettingEditors::ToggleLogSwitch() {
    const SettingRow* row = selectedRow(node::Logs);
    if (!row)
        return;
    Integer& setting = context_.data.settings.*std::get<LogSetting>(row->place).value;
    setting = flipped(setting);
    context_.requests.txSaveSettings();
    rebuild_(row->node_key);
}

void SettingEditors::EditLogPeriod() {
    const SettingRow* row = selectedRow(node::Logs);
    if (!row)
        return;
    Integer& period = context_.data.settings.*std::get<LogSetting>(row->place).period;
    period = AskLogPeriod(period);
    rebuild_(row->node_key); // after a cancel, too
}

Integer SettingEditors::AskLogPeriod(Integer period) {
    if (!editText(context_, window_, kPeriodTexts, NumberToText(period), acceptAll))
        return period;
    const Integer entered = toInteger(numericValue(context_.edit.EditResult));
    // Sent before the caller stores the new period, which so reaches the service with the next
    // save: wanted.
    context_.requests.txSaveSettings();
    return entered;
}

} // namespace tollwick
