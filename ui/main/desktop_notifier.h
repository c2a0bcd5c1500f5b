// Tells the user something on the desktop while the console may lie behind other windows.
#pragma once

#include <QObject>
#include <QTimer>

class QSystemTrayIcon;
class QWidget;

namespace tollwick {

class DesktopNotifier : public QObject {
    Q_OBJECT
public:
    // `window` is what a click on the notification brings to the front.
    explicit DesktopNotifier(QWidget* window);

    // Where the desktop shows no notifications, the window's entry in the task bar is marked.
    void notify(const QString& text);

private:
    QWidget* window_;
    QSystemTrayIcon* icon_ = nullptr;
    QTimer hide_later_;
};

} // namespace tollwick
