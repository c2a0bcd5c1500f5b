// Ctrl+C: ends the program at once, but between two requests.
#pragma once

#include "link/input_lock.h"

#include <QTimer>

namespace tollwick::ctl {

// As the link's lock of input it knows when a request is on its way. A reply that does not come in
// a second is not waited for.
class Interrupt : public InputLock {
public:
    // From now on; before, the system ends the program.
    void watch();

    void lockInput() override { ++waits_; }
    void unlockInput() override;

private:
    void look();

    QTimer timer_;
    int waits_ = 0;
    int looks_ = 0; // since Ctrl+C
};

} // namespace tollwick::ctl
