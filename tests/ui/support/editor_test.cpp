#include "tests/ui/support/editor_test.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QTimer>

#include <sstream>

namespace tollwick {
namespace {

// The control that takes the keys: one of the dialog on top, if there is any.
QWidget* focusWidget() {
    EXPECT_TRUE(waitUntil([] {
        const QWidget* focus = QApplication::focusWidget();
        QWidget* top = QApplication::activeModalWidget();
        if (focus && (!top || top->isAncestorOf(focus)))
            return true;
        // The window system may still be busy with the window below.
        if (top)
            top->activateWindow();
        return false;
    })) << "no control has the focus";
    return QApplication::focusWidget();
}

} // namespace

void EditorTest::select(const std::string& node, int row) {
    clickNode(node);
    clickRow(row);
}

void EditorTest::clickInContextMenu(const char* name) {
    ASSERT_TRUE(waitUntil([&] { return action(name)->isEnabled(); }));
    const QPoint place = list().visualRect(list().currentIndex()).center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, list().viewport()->mapToGlobal(place));
    QApplication::sendEvent(list().viewport(), &event);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_TRUE(menu);
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action(name)).center());
}

void EditorTest::doubleClickRow(int row) {
    clickRow(row); // whose press comes before that of a double-click
    QTest::mouseDClick(list().viewport(), Qt::LeftButton, {},
                       list().visualRect(list().currentIndex()).center());
}

void EditorTest::inDialogs(const std::function<void()>& open, const std::vector<Act>& acts) {
    std::size_t count = 0;
    bool is_acting = false;
    QTimer later;
    later.callOnTimeout([&] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (is_acting || !dialog || !dialog->isVisible() || qobject_cast<QMessageBox*>(dialog))
            return;
        is_acting = true;
        if (count >= acts.size()) {
            ADD_FAILURE() << "a dialog too many: " << dialog->objectName().toStdString();
            dialog->reject();
        } else {
            focusWidget();
            acts[count](*dialog);
            if (dialog->isVisible()) {
                ADD_FAILURE() << "Dialog that stays: " << dialog->objectName().toStdString();
                dialog->reject();
            }
        }
        ++count;
        is_acting = false;
    });
    later.start(5);
    open();
    EXPECT_EQ(count, acts.size()) << "dialogs that came up";
}

void EditorTest::type(const char* text) {
    QWidget* widget = focusWidget();
    for (const QChar character : QString::fromUtf8(text))
        if (character < QChar(0x80))
            QTest::keyClick(widget, character.toLatin1());
        else // which QTest has no key for
            QTest::sendKeyEvent(QTest::Click, widget, Qt::Key_unknown, character, Qt::NoModifier);
}

void EditorTest::press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(focusWidget(), key, modifiers);
}

std::string EditorTest::focused() {
    return focusWidget()->objectName().toStdString();
}

Lines EditorTest::logged() {
    std::istringstream log(folder.read("install/Logs/Tollwick.log"));
    Lines lines;
    for (std::string line; std::getline(log, line);)
        lines.push_back(line.substr(line.find("A:") + 2));
    return lines;
}

void EditorTest::failing(Failure failure, ObjectClass object_class, const std::string& message,
                         const std::function<void()>& save) {
    onServer([&](simulator::Server& server) {
        server.faults().only_class = object_class;
        if (failure == Failure::Refused)
            server.faults().result = result::Refused;
        else
            server.faults().never_reply = true;
    });
    boxes.expectBox(QMessageBox::Critical, message,
                    [this](QMessageBox&) { EXPECT_TRUE(context().requests.isBusy()); });
    if (failure == Failure::Refused)
        return save();
    inRequest(save, [&] {
        if (failure == Failure::ConnectionLost)
            return onServer([](simulator::Server& server) { server.closeConnections(); });
        clock.time.second += 1;
        clock.time.hundredths += 1;
    });
}

} // namespace tollwick
