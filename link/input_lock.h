// Keeps the user from starting something else while a request waits for its reply.
#pragma once

namespace tollwick {

class InputLock {
public:
    virtual ~InputLock() = default;
    // Calls come in pairs. While locked no window takes input, but all of them repaint and the
    // program can be ended.
    virtual void lockInput() = 0;
    virtual void unlockInput() = 0;
};

// Locks input for as long as it lives.
class LockedInput {
public:
    explicit LockedInput(InputLock& lock) : lock_(lock) { lock_.lockInput(); }
    ~LockedInput() { lock_.unlockInput(); }
    LockedInput(const LockedInput&) = delete;
    LockedInput& operator=(const LockedInput&) = delete;

private:
    InputLock& lock_;
};

// For programs without windows.
class NoInputLock : public InputLock {
public:
    void lockInput() override {}
    void unlockInput() override {}
};

} // namespace tollwick
