// What the monitor shows below its rows: the progress as a bar, the speed as a graph, and whether
// the end of a transport is to be told.
#pragma once

#include "rules/transport_watch.h"
#include "ui/common/console_context.h"
#include "wire/records.h"

#include <QElapsedTimer>
#include <QWidget>

class QCheckBox;
class QProgressBar;

namespace tollwick {

class SpeedGraph;

class MonitorPanel : public QWidget {
    Q_OBJECT
public:
    MonitorPanel(ConsoleContext& context, QWidget* parent);

    // Takes the next status.
    void showStatus(const UucpStatusRecord& status);
    // The connection was lost: nothing is known of a transport any more.
    void forgetTransport();

signals:
    // A transport has ended and the user wants to be told.
    void transportEnded();

private:
    QProgressBar* progress_;
    SpeedGraph* graph_;
    QCheckBox* notify_;
    TransportWatch watch_;
    QElapsedTimer clock_;
};

} // namespace tollwick
