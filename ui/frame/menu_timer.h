// What happens on every tick of the main window's timer: menus and toolbar follow the connection
// and the selection, a lost connection is noticed, and the monitor asks for the transfer's status.
#pragma once

#include "ui/common/console_context.h"

#include <QTimer>

namespace tollwick {

class ConfigTree;
class ListView;
class MainActions;
class MonitorPanel;

class MenuTimer : public QTimer {
    Q_OBJECT
public:
    static constexpr int kIntervalMs = 100;
    // The status is asked for on every eleventh tick.
    static constexpr Integer kTicksBetweenPolls = 10;

    MenuTimer(ConsoleContext& context, MainActions& actions, ConfigTree& tree, ListView& list,
              MonitorPanel& monitor, QObject* parent);

    void tick();

private:
    void followConnection();
    void followSelection();
    void pollStatus();
    void displayStatus();

    ConsoleContext& context_;
    MainActions& actions_;
    ConfigTree& tree_;
    ListView& list_;
    MonitorPanel& monitor_;
    bool was_connected_ = false; // on the last tick
    bool is_ticking_ = false;    // or a box of the tick is up
    Integer poll_counter_ = 0;
};

} // namespace tollwick
