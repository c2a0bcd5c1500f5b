// Notifications as an icon in the system tray shows them.
#include "base/error_handler.h"
#include "ui/common/icons.h"
#include "ui/common/to_qstring.h"
#include "ui/monitor/desktop_notifier.h"

#include <QSystemTrayIcon>
#include <QTimer>

namespace tollwick {
namespace {

class TrayNotifier : public DesktopNotifier {
public:
    explicit TrayNotifier(QWidget* window) : DesktopNotifier(window) {}

protected:
    void show(const QString& text) override {
        if (!QSystemTrayIcon::isSystemTrayAvailable() || !QSystemTrayIcon::supportsMessages())
            return;
        if (!icon_)
            createIcon();
        // The icon is there for the message alone.
        icon_->show();
        icon_->showMessage(toQString(kProgramName), text, QSystemTrayIcon::Information, kShownMs);
        hide_later_.start(kShownMs);
    }

private:
    void createIcon() {
        icon_ = new QSystemTrayIcon(imageIcon("tollwick"), this);
        icon_->setToolTip(toQString(kProgramName));
        connect(icon_, &QSystemTrayIcon::messageClicked, this, [this] { comeForward(); });
        connect(icon_, &QSystemTrayIcon::activated, this, [this] { comeForward(); });
        hide_later_.setSingleShot(true);
        connect(&hide_later_, &QTimer::timeout, icon_, &QSystemTrayIcon::hide);
    }

    QSystemTrayIcon* icon_ = nullptr;
    QTimer hide_later_;
};

} // namespace

DesktopNotifier* DesktopNotifier::create(QWidget* window) {
    return new TrayNotifier(window);
}

} // namespace tollwick
