// A console of its own for each test, with its settings, its install folder and the stand-in
// service on a thread of its own. Windows and controls are found by their names.
#pragma once

#include "simulator/sample_site.h"
#include "simulator/server_thread.h"
#include "tests/support/fixed_clock.h"
#include "tests/support/memory_settings_store.h"
#include "tests/support/recording_system_log.h"
#include "tests/support/temporary_folder.h"
#include "tests/ui/support/box_watcher.h"
#include "tests/ui/support/wait_until.h"
#include "ui/main/config_tree.h"
#include "ui/main/console.h"
#include "ui/main/list_view.h"
#include "ui/main/menu_timer.h"

#include <QAction>
#include <QDialog>
#include <QLabel>
#include <gtest/gtest.h>

#include <atomic>

namespace tollwick {

using Lines = std::vector<std::string>;

class ConsoleTest : public testing::Test {
protected:
    explicit ConsoleTest(simulator::Site site = simulator::sampleSite());

    void set(const Setting& setting, const std::string& value);
    std::string stored(const Setting& setting) { return Settings(store).read(setting); }

    // Starts the console; false when it does not come up.
    bool start();
    // Starts the console if need be, and logs in as the sample site's administrator.
    void logIn();
    // Stops the timer of the main window, so that only tick() makes it tick.
    void stopTimer();
    void tick() { window().menuTimer()->tick(); }

    // Runs `open`, which brings a dialog up and returns when that is closed, and meanwhile `act`. A
    // dialog that is still up after that fails the test.
    void inDialog(const std::function<void()>& open, const std::function<void(QDialog&)>& act);
    // Runs `request`, which waits for a reply, and `act` during the wait.
    void inRequest(const std::function<void()>& request, const std::function<void()>& act);

    Twmainform& window() { return *console->mainForm(); }
    ConsoleContext& context() { return console->context(); }
    ListView& list() { return *window().list(); }
    std::string info() { return window().findChild<QLabel*>("info")->text().toStdString(); }
    QAction* action(const char* name);
    // Waits until the action is enabled, as a person does, and triggers it.
    void trigger(const char* name);

    QTreeWidgetItem* node(const std::string& key);
    // Clicks a node of the tree, or a row of the list.
    void clickNode(const std::string& key);
    void clickRow(int row);
    // The tree, one line per node: depth as dots, key, image, caption.
    Lines tree();
    // The list: its titles, then one line per row with key, image and cells.
    Lines listed();
    // True when the window looks logged out and says why.
    bool isLoggedOut();

    template <class Work>
    auto onServer(Work work) {
        return service.run(work);
    }
    // The requests of a class that have reached the service.
    int requestCount(ObjectClass object_class);
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
