#include "ui/monitor/speed_graph.h"

#include "base/numeric.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace tollwick {
namespace {

constexpr int kLines = 5;  // of text, that the graph is high
constexpr int kMargin = 4; // pixels
constexpr double kGap = 5; // seconds without a sample that break the curve
constexpr int kFillAlpha = 60;
constexpr int kGridAlpha = 70;
constexpr int kMinutes = static_cast<int>(SpeedHistory::kSpan) / 60;

// The upper end of the scale: 1, 2 or 5 times a power of ten.
double scaleFor(double highest) {
    double step = 100;
    for (;;) {
        for (const double factor : {1.0, 2.0, 5.0})
            if (highest <= step * factor)
                return step * factor;
        step *= 10;
    }
}

QString speedText(double speed) {
    return QString::fromStdString(groupedNumber(std::llround(speed))) + QStringLiteral(" bps");
}

} // namespace

SpeedGraph::SpeedGraph(QWidget* parent) : QWidget(parent) {
    setObjectName("SpeedGraph");
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void SpeedGraph::add(double now, double speed) {
    history_.add(now, speed);
    setAccessibleDescription(speedText(history_.samples().back().speed));
    update();
}

void SpeedGraph::clear() {
    history_ = SpeedHistory();
    setAccessibleDescription({});
    update();
}

QSize SpeedGraph::sizeHint() const {
    return {200, fontMetrics().height() * kLines + 2 * kMargin};
}

void SpeedGraph::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), palette().base());
    const double scale = scaleFor(history_.highest());
    const QString top = speedText(scale);
    const QRectF area =
        QRectF(rect()).adjusted(kMargin + fontMetrics().horizontalAdvance(top) + kMargin,
                                kMargin + 0.5, -kMargin - 0.5, -kMargin - fontMetrics().height());

    QColor grid = palette().color(QPalette::Text);
    grid.setAlpha(kGridAlpha);
    painter.setPen(grid);
    painter.drawLine(area.topLeft(), area.topRight());
    painter.drawLine(area.bottomLeft(), area.bottomRight());
    for (int minute = 0; minute <= kMinutes; ++minute) {
        const double x = area.right() - minute * area.width() / kMinutes;
        painter.drawLine(QPointF(x, area.top()), QPointF(x, area.bottom()));
    }
    painter.setPen(palette().color(QPalette::Text));
    const QRectF labels(kMargin, 0, area.left() - 2 * kMargin, height());
    painter.drawText(labels.adjusted(0, area.top() - 2, 0, 0), Qt::AlignRight | Qt::AlignTop, top);
    painter.drawText(QRectF(area.left(), area.bottom(), area.width(), height() - area.bottom()),
                     Qt::AlignLeft | Qt::AlignVCenter, QStringLiteral("-%1 min").arg(kMinutes));

    const auto& samples = history_.samples();
    if (samples.empty())
        return;
    const double now = samples.back().at;
    const auto place = [&](const SpeedHistory::Sample& sample) {
        return QPointF(area.right() - (now - sample.at) * area.width() / SpeedHistory::kSpan,
                       area.bottom() - sample.speed * area.height() / scale);
    };
    const QColor colour = palette().color(QPalette::Highlight);
    QColor fill = colour;
    fill.setAlpha(kFillAlpha);
    painter.setClipRect(area.adjusted(-1, -1, 1, 1));
    for (auto first = samples.begin(); first != samples.end();) {
        QPainterPath curve(place(*first));
        auto last = first;
        auto next = first + 1;
        for (; next != samples.end() && next->at - last->at < kGap; last = next++)
            curve.lineTo(place(*next));
        QPainterPath under = curve;
        under.lineTo(place(*last).x(), area.bottom());
        under.lineTo(place(*first).x(), area.bottom());
        painter.fillPath(under, fill);
        painter.strokePath(curve, QPen(colour, 1.5));
        first = next;
    }
}

} // namespace tollwick
