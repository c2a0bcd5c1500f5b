// Counts how often input was locked, and whether it is.
#pragma once

#include "link/input_lock.h"

#include <gtest/gtest.h>

namespace tollwick {

class CountingLock : public InputLock {
public:
    void lockInput() override {
        ++times;
        ++depth;
    }
    void unlockInput() override {
        --depth;
        EXPECT_GE(depth, 0);
    }

    int times = 0;
    int depth = 0;
};

} // namespace tollwick
