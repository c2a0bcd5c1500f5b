#include "ui/common/input_blocker.h"

#include <QCoreApplication>
#include <QDialog>
#include <QKeyEvent>

namespace tollwick {
namespace {

bool isInput(QEvent::Type type) {
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::ContextMenu:
    case QEvent::InputMethod:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletRelease:
    case QEvent::DragEnter:
    case QEvent::Drop:
        return true;
    default:
        return false;
    }
}

bool isEscape(const QEvent& event) {
    if (event.type() != QEvent::KeyPress)
        return false;
    const auto& key = static_cast<const QKeyEvent&>(event);
    return key.key() == Qt::Key_Escape && !key.isAutoRepeat();
}

} // namespace

InputBlocker::InputBlocker(QObject* parent) : QObject(parent) {
    offer_timer_.setSingleShot(true);
    offer_timer_.setInterval(kOfferAfterMs);
    connect(&offer_timer_, &QTimer::timeout, this, [this] { offer(true); });
}

InputBlocker::~InputBlocker() {
    setLocks(0);
}

void InputBlocker::lockInput() {
    setLocks(locks_ + 1);
}

void InputBlocker::unlockInput() {
    setLocks(locks_ - 1);
}

void InputBlocker::setLocks(int locks) {
    if ((locks_ > 0) != (locks > 0)) {
        if (locks > 0) {
            QCoreApplication::instance()->installEventFilter(this);
            offer_timer_.start();
        } else {
            QCoreApplication::instance()->removeEventFilter(this);
            offer_timer_.stop();
            offer(false);
        }
    }
    locks_ = locks;
}

void InputBlocker::offer(bool offered) {
    if (is_offered_ == offered)
        return;
    is_offered_ = offered;
    emit giveUpOffered(offered);
}

bool InputBlocker::eventFilter(QObject* watched, QEvent* event) {
    if (isEscape(*event)) {
        emit escapePressed();
        if (is_offered_)
            emit giveUpWanted();
    }
    if (isInput(event->type()))
        return true;
    // A dialog stays open while it waits, but who closes it does not want to wait any longer.
    // Closing the main window ends the program.
    if (event->type() == QEvent::Close && qobject_cast<QDialog*>(watched)) {
        event->ignore();
        if (is_offered_)
            emit giveUpWanted();
        return true;
    }
    return false;
}

InputBlocker::Pause::Pause(InputBlocker& blocker) : blocker_(blocker), locks_(blocker.locks_) {
    blocker_.setLocks(0);
}

InputBlocker::Pause::~Pause() {
    blocker_.setLocks(locks_);
}

} // namespace tollwick
