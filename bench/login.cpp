// A login that fetches a large site, against the same lines over a bare socket.
#include "bench/console_rig.h"
#include "bench/fast_peer.h"

namespace tollwick::bench {

static const Measurement login("login", [] {
    FastPeer peer;
    peer.answer(loginLines(100, 2'000, 20'000));
    ConsoleRig rig(peer.port(), 30);
    rig.logIn();
    const Lines requests = peer.requests();
    require(rig.all.data.hosts.size() == 2'000 && rig.all.data.outbox.size() == 20'000,
            "not everything is fetched");
    const auto ours = [&] {
        rig.logOff();
        return timeOf([&] { rig.logIn(); });
    };
    const auto floor = [&] {
        rig.logOff();
        return timeOf([&] { exchange(peer, requests); });
    };
    print("Login, everything fetched", "ms", inTurn(9, ours, floor), 1.3);
});

} // namespace tollwick::bench
