#include "ui/help/help_desk.h"

#include "base/files.h"
#include "ui/help/help_window.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMessageBox>
#include <QWindow>

namespace tollwick {
namespace {

// The topic of the widget or of the closest thing around it, as far as the book has it.
std::string topicOf(const QWidget* widget, const HelpBook& book) {
    for (; widget; widget = widget->parentWidget()) {
        if (const auto* box = qobject_cast<const QMessageBox*>(widget))
            return book.topicOfMessage(box->text().toStdString());
        for (const QString& name :
             {widget->property(kHelpTopicProperty).toString(), widget->objectName()})
            if (book.topic(name.toStdString()))
                return name.toStdString();
    }
    return {};
}

} // namespace

HelpDesk::HelpDesk(const StringTable& texts, const std::string& install_folder,
                   ErrorHandler& errors)
    : texts_(texts), install_folder_(install_folder), errors_(errors) {
    QApplication::instance()->installEventFilter(this);
}

HelpDesk::~HelpDesk() = default;

void HelpDesk::showContents() {
    show([](HelpWindow& window) { window.showTopic({}); });
}

void HelpDesk::showPageOf(const QWidget* widget) {
    show([&](HelpWindow& window) { window.showTopic(topicOf(widget, window.book())); });
}

void HelpDesk::show(const std::function<void(HelpWindow&)>& choose) {
    errors_.guard(Routine::Help, [&](Integer&) {
        if (!window_)
            window_ = std::make_unique<HelpWindow>(texts_);
        if (!window_->isVisible())
            window_->open(joinPath(install_folder_, "Tollwick.hlp"),
                          joinPath(install_folder_, "Tollwick.cnt"));
        choose(*window_);
        window_->setWindowState(window_->windowState() & ~Qt::WindowMinimized);
        window_->show();
        window_->raise();
        window_->activateWindow();
    });
}

bool HelpDesk::eventFilter(QObject* watched, QEvent* event) {
    // Once for each press: the window gets the key first, and after it the widgets.
    if (event->type() != QEvent::KeyPress || !watched->isWindowType() ||
        !static_cast<const QKeyEvent*>(event)->matches(QKeySequence::HelpContents))
        return false;
    const QWidget* front = QWidget::find(static_cast<const QWindow*>(watched)->winId());
    if (!front || front == window_.get())
        return false;
    showPageOf(front->focusWidget() ? front->focusWidget() : front);
    return true;
}

} // namespace tollwick
