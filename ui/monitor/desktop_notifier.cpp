#include "ui/monitor/desktop_notifier.h"

#include <QApplication>
#include <QWidget>

namespace tollwick {

DesktopNotifier::DesktopNotifier(QWidget* window) : QObject(window), window_(window) {}

void DesktopNotifier::notify(const QString& text) {
    QApplication::alert(window_);
    show(text);
}

void DesktopNotifier::comeForward() {
    window_->setWindowState(window_->windowState() & ~Qt::WindowMinimized);
    window_->raise();
    window_->activateWindow();
}

} // namespace tollwick
