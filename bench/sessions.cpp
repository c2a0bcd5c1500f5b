// What takes a session. A login that fetches a large site, against the same lines over a bare
// socket; and from Properties on a host to its dialog, against the same exchanges and the same form
// without contents.
#include "bench/console_rig.h"
#include "bench/fast_peer.h"
#include "bench/first_paint.h"
#include "ui/frame/config_tree.h"
#include "ui/frame/main_actions.h"
#include "ui/lists/list_view.h"
#include "ui_host_setup_form.h"

namespace tollwick::bench {

static const Measurement login("login", [] {
    FastPeer peer;
    peer.answer(loginLines(100, 2'000, 20'000));
    ConsoleRig rig(peer.port(), 30);
    rig.logIn();
    const Lines requests = peer.requests();
    require(rig.all.data.outbox.size() == 20'000, "not everything is fetched");
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

// Milliseconds until the dialog that `open` runs is to be seen; it is closed then.
static double untilShown(const std::function<void()>& open) {
    double time = 0;
    const auto start = Clock::now();
    const FirstPaint<QDialog> watch([&](QDialog* dialog) {
        time = milliseconds(start);
        dialog->reject();
    });
    open();
    require(time > 0, "the dialog does not come up");
    return time;
}

// Comes up past what the console watches its dialogs with.
struct EmptyDialog : QDialog {
    using QDialog::QDialog;
    bool eventFilter(QObject* watched, QEvent* event) override {
        return watched == this && event->type() == QEvent::Show && watched->event(event);
    }
};

static const Measurement host_dialog("host-dialog", [] {
    Lines replies{lineOf(simulator::sampleSite().scripts.front())};
    for (int list = 0; list < 3; ++list)
        for (const std::string& name : listLines(5, sampleName))
            replies.push_back(name);
    FastPeer peer;
    peer.answer(loginLines(1, 50, 1));
    ConsoleRig rig(peer.port(), 30);
    rig.logIn();
    Twmainform& window = *rig.console.mainForm();
    window.tree()->build("127.0.0.1", rig.all.texts);
    const QString hosts = rig.all.caption(Text::NodeUucpHosts);
    window.tree()->setCurrentItem(window.tree()->findItems(hosts, Qt::MatchRecursive).value(0));
    window.list()->setCurrentIndex(window.list()->model()->index(0, 0));
    rest(300);
    const auto ours = [&] {
        peer.answer(replies);
        rest(20);
        return untilShown([&] { window.actions()->PropertiesMenu->trigger(); });
    };
    ours();
    const Lines requests = peer.requests();
    require(requests.size() == replies.size(), "the host dialog asks for something else");

    FastPeer bare_peer;
    bare_peer.answer(replies);
    const auto floor = [&] {
        rest(20);
        return exchange(bare_peer, requests) + untilShown([&] {
                   EmptyDialog dialog(&window);
                   qApp->installEventFilter(&dialog);
                   Ui::HostSetupForm().setupUi(&dialog);
                   dialog.setWindowModality(Qt::WindowModal);
                   dialog.exec();
               });
    };
    print("Host dialog shown", "ms", inTurn(21, ours, floor), 1.3);
});

} // namespace tollwick::bench
