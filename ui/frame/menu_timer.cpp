#include "ui/frame/menu_timer.h"

#include "rules/node_keys.h"
#include "ui/frame/config_tree.h"
#include "ui/frame/main_actions.h"
#include "ui/lists/list_view.h"
#include "ui/monitor/monitor_panel.h"

#include <QScopeGuard>

#include <utility>

namespace tollwick {

MenuTimer::MenuTimer(ConsoleContext& context, MainActions& actions, ConfigTree& tree,
                     ListView& list, MonitorPanel& monitor, QObject* parent)
    : QTimer(parent), context_(context), actions_(actions), tree_(tree), list_(list),
      monitor_(monitor) {
    setObjectName("MenuTimer");
    setInterval(kIntervalMs);
    // Queued, so that the timer goes on while a box of a tick is up.
    connect(this, &QTimer::timeout, this, &MenuTimer::tick, Qt::QueuedConnection);
}

void MenuTimer::tick() {
    const bool is_box_up = std::exchange(is_ticking_, true);
    const auto end = qScopeGuard([&] { is_ticking_ = is_box_up; });
    context_.errors.guard(Routine::MenuTimer, [&](Integer& step) {
        step = 1;
        followConnection();
        if (is_box_up)
            return;
        step = 2;
        followSelection();
        step = 3;
        pollStatus();
    });
}

void MenuTimer::followConnection() {
    const bool connected = context_.link.isOpen();
    if (connected == was_connected_)
        return;
    was_connected_ = connected;
    actions_.setConnected(connected);
    if (connected)
        return;
    tree_.clear();
    list_.showContents({}, {});
    monitor_.forgetTransport();
    context_.progress.setInfo(context_.text(Text::StatusConnectionClosed));
}

void MenuTimer::followSelection() {
    const std::string node_key = tree_.selectedKey();
    actions_.setEnabled(enableFlags({was_connected_, node_key, list_.selectedCount()}));
}

void MenuTimer::pollStatus() {
    if (!was_connected_ || tree_.selectedKey() != node::UucpMonitor)
        return;
    if (poll_counter_ < kTicksBetweenPolls) {
        ++poll_counter_;
        return;
    }
    // One request at a time: a tick during another one's wait sends nothing.
    if (context_.requests.isBusy())
        return;
    poll_counter_ = 0;
    context_.requests.txGetUucpStatus([this](int) {
        context_.errors.guard(Routine::MenuTimer, [&](Integer&) { displayStatus(); });
    });
}

void MenuTimer::displayStatus() {
    if (tree_.selectedKey() != node::UucpMonitor)
        return;
    const std::array<std::string, kMonitorRows> texts = monitorTexts(context_.data.uucp_status);
    for (std::size_t row = 0; row < texts.size(); ++row)
        list_.setCell(static_cast<int>(row), 1, texts[row]);
    monitor_.showStatus(context_.data.uucp_status);
}

} // namespace tollwick
