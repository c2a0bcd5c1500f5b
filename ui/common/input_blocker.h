// Swallows what the user types and clicks while the service is waited for: no window takes input,
// but all repaint, and the main window can be closed. A wait that lasts is offered to be given up,
// by Escape or by closing the dialog that waits.
#pragma once

#include "link/input_lock.h"

#include <QObject>
#include <QTimer>

namespace tollwick {

class InputBlocker : public QObject, public InputLock {
    Q_OBJECT
public:
    explicit InputBlocker(QObject* parent = nullptr);
    ~InputBlocker() override;

    // How long a wait lasts before it can be given up.
    static constexpr int kOfferAfterMs = 2000;

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
    // From when on the wait can be given up, and that it cannot be any more.
    void giveUpOffered(bool offered);
    void giveUpWanted();
    // During any wait, offered or not; a key that repeats itself does not count.
    void escapePressed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void setLocks(int locks);
    void offer(bool offered);

    int locks_ = 0;
    QTimer offer_timer_; // runs until the wait has lasted long enough
    bool is_offered_ = false;
};

} // namespace tollwick
