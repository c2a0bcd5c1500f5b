// From the start of the program to its painted window, and what it then takes of the memory,
// against a program with an empty window.
#include "bench/figures.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <fstream>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tollwick::bench {
static constexpr int kPatienceMs = 30'000;
static constexpr int kIdleMs = 1'200;

struct Start {
    double time, memory; // ms, MB
};

// This process's share of the memory.
static double proportionalMegabytes(pid_t process) {
    std::ifstream rollup("/proc/" + std::to_string(process) + "/smaps_rollup");
    std::string word;
    while (rollup >> word)
        if (double kilobytes = 0; word == "Pss:" && rollup >> kilobytes)
            return kilobytes / 1024;
    return 0;
}

// Runs a program that lies beside this one, as if for the first time.
static Start start(const char* name) {
    const std::string folder = QCoreApplication::applicationDirPath().toStdString() + '/';
    const QTemporaryDir home;
    int ends[2];
    require(::pipe(ends) == 0, "there is no pipe");
    const auto started = Clock::now();
    const pid_t process = ::fork();
    if (process == 0) {
        ::setenv("XDG_CONFIG_HOME", home.filePath("config").toUtf8().constData(), 1);
        ::setenv("XDG_DATA_HOME", home.filePath("data").toUtf8().constData(), 1);
        ::setenv("TOLLWICK_BENCH_FD", std::to_string(ends[1]).c_str(), 1);
        ::setenv("LD_PRELOAD", (folder + "libtollwick-tell-paint.so").c_str(), 1);
        ::execl((folder + name).c_str(), name, nullptr);
        ::_exit(EXIT_FAILURE);
    }
    require(process > 0, "there is no process");
    ::close(ends[1]);
    Clock::time_point painted;
    pollfd readable{ends[0], POLLIN, 0};
    const bool is_painted = ::poll(&readable, 1, kPatienceMs) == 1 &&
                            ::read(ends[0], &painted, sizeof painted) == sizeof painted;
    ::usleep(is_painted ? kIdleMs * 1000 : 0);
    const double memory = proportionalMegabytes(process);
    ::close(ends[0]);
    ::kill(process, SIGKILL);
    ::waitpid(process, nullptr, 0);
    require(is_painted && memory > 0, "no window came up, or its memory cannot be read");
    return {milliseconds(started, painted), memory};
}

static const Measurement starting("start", [] {
    Pairs time, memory;
    for (int i = -1; i < 11; ++i) {
        const Start ours = start("tollwickadmin");
        const Start floor = start("tollwick-empty-window");
        if (i < 0) // warms up
            continue;
        time.add(ours.time, floor.time);
        memory.add(ours.memory, floor.memory);
    }
    print("Start to window painted", "ms", time, 1.25);
    print("Memory at rest", "MB", memory, 1.3);
});

} // namespace tollwick::bench
