// A guided tour of the console without a display: starts the stand-in service with its sample site,
// logs in, visits every node, runs a transport, and saves a picture of each step, in both
// languages.
//
// Usage: tollwick-tour FOLDER [dark]
#include "app/files.h"
#include "app/ini_store.h"
#include "simulator/sample_site.h"
#include "simulator/server_thread.h"
#include "ui/main/config_tree.h"
#include "ui/main/console.h"
#include "ui/main/list_view.h"
#include "ui/main/main_actions.h"
#include "ui/main/node_keys.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QTabWidget>
#include <QTimer>
#include <QTreeWidgetItemIterator>

#include <cstdio>
#include <functional>

using namespace tollwick;

namespace {

constexpr int kPatienceMs = 20'000;

// Lets the console work until the condition holds; ends the tour when it never does.
void waitFor(const char* what, const std::function<bool()>& condition) {
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.hasExpired(kPatienceMs)) {
            std::fprintf(stderr, "The tour waited in vain for: %s\n", what);
            std::exit(EXIT_FAILURE);
        }
        QApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
    }
}

void rest(int milliseconds) {
    QElapsedTimer timer;
    timer.start();
    while (!timer.hasExpired(milliseconds))
        QApplication::processEvents(QEventLoop::AllEvents, 20);
}

// Does something while a modal window is up, which `open` brings up and waits for.
void during(const std::function<void()>& open, const std::function<void(QWidget*)>& act) {
    const QWidget* before = QApplication::activeModalWidget();
    QTimer watch; // returns while the dialog still waits for the service
    watch.callOnTimeout([&] {
        QWidget* dialog = QApplication::activeModalWidget();
        if (dialog == before)
            return;
        watch.stop();
        act(dialog);
    });
    watch.start(300);
    open();
    waitFor("a dialog", [&] { return !watch.isActive(); });
}

class Camera {
public:
    Camera(QString folder, QString language)
        : folder_(std::move(folder)), language_(std::move(language)) {}

    // A picture of the main window with the windows that lie over it.
    void take(QWidget* main_window, const QString& name) {
        rest(50);
        QPixmap picture = main_window->grab();
        QPainter painter(&picture);
        QWidgetList windows = QApplication::topLevelWidgets();
        // The one that takes input lies on top.
        windows.removeAll(QApplication::activeModalWidget());
        windows.append(QApplication::activeModalWidget());
        for (QWidget* window : windows) {
            if (!window || window == main_window || !window->isVisible())
                continue;
            const QPixmap over = window->grab();
            const QPoint place((picture.width() - over.width()) / 2,
                               (picture.height() - over.height()) / 2);
            painter.drawPixmap(place, over);
            painter.setPen(QPen(QColor("#30404f"), 2));
            painter.drawRect(QRect(place, over.size()));
        }
        painter.end();
        const QString file = QStringLiteral("%1/%2-%3-%4.png")
                                 .arg(folder_, language_)
                                 .arg(++count_, 2, 10, QLatin1Char('0'))
                                 .arg(name);
        if (!picture.save(file)) {
            std::fprintf(stderr, "Cannot write %s\n", qPrintable(file));
            std::exit(EXIT_FAILURE);
        }
        std::printf("%s\n", qPrintable(file));
    }

private:
    QString folder_;
    QString language_;
    int count_ = 0;
};

QTreeWidgetItem* findNode(ConfigTree* tree, const QString& key) {
    for (QTreeWidgetItemIterator item(tree); *item; ++item)
        if ((*item)->data(0, kKeyRole).toString() == key)
            return *item;
    return nullptr;
}

class NoSystemLog : public SystemLog {
public:
    bool error(std::string_view) override { return true; }
};

// The colours of a dark desktop.
QPalette darkPalette() {
    const QColor window(0x2b, 0x2d, 0x30);
    const QColor base(0x1e, 0x1e, 0x1e);
    const QColor text(0xe4, 0xe6, 0xe8);
    const QColor faint(0x80, 0x84, 0x88);
    QPalette palette(text, QColor(0x3a, 0x3d, 0x41), window.lighter(), window.darker(), faint, text,
                     Qt::white, base, window);
    palette.setColor(QPalette::Highlight, QColor(0x2f, 0x6f, 0xb0));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(0x6c, 0xb2, 0xf4));
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faint);
    return palette;
}

