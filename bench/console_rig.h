// A whole console in this process, with settings and files of its own that go away with it.
#pragma once

#include "base/ini_store.h"
#include "bench/figures.h"
#include "link/login_sequence.h"
#include "ui/frame/console.h"
#include "ui/frame/menu_timer.h"

#include <QApplication>
#include <QTemporaryDir>
#include <QTimer>

namespace tollwick::bench {

// Lets windows and sockets work for so long.
inline void rest(int wanted) {
    QEventLoop loop;
    QTimer::singleShot(wanted, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

struct ConsoleRig {
    ConsoleRig(int port, int com_timeout) {
        Settings settings(store);
        settings.write(setting::ServerConnectPort, std::to_string(port));
        settings.write(setting::ComTimeout, std::to_string(com_timeout));
        require(console.Main(), "the console does not start");
        rest(100);
    }
    // As the login dialog does it.
    void logIn() {
        LoginSequence login(all, all.connection, all.log);
        require(login.run() == LoginOutcome::LoggedIn && all.link.isOpen(), "the login fails");
    }
    void logOff() {
        all.link.Close();
        console.mainForm()->menuTimer()->tick();
    }

    std::unique_ptr<SystemLog> system_log = platformSystemLog();
    QTemporaryDir folder;
    IniStore store{folder.filePath("tollwick.ini").toStdString(), {}};
    SystemClock clock;
    std::string supplied = QApplication::applicationDirPath().toStdString() + "/data";
    Console console{{store, *system_log, clock, {supplied, folder.path().toStdString()}, [] {}}};
    ConsoleContext& all = console.context();
};

} // namespace tollwick::bench
