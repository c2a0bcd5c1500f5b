// The longest time that windows do not repaint while a request runs, against an idle window.
#include "bench/console_rig.h"
#include "bench/fast_peer.h"

#include <QMessageBox>

namespace tollwick::bench {

static constexpr int kTickMs = 10;
static constexpr int kAroundMs = 50; // that are watched before and after a request
static constexpr int kIdleMs = 400;  // that an idle window is watched

struct TickingWidget : QWidget {
    TickingWidget() {
        startTimer(kTickMs, Qt::PreciseTimer);
        show();
    }
    void timerEvent(QTimerEvent*) override { repaint(); }
    void paintEvent(QPaintEvent*) override {
        longest = std::max(longest, milliseconds(last));
        last = Clock::now();
    }
    // The longest gap while this is done, in milliseconds.
    double longestGap(const std::function<void()>& work) {
        rest(kAroundMs);
        longest = 0;
        work();
        rest(kAroundMs);
        return longest;
    }

    Clock::time_point last = Clock::now();
    double longest = 0;
};

struct Request {
    const char* name;
    Lines replies;
    std::function<void(Requests&)> make;
};

static std::vector<Request> allRequests() {
    using R = Requests;
    const Site site = simulator::sampleSite();
    const Lines done{line(result::Done)};
    const Lines names = listLines(1'000, sampleName);
    const auto plain = [](auto member) { return [member](R& r) { (r.*member)(); }; };
    const auto named = [](auto member) {
        return [member, taken = std::vector<std::string>()](R& r) mutable { (r.*member)(taken); };
    };
    static bool flag = false;
    // clang-format off
    return {
        {"txAuthenticate", {line(result::Done, -1)}, plain(&R::txAuthenticate)},
        {"txNewLogin", done, plain(&R::txNewLogin)},
        {"txGetSettings", {lineOf(site.settings)}, plain(&R::txGetSettings)},
        {"txSaveSettings", done, plain(&R::txSaveSettings)},
        {"txGetAllSchedules", numberedLines(100, site.schedules[0]), plain(&R::txGetAllSchedules)},
        {"txSaveSchedule", {lineOf(site.schedules[0])}, [](R& r) { r.txSaveSchedule(false); }},
        {"txDeleteSchedule", done, [](R& r) { r.txDeleteSchedule(1); }},
        {"txGetAllHosts", numberedLines(2'000, site.hosts[0]), plain(&R::txGetAllHosts)},
        {"txSaveHost", {lineOf(site.hosts[0])}, [](R& r) { r.txSaveHost(false); }},
        {"txDeleteHost", done, [](R& r) { r.txDeleteHost(1); }},
        {"txDeleteHostDirectory", done, [](R& r) { r.txDeleteHostDirectory("malmo"); }},
        {"txGetAllOutbox", listLines(20'000, sampleMail), plain(&R::txGetAllOutbox)},
        {"txDeleteOutboxMail", done, [](R& r) { r.txDeleteOutboxMail(sampleMail(1), flag); }},
        {"txGetUucpStatus", {lineOf(UucpStatusRecord())}, [](R& r) {
             r.txGetUucpStatus([](int) {});
             while (r.isBusy())
                 rest(kTickMs);
         }},
        {"txSendUucpCommand", done, plain(&R::txSendUucpCommand)},
        {"txGetAllTapiLocations", names, named(&R::txGetAllTapiLocations)},
        {"txGetAllTapiDevices", names, named(&R::txGetAllTapiDevices)},
        {"txGetAllRasEntries", names, named(&R::txGetAllRasEntries)},
        {"txGetScript", {lineOf(site.scripts[0])}, [](R& r) { r.txGetScript("malmo.scp", flag); }},
        {"txSaveScript", done, [](R& r) { r.txSaveScript("malmo.scp", "text"); }},
        {"txGetAllScriptFile", names, named(&R::txGetAllScriptFile)},
    };
    // clang-format on
}

static const Measurement repaints("repaints", [] {
    FastPeer peer;
    ConsoleRig rig(peer.port(), 2);
    TickingWidget widget;
    QTimer box_closer;
    box_closer.callOnTimeout([] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
            box->accept();
    });
    box_closer.start(kTickMs);
    const auto idle = [&] {
        rig.console.mainForm()->menuTimer()->stop();
        const double gap = widget.longestGap([] { rest(kIdleMs); });
        rig.console.mainForm()->menuTimer()->start();
        return gap;
    };

    for (const bool stalled : {false, true}) {
        std::string name; // of the request that does worst and stands for all
        Pairs worst;
        for (const Request& request : allRequests()) {
            Pairs pairs;
            for (int i = 0; i < (stalled ? 3 : 5); ++i) {
                rig.logOff();
                peer.answer(loginLines(0, 0, 0));
                rig.logIn();
                peer.answer(stalled ? Lines() : request.replies);
                const double gap = widget.longestGap([&] { request.make(rig.all.requests); });
                require(stalled || rig.all.link.isOpen(), request.name);
                pairs.add(gap, idle());
            }
            if (name.empty() || pairs.ratio() > worst.ratio()) {
                name = request.name;
                worst = pairs;
            }
        }
        print((stalled ? "Repaint gap, stalled, " : "Repaint gap, answered, ") + name, "ms", worst,
              3, 50);
    }
});

} // namespace tollwick::bench
