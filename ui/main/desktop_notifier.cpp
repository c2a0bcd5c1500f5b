#include "ui/main/desktop_notifier.h"

#include "app/error_handler.h"
#include "ui/main/svg_icons.h"
#include "ui/main/to_qstring.h"

#include <QApplication>
#include <QSystemTrayIcon>
#include <QWidget>

namespace tollwick {
namespace {

constexpr int kShownMs = 10'000;

} // namespace

DesktopNotifier::DesktopNotifier(QWidget* window) : QObject(window), window_(window) {}

void DesktopNotifier::notify(const QString& text) {
    QApplication::alert(window_);
    if (!QSystemTrayIcon::isSystemTrayAvailable() || !QSystemTrayIcon::supportsMessages())
        return;
    if (!icon_) {
        icon_ = new QSystemTrayIcon(imageIcon("tollwick"), this);
        hide_later_.setSingleShot(true);
        connect(&hide_later_, &QTimer::timeout, icon_, &QSystemTrayIcon::hide);
        icon_->setToolTip(toQString(kProgramName));
        const auto comeForward = [this] {
            window_->setWindowState(window_->windowState() & ~Qt::WindowMinimized);
            window_->raise();
            window_->activateWindow();
        };
        connect(icon_, &QSystemTrayIcon::messageClicked, this, comeForward);
        connect(icon_, &QSystemTrayIcon::activated, this, comeForward);
    }
    // The icon is there for the message alone.
    icon_->show();
    icon_->showMessage(toQString(kProgramName), text, QSystemTrayIcon::Information, kShownMs);
    hide_later_.start(kShownMs);
}

} // namespace tollwick
