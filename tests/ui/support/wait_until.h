// Waiting for what the console does in its own time.
#pragma once

#include <QTest>

namespace tollwick {

// Milliseconds; far more than a loaded machine needs, and only a test that fails uses it up.
inline constexpr int kPatience = 30'000;

// Lets the windows and sockets work until the condition holds; false when it never does.
template <class Condition>
[[nodiscard]] bool waitUntil(Condition condition) {
    return QTest::qWaitFor(condition, kPatience);
}

} // namespace tollwick
