#include "ui/monitor/monitor_panel.h"

#include "ui/common/to_qstring.h"
#include "ui/monitor/speed_graph.h"

#include <QCheckBox>
#include <QProgressBar>
#include <QVBoxLayout>

#include <algorithm>

namespace tollwick {
namespace {

constexpr Setting kNotify{"General", "TransportNotification", "1"};

} // namespace

MonitorPanel::MonitorPanel(ConsoleContext& context, QWidget* parent)
    : QWidget(parent), progress_(new QProgressBar), graph_(new SpeedGraph),
      notify_(new QCheckBox(context.caption(Text::NotifyOption))) {
    setObjectName("MonitorPanel");
    progress_->setObjectName("MonitorProgress");
    progress_->setAccessibleName(context.caption(Text::RowMonitorProgress));
    progress_->setRange(0, 100);
    progress_->setValue(0);
    graph_->setAccessibleName(context.caption(Text::SpeedGraph));
    graph_->setToolTip(context.caption(Text::SpeedGraph));
    notify_->setObjectName("NotifyOption");
    notify_->setChecked(context.settings.read(kNotify) != "0");
    connect(notify_, &QCheckBox::toggled, this, [&context](bool on) {
        context.errors.guard(Routine::Command,
                             [&](Integer&) { context.settings.write(kNotify, on ? "1" : "0"); });
    });

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 6, 0, 0);
    layout->addWidget(progress_);
    layout->addWidget(graph_);
    layout->addWidget(notify_);
    clock_.start();
}

void MonitorPanel::forgetTransport() {
    watch_.reset();
    progress_->setValue(0);
    graph_->clear();
}

void MonitorPanel::showStatus(const UucpStatusRecord& status) {
    progress_->setValue(std::clamp<int>(status.percent, 0, 100));
    graph_->add(static_cast<double>(clock_.elapsed()) / 1000, status.average_speed);
    if (watch_.hasEnded(status) && notify_->isChecked())
        emit transportEnded();
}

} // namespace tollwick
