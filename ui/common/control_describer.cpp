#include "ui/common/control_describer.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGroupBox>
#include <QWidget>

namespace tollwick {
namespace {

QString describe(const QWidget& control) {
    QString description;
    for (const QWidget* around = control.parentWidget(); around && !around->isWindow();
         around = around->parentWidget())
        if (const auto* group = qobject_cast<const QGroupBox*>(around);
            group && !group->title().isEmpty())
            description = (group->title() + ' ' + description).trimmed();
    return description.isEmpty() ? control.window()->windowTitle() : description;
}

} // namespace

ControlDescriber::ControlDescriber(QObject* parent) : QObject(parent) {
    QCoreApplication::instance()->installEventFilter(this);
}

bool ControlDescriber::eventFilter(QObject* watched, QEvent* event) {
    const auto* window = event->type() == QEvent::Show ? qobject_cast<QWidget*>(watched) : nullptr;
    if (!window || !window->isWindow())
        return false;
    for (QWidget* control : window->findChildren<QWidget*>())
        if (control->focusPolicy() != Qt::NoFocus && control->accessibleDescription().isEmpty())
            control->setAccessibleDescription(describe(*control));
    return false;
}

} // namespace tollwick
