// Swallows what the user types and clicks while a request waits: no window takes input, but all
// repaint, the main window can be closed, and Escape gives the request up.
#pragma once

#include "link/input_lock.h"

#include <QObject>

namespace tollwick {

class InputBlocker : public QObject, public InputLock {
    Q_OBJECT
public:
    explicit InputBlocker(QObject* parent = nullptr);
    ~InputBlocker() override;

    [[nodiscard]] bool isLocked() const { return locks_ > 0; }
    void lockInput() override;
    void unlockInput() override;

    // Lets input through for a scope, for a message box that comes up during a wait.
    class Pause {
    public:
        explicit Pause(InputBlocker& blocker);
        ~Pause();
        Pause(const Pause&) = delete;
        Pause& operator=(const Pause&) = delete;

    private:
        InputBlocker& blocker_;
        int locks_;
    };

signals:
    void giveUpWanted();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void setLocks(int locks);

    int locks_ = 0;
};

} // namespace tollwick
