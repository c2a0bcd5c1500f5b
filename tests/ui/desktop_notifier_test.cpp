// A notification over a session bus of the test's own, on which the test is the desktop.
#include "tests/ui/support/console_test.h"
#include "ui/monitor/desktop_notifier.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QProcess>

namespace tollwick {
namespace {

constexpr char kName[] = "org.freedesktop.Notifications";

class Desktop : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")
public:
    std::vector<std::string> shown;

public slots:
    Q_SCRIPTABLE uint Notify(const QString& /*program*/, uint replaced, const QString& /*icon*/,
                             const QString& title, const QString& text,
                             const QStringList& /*actions*/, const QVariantMap& /*hints*/,
                             int /*ms*/) {
        shown.push_back(QStringLiteral("%1|%2|%3").arg(replaced).arg(title, text).toStdString());
        return 7;
    }

signals:
    Q_SCRIPTABLE void ActionInvoked(uint notification, const QString& action);
};

TEST(DesktopNotifierTest, TheDesktopShowsTheTextAndAClickBringsTheWindowForward) {
    QProcess daemon;
    daemon.start("dbus-daemon", {"--session", "--nofork", "--print-address"});
    ASSERT_TRUE(daemon.waitForReadyRead()) << daemon.errorString().toStdString();
    const QByteArray address = daemon.readLine().trimmed();
    qputenv("DBUS_SESSION_BUS_ADDRESS", address);
    auto bus = QDBusConnection::connectToBus(QString(address), "desktop");
    Desktop desktop;
    ASSERT_TRUE(bus.registerService(kName));
    ASSERT_TRUE(bus.registerObject("/org/freedesktop/Notifications", &desktop,
                                   QDBusConnection::ExportScriptableContents));

    QWidget window;
    window.showMinimized();
    DesktopNotifier* notifier = DesktopNotifier::create(&window);
    notifier->notify("The <first>");
    ASSERT_TRUE(waitUntil([&] { return desktop.shown.size() == 1; }));
    // It becomes known by its number, which the next one then takes the place of.
    ASSERT_TRUE(waitUntil([&] {
        notifier->notify("Next");
        return desktop.shown.back().starts_with("7|");
    }));
    EXPECT_EQ(desktop.shown.front(), "0|Corvale Tollwick admin V1.3|The &lt;first&gt;");
    emit desktop.ActionInvoked(8, "default");
    emit desktop.ActionInvoked(7, "default");
    EXPECT_TRUE(waitUntil([&] { return !window.isMinimized(); }));

    // Without a bus nothing is shown, and nothing is waited for.
    daemon.kill();
    ASSERT_TRUE(daemon.waitForFinished());
    notifier->notify("Nobody sees this");
}

} // namespace
} // namespace tollwick

#include "desktop_notifier_test.moc"
