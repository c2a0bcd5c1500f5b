// Carries out what a command comes to on the selected node.
#pragma once

#include "ui/main/command_rules.h"
#include "ui/main/console_context.h"

namespace tollwick {

class ListView;

class CommandRunner {
public:
    CommandRunner(ConsoleContext& context, ListView& list) : context_(context), list_(list) {}

    void run(Action action);

    // Fills the list with what the node holds.
    void showNode(const std::string& node_key);

    // Starts a transport, or cancels the one that runs.
    void transportNow();
    void cancelTransport();

private:
    void deleteSchedule();
    void deleteHost();
    void deleteMail();
    void refreshOutbox();
    // The element of `records` that the user sees as selected, or nullptr.
    template <class Record>
    Record* selected(std::vector<Record>& records);
    // Takes an element of `records` away, and its row, which is the selected one.
    template <class Record>
    void remove(std::vector<Record>& records, const Record* record);
    bool isConfirmed(Text question);
    void sendCommand(Integer UucpCommandRecord::*flag);

    ConsoleContext& context_;
    ListView& list_;
};

} // namespace tollwick
