#include "ui/common/message_box_prompter.h"

#include "ui/common/input_blocker.h"
#include "ui/common/to_qstring.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMainWindow>
#include <QMessageBox>

namespace tollwick {
namespace {

QMessageBox::Icon iconOf(BoxIcon icon) {
    switch (icon) {
    case BoxIcon::Question:
        return QMessageBox::Question;
    case BoxIcon::Exclamation:
        return QMessageBox::Warning;
    case BoxIcon::Critical:
        return QMessageBox::Critical;
    case BoxIcon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

// The window that the box belongs to: the dialog that is up, or else the main window.
QWidget* owner() {
    if (QWidget* modal = QApplication::activeModalWidget())
        return modal;
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible() && qobject_cast<QMainWindow*>(window))
            return window;
    return nullptr;
}

// Shows the usual pointer over a box that comes up while something is going on.
class UsualPointer {
public:
    UsualPointer() { QApplication::setOverrideCursor(Qt::ArrowCursor); }
    ~UsualPointer() { QApplication::restoreOverrideCursor(); }
    UsualPointer(const UsualPointer&) = delete;
    UsualPointer& operator=(const UsualPointer&) = delete;
};

// The help window stays usable beside the box, so that it can be read.
void setText(QMessageBox& box, std::string_view text) {
    box.setWindowModality(Qt::WindowModal);
    box.setTextFormat(Qt::PlainText);
    box.setText(toQString(text).replace("\r\n", "\n"));
    box.setWindowTitle(toQString(kProgramName));
}

} // namespace

MessageBoxPrompter::MessageBoxPrompter(const StringTable& texts, InputBlocker& blocker)
    : texts_(texts), blocker_(blocker) {}

void MessageBoxPrompter::tell(BoxIcon icon, std::string_view text) {
    const InputBlocker::Pause pause(blocker_);
    const UsualPointer pointer;
    QMessageBox box(owner());
    setText(box, text);
    box.setIcon(iconOf(icon));
    box.setStandardButtons(QMessageBox::Ok);
    // The missing language is itself a thing that is told; the button then keeps Qt's word.
    try {
        box.button(QMessageBox::Ok)->setText(toQString(texts_(Text::Ok)));
    } catch (const RunTimeError&) {
    }
    box.exec();
}

Answer MessageBoxPrompter::ask(BoxIcon icon, std::string_view text, Answer default_button) {
    const InputBlocker::Pause pause(blocker_);
    const UsualPointer pointer;
    QMessageBox box(owner());
    setText(box, text);
    box.setIcon(iconOf(icon));
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    box.setDefaultButton(default_button == Answer::Yes ? QMessageBox::Yes : QMessageBox::No);
    box.setEscapeButton(QMessageBox::No);
    box.button(QMessageBox::Yes)->setText(toQString(texts_(Text::Yes)));
    box.button(QMessageBox::No)->setText(toQString(texts_(Text::No)));
    return box.exec() == QMessageBox::Yes ? Answer::Yes : Answer::No;
}

void MessageBoxPrompter::beep() {
    QApplication::beep();
}

} // namespace tollwick
