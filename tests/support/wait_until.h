#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QThread>

namespace tollwick {

// Lets events happen until the condition comes true; false when it does not for so long that it
// never will.
template <class Condition>
bool waitUntil(Condition condition) {
    const QDeadlineTimer deadline(30'000);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents();
        QThread::msleep(1);
    }
    return true;
}

} // namespace tollwick