void tour(const QString& folder, Integer lang_base) {
    const bool swedish = lang_base == kSwedish;
    simulator::ServerThread service(simulator::sampleSite());
    Camera camera(folder, swedish ? "se" : "us");

    const QString own = folder + (swedish ? "/se" : "/us");
    QDir(own).removeRecursively();
    IniStore store(toPath((own + "/tollwick.ini").toStdString()), {});
    Settings settings(store);
    settings.write(setting::CountryCode, std::to_string(lang_base));
    settings.write(setting::ServerConnectPort, std::to_string(service.port()));
    settings.write(setting::WindowXsize, "11400");
    settings.write(setting::WindowYsize, "7200");
    NoSystemLog system_log;
    const SystemClock clock;
    const std::string supplied =
        QDir(QCoreApplication::applicationDirPath()).absoluteFilePath("data").toStdString();
    Console console({store, system_log, clock, {supplied, own.toStdString()}, [] {}});
    if (!console.Main())
        std::exit(EXIT_FAILURE);
    Twmainform* window = console.mainForm();
    camera.take(window, "started");

    during([&] { window->actions()->LoginMenu->trigger(); },
           [&](QWidget* login) {
               camera.take(window, "login");
               login->findChild<QPushButton*>("btnOptions")->click();
               camera.take(window, "login-options");
               login->findChild<QLineEdit*>("tbServerConnectPassword")
                   ->setText(simulator::kSamplePassword);
               login->findChild<QPushButton*>("btnOk")->click();
           });
    waitFor("the tree", [&] { return window->tree()->topLevelItemCount() > 0; });

    for (const TreeNode& node : treeNodes()) {
        const QString key = toQString(node.key);
        window->tree()->setCurrentItem(findNode(window->tree(), key));
        rest(150);
        camera.take(window, "node-" + key);
    }

    struct Dialog {
        const char* node;
        int row;
        const char* picture;
    };
    for (const Dialog& dialog :
         {Dialog{"loginaccount", 0, "change-login"}, Dialog{"schedule", 0, "schedule-timed"},
          Dialog{"schedule", 2, "schedule-interval"}, Dialog{"admin", 0, "ip-number"},
          Dialog{"admin", 1, "port"}, Dialog{"options", 0, "document-viewer"},
          Dialog{"uucpdaemon", 0, "command"}, Dialog{"uucpdaemon", 2, "debugging-level"},
          Dialog{"logs", 0, "log-period"}}) {
        window->tree()->setCurrentItem(findNode(window->tree(), dialog.node));
        window->list()->setCurrentIndex(window->list()->model()->index(dialog.row, 0));
        rest(150);
        during([&] { window->actions()->PropertiesMenu->trigger(); },
               [&](QWidget* form) {
                   camera.take(window, QStringLiteral("dialog-") + dialog.picture);
                   form->close();
               });
    }

    const char* const pages[] = {"general", "transport", "login", "script", "connection"};
    window->tree()->setCurrentItem(findNode(window->tree(), "uucphosts"));
    for (int row = 0; row < window->list()->model()->rowCount(); ++row) {
        window->list()->setCurrentIndex(window->list()->model()->index(row, 0));
        rest(150);
        during([&] { window->actions()->PropertiesMenu->trigger(); },
               [&](QWidget* form) {
                   auto* tabs = form->findChild<QTabWidget*>("SysSetupTab");
                   for (int page = row == 0 ? 0 : 4; page < 5; ++page) {
                       tabs->setCurrentIndex(page);
                       camera.take(window, QStringLiteral("host-%1-%2").arg(row).arg(pages[page]));
                   }
                   if (row == 0) {
                       const auto press = [&](const char* button) {
                           auto* found = form->findChild<QPushButton*>(QString::fromUtf8(button));
                           during([&] { found->click(); },
                                  [&](QWidget* picker) {
                                      if (auto* makes = picker->findChild<QListWidget*>("List1"))
                                          makes->setCurrentRow(3);
                                      camera.take(window, button[0] == 'M' ? "modems" : "scripts");
                                      picker->close();
                                  });
                       };
                       press("Modems");
                       press("BläddraButton");
                   }
                   form->close();
               });
    }

    window->tree()->setCurrentItem(findNode(window->tree(), "uucpmonitor"));
    window->actions()->UucpTransportNowMenu->trigger();
    const auto isMoving = [&] { return console.context().data.uucp_status.percent > 30; };
    waitFor("the transport", isMoving);
    camera.take(window, "transport");
    window->actions()->CancelUucpTransportMenu->trigger();
    rest(1500);
    camera.take(window, "cancelled");

    window->tree()->setCurrentItem(findNode(window->tree(), "outbox"));
    window->actions()->Refreshmenu->trigger();
    window->list()->setCurrentIndex(window->list()->model()->index(1, 0));
    rest(150);
    during([&] { window->actions()->DeleteMenu->trigger(); },
           [&](QWidget* box) {
               camera.take(window, "delete-question");
               qobject_cast<QMessageBox*>(box)->button(QMessageBox::Yes)->click();
           });
    camera.take(window, "deleted");
    window->list()->sortByColumn(2, Qt::DescendingOrder);
    window->findChild<QAction*>("FilterRows")->trigger();
    window->findChild<QLineEdit*>("ListFilter")->setText("sthlm");
    window->list()->selectAll();
    camera.take(window, "filter");
    emit window->list()->contextMenuWanted(window->mapToGlobal(QPoint(400, 150)));
    camera.take(window, "context-menu");
    window->findChild<QMenu*>("ContextMenu")->close();

    during([&] { window->actions()->AboutMenu->trigger(); },
           [&](QWidget* about) {
               camera.take(window, "about");
               about->close();
           });
    window->actions()->ContentsMenu->trigger();
    camera.take(window, "help");
    console.context().help.showPageOf(window);
    camera.take(window, "help-outbox");

    service.run([](simulator::Server& server) { server.closeConnections(); });
    waitFor("the closed connection", [&] { return window->tree()->topLevelItemCount() == 0; });
    for (QWidget* top : QApplication::topLevelWidgets())
        if (top != window)
            top->close();
    camera.take(window, "connection-closed");
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const bool dark = arguments.size() == 3 && arguments[2] == "dark";
    if (arguments.size() != (dark ? 3 : 2)) {
        std::fputs("Usage: tollwick-tour FOLDER [dark]\n", stderr);
        return 2;
    }
    if (dark)
        QApplication::setPalette(darkPalette());
    const QString folder = QDir(arguments[1]).absolutePath();
    QDir().mkpath(folder);
    std::puts("A guided tour, as pictures:");
    for (const Integer lang_base : {kEnglish, kSwedish})
        tour(folder, lang_base);
    return EXIT_SUCCESS;
}
