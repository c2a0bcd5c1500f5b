// The console below its windows: a link, its requests and doubles for what they show and ask.
#pragma once

#include "link/requests.h"
#include "tests/link/support/scripted_peer.h"
#include "tests/support/recording_prompter.h"
#include "tests/support/wait_until.h"

#include <chrono>

namespace tollwick {

using Strings = std::vector<std::string>;

// Short enough for a test to wait for it.
inline constexpr Single kShortTimeout = 0.05F;

// Counts how often input was locked, and whether it is.
struct CountingLock : InputLock {
    void lockInput() override { ++times, ++depth; }
    void unlockInput() override { EXPECT_GE(--depth, 0); }
    int times = 0;
    int depth = 0;
};

// Keeps what long work has shown.
struct RecordingProgress : Progress {
    void setInfo(std::string_view text) override { infos.emplace_back(text); }
    void setBusy(bool) override {}
    void setFetched(std::optional<std::size_t> entries) override { fetched.push_back(entries); }
    Strings infos;
    std::vector<std::optional<std::size_t>> fetched;
};

// Runs from the time of day that the test sets.
struct RunningClock : Clock {
    void set(int hour, int minute, int second) {
        midnight = std::chrono::steady_clock::now() - std::chrono::hours(hour) -
                   std::chrono::minutes(minute) - std::chrono::seconds(second);
    }
    [[nodiscard]] LocalTime now() const override {
        const auto time = std::chrono::steady_clock::now() - midnight;
        const auto hundredths = static_cast<int>(time / std::chrono::milliseconds(10));
        const int minutes = hundredths / 6'000;
        return {1999, 3, 7, minutes / 60, minutes % 60, hundredths / 100 % 60, hundredths % 100};
    }
    std::chrono::steady_clock::time_point midnight =
        std::chrono::steady_clock::now() - std::chrono::hours(12);
};

struct Console {
    explicit Console(Integer language = kEnglish) : texts(language) { link.setInputLock(lock); }
    explicit Console(const ScriptedPeer& peer, Integer language = kEnglish) : Console(language) {
        connectTo(peer);
    }

    // Connects and waits for the key.
    void connectTo(const ScriptedPeer& peer) {
        link.Connect("127.0.0.1", peer.port());
        EXPECT_TRUE(waitUntil([this] { return link.KeyReceived() != 0; }));
    }
    void expectFailure(std::string_view first_line) {
        prompter.expectBeep();
        prompter.expectBox(BoxIcon::Critical,
                           std::string(first_line) + "\r\nThe connection is terminated!");
    }

    RunningClock clock;
    CountingLock lock;
    RecordingPrompter prompter;
    RecordingProgress progress;
    StringTable texts;
    ServiceData data;
    ServiceLink link{clock};
    Requests requests{link, data, texts, prompter, progress};
};

} // namespace tollwick
