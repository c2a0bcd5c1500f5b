// For the tests of dialogs that change what the service holds: works them as a person does, with
// keys that go where the focus is, and makes their requests fail.
#pragma once

#include "link/record_packing.h"
#include "tests/ui/support/console_test.h"

#include <QDialog>

namespace tollwick {

// The ways in which a request ends without its reply.
enum class Failure { Refused, TimedOut, ConnectionLost };
inline constexpr Failure kFailures[] = {Failure::Refused, Failure::TimedOut,
                                        Failure::ConnectionLost};

class EditorTest : public ConsoleTest {
protected:
    using Act = std::function<void(QDialog&)>;

    EditorTest() { set(setting::ComTimeout, "1"); }

    void select(const std::string& node, int row);
    void doubleClickRow(int row);
    // Opens the Tools menu on the selected row with the right mouse button, and clicks an entry.
    void clickInContextMenu(const char* name);

    // As inDialog(), for dialogs that come up one after another or again: one act for each time.
    void inDialogs(const std::function<void()>& open, const std::vector<Act>& acts);
    // Types into the control that has the focus.
    static void type(const char* text);
    static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    static std::string focused();
    template <class Widget>
    static Widget* child(QDialog& dialog, const char* name) {
        auto* found = dialog.findChild<Widget*>(name);
        return found ? found : throw std::out_of_range(name);
    }

    // The record of the latest request, which has to have this operation and class.
    template <class Record>
    Record sent(Operation operation, ObjectClass object_class) {
        Record record;
        const Comrecord request = onServer([](auto& server) { return server.lastRequest(); });
        EXPECT_EQ(request.Operation, static_cast<Integer>(operation));
        EXPECT_EQ(request.ObjectClass, static_cast<Integer>(object_class));
        unpackRecord(request, record);
        return record;
    }
    simulator::Site site() {
        return onServer([](auto& server) { return server.site(); });
    }
    std::string rowText(int row) { return listed().at(static_cast<std::size_t>(row) + 1); }
    // The text log, line by line, without the moment.
    Lines logged();

    // Runs `save`, whose request for this class of object fails in this way and is told with this
    // message.
    void failing(Failure failure, ObjectClass object_class, const std::string& message,
                 const std::function<void()>& save);
};

} // namespace tollwick
