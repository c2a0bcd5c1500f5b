// Carries out what a command comes to on the selected node.
#pragma once

#include "link/removal.h"
#include "rules/command_rules.h"
#include "rules/list_contents.h"
#include "ui/common/console_context.h"
#include "ui/dialogs/setting_editors.h"

#include <functional>
#include <memory>

class QWidget;

namespace tollwick {

class ConfigTree;
class HostSetupForm;
class ListView;

class CommandRunner {
public:
    // `window` is what the dialogs belong to.
    CommandRunner(ConsoleContext& context, ConfigTree& tree, ListView& list, QWidget* window);
    ~CommandRunner();

    void run(Action action);

    // Fills the list with what the node holds.
    void showNode(const std::string& node_key);

    // Starts a transport, or cancels the one that runs.
    void transportNow();
    void cancelTransport();

private:
    // Fills the list of this node anew if it is the one that is shown.
    void rebuild(std::string_view node_key);
    // For data in which the selected row may have moved: its identity from before the change.
    void rebuild(std::string_view node_key, const std::string& selected_identity);
    void changeLogin();
    void addSchedule();
    void EditSchedule();
    void addHost();
    // Fills the list anew and selects the new record, if there is one.
    void showAdded(std::string_view node_key, std::size_t count_before, std::size_t count);
    void EditHost();
    // Removes the selected rows one by one, after a question.
    struct Deletion {
        std::string_view node_key;
        Text question;      // about a single row
        Text many_question; // about several
        Text refused;       // of a single one
        std::size_t name_column;
    };
    template <class Record>
    void deleteSelected(const Deletion& deletion, std::vector<Record>& records,
                        Removal (*remove)(ServiceContext&, const Record&));
    void tellRefused(const Deletion& deletion, std::vector<std::string> names, bool is_single);
    void refreshOutbox();
    [[nodiscard]] ListContents contentsOf(std::string_view node_key) const;
    // A dialog for the current record; it adds a new one to its list itself.
    void showScheduleForm(Text caption);
    void showHostForm(Text caption);
    // Shows the dialog for the selected record, as `current`.
    template <class Record>
    void editSelected(std::vector<Record>& records, Record& current,
                      const std::function<void()>& show_form);
    // The element of `records` that the user sees as selected, or nullptr.
    template <class Record>
    Record* selected(std::vector<Record>& records);
    void sendCommand(Integer UucpCommandRecord::*flag);

    // Makes the host dialog that is shown next as soon as there is nothing else to do.
    void prepareHostForm();
    void makeHostForm();

    ConsoleContext& context_;
    ConfigTree& tree_;
    ListView& list_;
    QWidget* window_;
    SettingEditors editors_;
    std::unique_ptr<HostSetupForm> next_host_form_;
};

} // namespace tollwick
