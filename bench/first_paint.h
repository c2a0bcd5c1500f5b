// Tells when a window is to be seen.
#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>

#include <functional>

namespace tollwick::bench {

// Calls `shown` when a window of this type and what is in it have been painted for the first time.
template <class Window>
struct FirstPaint : QObject {
    explicit FirstPaint(std::function<void(Window*)> shown) : shown_(std::move(shown)) {
        QCoreApplication::instance()->installEventFilter(this);
    }
    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* window = event->type() == QEvent::Paint ? dynamic_cast<Window*>(watched) : nullptr;
        if (window && !std::exchange(is_painted_, true)) // what is in it follows in the same turn
            QTimer::singleShot(0, window, [this, window] { shown_(window); });
        return false;
    }

    std::function<void(Window*)> shown_;
    bool is_painted_ = false;
};

} // namespace tollwick::bench
