// The console below its windows: a link, its requests and doubles for what they show and ask.
#pragma once

#include "link/service_context.h"
#include "tests/link/support/scripted_peer.h"
#include "tests/support/recording_prompter.h"
#include "tests/support/test_log.h"
#include "tests/support/wait_until.h"

namespace tollwick {

using Strings = std::vector<std::string>;

// No wait for a reply keeps within this time-out.
inline constexpr Single kNoTime = -1;

// Counts how often input was locked, and whether it is.
struct CountingLock : InputLock {
    void lockInput() override {
        ++times, ++depth;
        if (meanwhile)
            meanwhile();
    }
    void unlockInput() override { EXPECT_GE(--depth, 0); }
    int times = 0;
    int depth = 0;
    std::function<void()> meanwhile;
};

// Keeps what long work has shown.
struct RecordingProgress : Progress {
    void setInfo(std::string_view text) override { infos.emplace_back(text); }
    void setBusy(bool is_busy) override {
        busy += is_busy ? 1 : -1;
        times_busy = std::max(times_busy, busy);
    }
    int busy = 0;
    int times_busy = 0;
    void setCount(std::optional<WorkCount> count) override { counts.push_back(count); }
    Strings infos;
    std::vector<std::optional<WorkCount>> counts;
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

    FixedClock clock; // waits for replies end only when a test sets it
    CountingLock lock;
    RecordingPrompter prompter;
    RecordingProgress progress;
    StringTable texts;
    ServiceData data;
    ServiceLink link{clock};
    Requests requests{link, data, texts, prompter, progress};
    ServiceContext context{texts, prompter, progress, link, data, requests};
};

} // namespace tollwick
