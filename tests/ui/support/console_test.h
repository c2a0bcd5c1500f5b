// A console of its own for each test, with its settings, its install folder and the stand-in
// service on a thread of its own. Windows and controls are found by their names and worked as a
// person does, with keys that go where the focus is.
#pragma once

#include "simulator/sample_site.h"
#include "simulator/server_thread.h"
#include "tests/support/memory_settings_store.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/test_log.h"
#include "tests/support/wait_until.h"
#include "tests/ui/support/box_watcher.h"
#include "ui/frame/config_tree.h"
#include "ui/frame/console.h"
#include "ui/frame/menu_timer.h"
#include "ui/lists/list_view.h"

#include <QAction>
#include <QDialog>
#include <QLabel>

#include <atomic>

namespace tollwick {

using Lines = std::vector<std::string>;
using Work = std::function<void()>;
using Act = std::function<void(QDialog&)>;

// How a failed request is told.
inline std::string unable(const std::string& what) {
    return "Unable to " + what + " the Tollwick Service!\nThe connection is terminated!";
}

class ConsoleTest : public testing::Test {
protected:
    ConsoleTest();

    void set(const Setting& setting, const std::string& value) {
        Settings(store).write(setting, value);
    }
    std::string stored(const Setting& setting) { return Settings(store).read(setting); }

    // Makes a console and starts it; false when it does not come up.
    bool start();
    // Starts the console if need be, and logs in as the sample site's administrator.
    void logIn();
    // Stops the timer of the main window after a tick, so that only tick() makes it tick.
    void stopTimer() {
        tick();
        window().menuTimer()->stop();
    }
    void tick() { window().menuTimer()->tick(); }

    // Runs `open`, which brings up dialogs one after another or one again and returns when the last
    // is closed; each of them gets its act. One that is still up after that fails the test.
    void inDialogs(const Work& open, const std::vector<Act>& acts);
    void inDialog(const Work& open, const Act& act) { inDialogs(open, {act}); }
    void inDialog(const char* action, const Act& act) {
        inDialogs([&] { trigger(action); }, {act});
    }
    // Runs `request`, which waits for a reply, and `act` during the wait, once it `is_due`.
    void inRequest(
        const Work& request, const Work& act,
        const std::function<bool()>& is_due = [] { return true; });

    // Types into the control that has the focus, which Tab moves on.
    static void type(const std::string& text);
    static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    static std::string focused();
    template <class Widget = QWidget>
    static Widget* child(QWidget& parent, const char* name) {
        auto* found = parent.findChild<Widget*>(name);
        return found ? found : throw std::out_of_range(name);
    }
    static void clickOn(QWidget& parent, const char* name) {
        QTest::mouseClick(child(parent, name), Qt::LeftButton);
    }
    // Works the controls of a dialog one after the other, on whatever page they are. Of the steps,
    // which "|" separates, "name" is clicked, "name=text" is entered over what is there, or chosen
    // in a list by its position, "name?text" has to show the text, and "?name" to have the focus.
    static void play(QDialog& dialog, const std::string& steps);
    // What the control shows: its text, its caption, its title or its items.
    static std::string textOf(QWidget& parent, const char* name);

    Twmainform& window() { return *console->mainForm(); }
    ConsoleContext& context() { return console->context(); }
    ListView& list() { return *window().list(); }
    std::string info() { return textOf(window(), "info"); }
    QAction* action(const char* name) {
        auto* found = window().findChild<QAction*>(name);
        return found ? found : throw std::out_of_range(name);
    }
    // Waits until the action is enabled, as a person does, and triggers it.
    void trigger(const char* name);

    QTreeWidgetItem* node(const std::string& key);
    void clickNode(const std::string& key);
    void clickRow(int row, bool twice = false);
    void select(const std::string& node, int row) {
        clickNode(node);
        clickRow(row);
    }
    // An act: types, and so confirms or goes on.
    static Act typing(std::string keys) {
        return [keys](QDialog&) { type(keys); };
    }
    // The tree, one line per node: depth as dots, key, image, caption.
    Lines tree();
    // The list: its titles, then one line per row with key, image and cells.
    Lines listed();
    std::string rowText(int row) { return listed().at(static_cast<std::size_t>(row) + 1); }
    // True when the window looks logged out and says why.
    bool isLoggedOut();

    template <class Task>
    auto onServer(Task task) {
        return service.run(task);
    }
    Site site() {
        return onServer([](simulator::Server& server) { return server.site(); });
    }
    // Restores the service: the sample site, no faults, and no requests so far.
    void restore();
    // The text log, line by line, without the moment.
    Lines logged();

    // Runs `work`, whose first request for this class of object is refused and told as `unable` to
    // do so. Returns the status text at that moment.
    std::string refused(ObjectClass object_class, const std::string& what, const Work& work);
    // The service answers no request for this class of object.
    void neverReply(ObjectClass object_class);
    void loseConnection() {
        onServer([](simulator::Server& server) { server.closeConnections(); });
    }
    // A little more than a time-out of one second passes.
    void runOutOfTime() {
        clock.time.second += 1;
        clock.time.hundredths += 1;
    }
    // The requests for a class that have reached the service, and all that change something there.
    int requestCount(ObjectClass object_class);
    int saves();
    // Lets time go on for the transfer that the service runs.
    void letTransportRun(int milliseconds) { transport_time += milliseconds; }

    TemporaryFolder folder;
    MemorySettingsStore store;
    RecordingSystemLog system_log;
    FixedClock clock; // waits for replies end only when a test sets it
    std::atomic<int> transport_time = 0;
    simulator::ServerThread service;
    BoxWatcher boxes;
    int ended = 0; // times that the process was ended
    std::unique_ptr<Console> console;
};

} // namespace tollwick
