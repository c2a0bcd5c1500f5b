// A guided tour of the console without a display: starts the stand-in service with its sample site,
// logs in, visits every node, runs a transport, and saves a picture of each step, in both
// languages.
//
// Usage: tollwick-tour FOLDER [dark]
#include "base/files.h"
#include "base/ini_store.h"
#include "rules/node_keys.h"
#include "simulator/sample_site.h"
#include "simulator/server_thread.h"
#include "ui/frame/config_tree.h"
#include "ui/frame/console.h"
#include "ui/frame/main_actions.h"
#include "ui/lists/list_view.h"

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
            // Where the painter counts: in pixels of a screen that is not scaled.
            QRectF place(QPointF(), over.deviceIndependentSize());
            place.moveCenter(QRectF(QPointF(), picture.deviceIndependentSize()).center());
            painter.drawPixmap(place.topLeft(), over);
            painter.setPen(QPen(QColor("#30404f"), 2));
            painter.drawRect(place);
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

// One tour through a console of its own, in one language.
class Tour {
public:
    Tour(const QString& folder, Integer lang_base)
        : camera_(folder, lang_base == kSwedish ? "se" : "us"),
          own_(folder + (lang_base == kSwedish ? "/se" : "/us")),
          store_(toPath((own_ + "/tollwick.ini").toStdString()), {}),
          console_({store_, system_log_, clock_, {suppliedFiles(), own_.toStdString()}, [] {}}) {
        QDir(own_).removeRecursively();
        Settings settings(store_);
        settings.write(setting::CountryCode, std::to_string(lang_base));
        settings.write(setting::ServerConnectPort, std::to_string(service_.port()));
        settings.write(setting::WindowXsize, "11400");
        settings.write(setting::WindowYsize, "7200");
        if (!console_.Main())
            std::exit(EXIT_FAILURE);
        window_ = console_.mainForm();
        actions_ = window_->actions();
    }

    void run() {
        take("started");
        logIn();
        for (const TreeNode& node : treeNodes()) {
            go(toQString(node.key));
            take("node-" + toQString(node.key));
        }
        editSettings();
        openHosts();
        runTransport();
        workWithLists();
        readAboutAndHelp();
        loseConnection();
    }

private:
    static std::string suppliedFiles() {
        return QDir(QCoreApplication::applicationDirPath()).absoluteFilePath("data").toStdString();
    }

    void take(const QString& name) { camera_.take(window_, name); }

    void go(const QString& node, int row = -1) {
        window_->tree()->setCurrentItem(findNode(window_->tree(), node));
        if (row >= 0)
            window_->list()->setCurrentIndex(window_->list()->model()->index(row, 0));
        rest(150);
    }

    void logIn() {
        during([&] { actions_->LoginMenu->trigger(); },
               [&](QWidget* login) {
                   take("login");
                   login->findChild<QPushButton*>("btnOptions")->click();
                   take("login-options");
                   login->findChild<QLineEdit*>("tbServerConnectPassword")
                       ->setText(simulator::kSamplePassword);
                   login->findChild<QPushButton*>("btnOk")->click();
               });
        waitFor("the tree", [&] { return window_->tree()->topLevelItemCount() > 0; });
    }

    void editSettings() {
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
            go(dialog.node, dialog.row);
            during([&] { actions_->PropertiesMenu->trigger(); },
                   [&](QWidget* form) {
                       take(QStringLiteral("dialog-") + dialog.picture);
                       form->close();
                   });
        }
    }

    // The first host with all its pages and pickers, of the others the page that differs.
    void openHosts() {
        const char* const pages[] = {"general", "transport", "login", "script", "connection"};
        go("uucphosts");
        for (int row = 0; row < window_->list()->model()->rowCount(); ++row) {
            go("uucphosts", row);
            during([&] { actions_->PropertiesMenu->trigger(); },
                   [&](QWidget* form) {
                       auto* tabs = form->findChild<QTabWidget*>("SysSetupTab");
                       for (int page = row == 0 ? 0 : 4; page < 5; ++page) {
                           tabs->setCurrentIndex(page);
                           take(QStringLiteral("host-%1-%2").arg(row).arg(pages[page]));
                       }
                       if (row == 0) {
                           openPicker(form, "Modems", "modems");
                           openPicker(form, "BläddraButton", "scripts");
                       }
                       form->close();
                   });
        }
    }

    void openPicker(QWidget* form, const char* button, const char* picture) {
        during([&] { form->findChild<QPushButton*>(QString::fromUtf8(button))->click(); },
               [&](QWidget* picker) {
                   if (auto* makes = picker->findChild<QListWidget*>("List1"))
                       makes->setCurrentRow(3);
                   take(picture);
                   picker->close();
               });
    }

    void runTransport() {
        go("uucpmonitor");
        actions_->UucpTransportNowMenu->trigger();
        waitFor("the transport", [&] { return console_.context().data.uucp_status.percent > 30; });
        take("transport");
        actions_->CancelUucpTransportMenu->trigger();
        rest(1500);
        take("cancelled");
    }

    void workWithLists() {
        go("outbox");
        actions_->Refreshmenu->trigger();
        go("outbox", 1);
        during([&] { actions_->DeleteMenu->trigger(); },
               [&](QWidget* box) {
                   take("delete-question");
                   qobject_cast<QMessageBox*>(box)->button(QMessageBox::Yes)->click();
               });
        take("deleted");
        window_->list()->selectAll();
        during([&] { actions_->DeleteMenu->trigger(); },
               [&](QWidget* box) {
                   take("delete-many-question");
                   qobject_cast<QMessageBox*>(box)->button(QMessageBox::No)->click();
               });
        window_->list()->sortByColumn(2, Qt::DescendingOrder);
        window_->findChild<QAction*>("FilterRows")->trigger();
        window_->findChild<QLineEdit*>("ListFilter")->setText("sthlm");
        window_->list()->selectAll();
        take("filter");
        emit window_->list()->contextMenuWanted(window_->mapToGlobal(QPoint(400, 150)));
        take("context-menu");
        window_->findChild<QMenu*>("ContextMenu")->close();
    }

    void readAboutAndHelp() {
        during([&] { actions_->AboutMenu->trigger(); },
               [&](QWidget* about) {
                   take("about");
                   about->close();
               });
        actions_->ContentsMenu->trigger();
        take("help");
        console_.context().help.showPageOf(window_);
        take("help-outbox");
    }

    void loseConnection() {
        service_.run([](simulator::Server& server) { server.closeConnections(); });
        waitFor("the closed connection", [&] { return window_->tree()->topLevelItemCount() == 0; });
        for (QWidget* top : QApplication::topLevelWidgets())
            if (top != window_)
                top->close();
        take("connection-closed");
    }

    Camera camera_;
    QString own_; // the folder of its settings and logs
    simulator::ServerThread service_{simulator::sampleSite()};
    IniStore store_;
    NoSystemLog system_log_;
    SystemClock clock_;
    Console console_;
    Twmainform* window_ = nullptr;
    MainActions* actions_ = nullptr;
};

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
        Tour(folder, lang_base).run();
    return EXIT_SUCCESS;
}
