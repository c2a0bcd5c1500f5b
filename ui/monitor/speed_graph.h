// A small graph of the speed over the last minutes; the present is at its right edge.
#pragma once

#include "rules/speed_history.h"

#include <QWidget>

namespace tollwick {

class SpeedGraph : public QWidget {
    Q_OBJECT
public:
    explicit SpeedGraph(QWidget* parent = nullptr);

    // A speed in bits per second, measured now. `now` is in seconds since any fixed moment.
    void add(double now, double speed);
    void clear();
    [[nodiscard]] const SpeedHistory& history() const { return history_; }

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    SpeedHistory history_;
};

} // namespace tollwick
