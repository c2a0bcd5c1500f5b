// The console below its windows: a link, its requests and doubles for what they show and ask.
#pragma once

#include "link/requests.h"
#include "tests/link/support/counting_lock.h"
#include "tests/link/support/recording_progress.h"
#include "tests/link/support/running_clock.h"
#include "tests/link/support/scripted_peer.h"
#include "tests/support/recording_prompter.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QThread>

namespace tollwick {

inline constexpr std::string_view kLoopback = "127.0.0.1";
// Every failed request tells this on its second line.
inline constexpr std::string_view kTerminated = "\r\nThe connection is terminated!";

// False when the condition does not come true for so long that it never will.
template <class Condition>
bool waitUntil(Condition condition) {
    const QDeadlineTimer deadline(20'000);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents();
        QThread::msleep(1);
    }
    return true;
}

class Console {
public:
    explicit Console(Integer language = kEnglish) : texts(language) { link.setInputLock(lock); }
    // Connected, and with the key unless the peer sends something else first.
    explicit Console(const ScriptedPeer& peer, Integer language = kEnglish) : Console(language) {
        connectTo(peer);
    }

    void connectTo(const ScriptedPeer& peer) {
        link.Connect(std::string(kLoopback), peer.port());
        EXPECT_TRUE(waitUntil([this] { return link.KeyReceived() != 0; }));
    }
    void expectFailure(std::string_view first_line) {
        prompter.expectBeep();
        prompter.expectBox(BoxIcon::Critical, std::string(first_line).append(kTerminated));
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

// Short enough for a test to wait for it.
inline constexpr Single kShortTimeout = 0.05f;

} // namespace tollwick
