// Notifications as the desktops of Linux show them: a request on the session bus, with or without a
// system tray.
#include "base/error_handler.h"
#include "ui/common/to_qstring.h"
#include "ui/monitor/desktop_notifier.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QVariantMap>

namespace tollwick {
namespace {

constexpr char kService[] = "org.freedesktop.Notifications";
constexpr char kPath[] = "/org/freedesktop/Notifications";
constexpr char kBusName[] = "tollwick-notifications";
constexpr char kDesktopEntry[] = "tollwickadmin";
constexpr char kClick[] = "default";

} // namespace

class FreedesktopNotifier : public DesktopNotifier {
    Q_OBJECT
public:
    explicit FreedesktopNotifier(QWidget* window) : DesktopNotifier(window) {}
    ~FreedesktopNotifier() override { QDBusConnection::disconnectFromBus(kBusName); }

protected:
    void show(const QString& text) override {
        const QDBusConnection bus = connectedBus();
        const QString name = toQString(kProgramName);
        auto call = QDBusMessage::createMethodCall(kService, kPath, kService, "Notify");
        call << name << last_ << kDesktopEntry << name << text.toHtmlEscaped()
             << QStringList{kClick, name} << QVariantMap{{"desktop-entry", kDesktopEntry}}
             << kShownMs;
        auto* pending = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
        connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending] {
            const QDBusPendingReply<uint> reply = *pending;
            last_ = reply.isValid() ? reply.value() : 0;
            pending->deleteLater();
        });
    }

private slots:
    void onAction(uint notification, const QString& action) {
        if (notification == last_ && action == kClick)
            comeForward();
    }

private:
    // Connects at the first notification, so that the start need not wait for the bus.
    QDBusConnection connectedBus() {
        if (QDBusConnection(kBusName).isConnected())
            return QDBusConnection(kBusName);
        QDBusConnection::disconnectFromBus(kBusName); // of one that is gone
        last_ = 0;
        auto bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, kBusName);
        bus.connect(kService, kPath, kService, "ActionInvoked", this,
                    SLOT(onAction(uint, QString)));
        return bus;
    }

    uint last_ = 0; // a new notification takes the place of this one
};

DesktopNotifier* DesktopNotifier::create(QWidget* window) {
    return new FreedesktopNotifier(window);
}

} // namespace tollwick

#include "freedesktop_notifier.moc"
