// Tells the user something on the desktop while the console may lie behind other windows.
#pragma once

#include <QObject>

class QWidget;

namespace tollwick {

class DesktopNotifier : public QObject {
    Q_OBJECT
public:
    // The way of the platform; see freedesktop_notifier.cpp and tray_notifier.cpp. `window`, which
    // becomes the parent, is what a click on the notification brings to the front.
    static DesktopNotifier* create(QWidget* window);

    // Where the desktop shows no notifications, the window's entry in the task bar is marked alone.
    void notify(const QString& text);

protected:
    explicit DesktopNotifier(QWidget* window);

    // Does not wait for the desktop, which may show the text or not.
    virtual void show(const QString& text) = 0;
    void comeForward();

    static constexpr int kShownMs = 10'000;

private:
    QWidget* window_;
};

} // namespace tollwick
