// Kills a process in the middle of its writing, again and again.
#pragma once

#include <gtest/gtest.h>

#include <csignal>
#include <functional>
#include <random>
#include <sys/wait.h>
#include <unistd.h>

namespace tollwick {

inline constexpr int kKills = 200;

// Has a process of its own run write(0), write(1) and so on without an end, kills it at a random
// moment, and runs `check` on what it left; many times.
inline void killWhileWriting(const std::function<void(int)>& write,
                             const std::function<void()>& check) {
    std::minstd_rand random(20261123);
    std::uniform_int_distribution<useconds_t> moment(200, 8'000); // microseconds
    for (int kill_number = 0; kill_number < kKills; ++kill_number) {
        int under_way[2];
        ASSERT_EQ(pipe(under_way), 0);
        const pid_t writer = fork();
        ASSERT_GE(writer, 0);
        if (writer == 0) {
            write(kill_number);
            if (::write(under_way[1], "!", 1) == 1)
                for (int round = kill_number + 1;; ++round)
                    write(round);
            _exit(1);
        }
        char byte = 0;
        ASSERT_EQ(::read(under_way[0], &byte, 1), 1);
        close(under_way[0]);
        close(under_way[1]);
        usleep(moment(random));
        kill(writer, SIGKILL);
        int status = 0;
        ASSERT_EQ(waitpid(writer, &status, 0), writer);
        ASSERT_TRUE(WIFSIGNALED(status));
        check();
        if (testing::Test::HasFatalFailure())
            return;
    }
}

} // namespace tollwick
