#include "tests/ui/support/console_test.h"

#include <QComboBox>
#include <QListWidget>
#include <QRegularExpression>
#include <QTabWidget>
#include <QTreeWidgetItemIterator>

#include <sstream>

namespace tollwick {
namespace {

using simulator::Server;

// The control that takes the keys: one of the dialog on top, if there is any.
QWidget* focusWidget() {
    EXPECT_TRUE(waitUntil([] {
        const QWidget* focus = QApplication::focusWidget();
        QWidget* top = QApplication::activeModalWidget();
        if (focus && (!top || top->isAncestorOf(focus)))
            return true;
        if (top) // no window manager does it here when a box or a dialog is gone
            top->activateWindow();
        return false;
    })) << "no control has the focus";
    return QApplication::focusWidget();
}

void clickItem(QListWidget& list, const QListWidgetItem* item) {
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(item).center());
}

} // namespace

ConsoleTest::ConsoleTest()
    : service(simulator::sampleSite(),
              [this] { return std::chrono::milliseconds(transport_time.load()); }) {
    set(setting::ServerConnectPort, std::to_string(service.port()));
    set(setting::ComTimeout, "1");
}

bool ConsoleTest::start() {
    console = std::make_unique<Console>(ConsoleEnvironment{
        store, system_log, clock, {"", folder.text("install")}, [this] { ++ended; }});
    return console->Main() && (window().isMinimized() || QTest::qWaitForWindowActive(&window()));
}

void ConsoleTest::logIn() {
    ASSERT_TRUE(console || start());
    inDialog("LoginMenu", typing(std::string(simulator::kSamplePassword) + '\n'));
    ASSERT_TRUE(waitUntil([this] { return action("LogOffMenu")->isEnabled(); }));
    window().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
}

void ConsoleTest::inDialogs(const Work& open, const std::vector<Act>& acts) {
    const QWidget* below = QApplication::activeModalWidget();
    std::size_t count = 0;
    bool is_acting = false;
    QTimer later;
    later.callOnTimeout([&] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (is_acting || !dialog || dialog == below || !dialog->isVisible() ||
            qobject_cast<QMessageBox*>(dialog))
            return;
        is_acting = true;
        focusWidget();
        if (count++ < acts.size())
            acts[count - 1](*dialog);
        if (dialog->isVisible()) {
            ADD_FAILURE() << "Dialog that stays: " << dialog->objectName().toStdString();
            dialog->reject();
        }
        is_acting = false;
    });
    later.start(5);
    open();
    EXPECT_EQ(count, acts.size()) << "dialogs that came up";
}

void ConsoleTest::inRequest(const Work& request, const Work& act,
                            const std::function<bool()>& is_due) {
    bool came = false;
    QTimer later;
    later.callOnTimeout([&] {
        if (came || !context().link.isWaiting() || !is_due())
            return;
        came = true;
        act();
    });
    later.start(5);
    request();
    EXPECT_TRUE(came) << "what was waited for never came";
}

void ConsoleTest::type(const std::string& text) {
    for (const QChar character : QString::fromStdString(text))
        if (character < QChar(0x80))
            QTest::keyClick(focusWidget(), character == '\n' ? '\r' : character.toLatin1());
        else // which QTest has no key for
            QTest::sendKeyEvent(QTest::Click, focusWidget(), Qt::Key_unknown, character, {});
}

void ConsoleTest::press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(focusWidget(), key, modifiers);
}

std::string ConsoleTest::focused() {
    return focusWidget()->objectName().toStdString();
}

void ConsoleTest::play(QDialog& dialog, const std::string& steps) {
    for (const QString& step : QString::fromStdString(steps).split('|')) {
        SCOPED_TRACE(step.toStdString());
        const auto at = step.indexOf(QRegularExpression("[=?]"));
        const std::string name = step.left(at).toStdString();
        const std::string text = at < 0 ? "" : step.mid(at + 1).toStdString();
        if (at >= 0 && step[at] == '?') {
            EXPECT_EQ(name.empty() ? focused() : textOf(dialog, name.c_str()), text);
            continue;
        }
        auto* widget = child(dialog, name.c_str());
        for (QWidget* page = widget; page; page = page->parentWidget())
            if (auto* tabs = dialog.findChild<QTabWidget*>(); tabs && tabs->indexOf(page) >= 0)
                tabs->setCurrentWidget(page);
        focusWidget();
        ASSERT_TRUE(widget->isVisible() && widget->isEnabled());
        if (auto* list = qobject_cast<QListWidget*>(widget)) {
            clickItem(*list, list->item(std::stoi(text)));
        } else if (qobject_cast<QComboBox*>(widget)) {
            widget->setFocus();
            press(Qt::Key_Home);
            for (int i = 0; i < std::stoi(text); ++i)
                press(Qt::Key_Down);
        } else {
            QTest::mouseClick(widget, Qt::LeftButton, {}, {8, widget->height() / 2});
            if (at < 0)
                continue;
            QCoreApplication::processEvents();
            press(Qt::Key_A, Qt::ControlModifier);
            type("\b" + text);
        }
    }
}

std::string ConsoleTest::textOf(QWidget& parent, const char* name) {
    const QWidget* widget = child(parent, name);
    std::string items;
    if (const auto* list = qobject_cast<const QListWidget*>(widget))
        for (int row = 0; row < list->count(); ++row)
            items += list->item(row)->text().toStdString() + ';';
    for (const char* property : {"text", "currentText", "title", "plainText"})
        if (widget->property(property).isValid())
            return widget->property(property).toString().toStdString();
    return items;
}

void ConsoleTest::trigger(const char* name) {
    QAction* found = action(name);
    ASSERT_TRUE(waitUntil([&] { return found->isEnabled() && found->isVisible(); })) << name;
    found->trigger();
}

QTreeWidgetItem* ConsoleTest::node(const std::string& key) {
    for (QTreeWidgetItemIterator item(window().tree()); *item; ++item)
        if ((*item)->data(0, kKeyRole).toString().toStdString() == key)
            return *item;
    throw std::out_of_range(key);
}

void ConsoleTest::clickNode(const std::string& key) {
    ConfigTree* tree = window().tree();
    tree->scrollToItem(node(key));
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {},
                      tree->visualItemRect(node(key)).center());
    ASSERT_EQ(tree->selectedKey(), key);
}

void ConsoleTest::clickRow(int row, bool twice) {
    const QModelIndex index = list().model()->index(row, 0);
    list().scrollTo(index);
    const QPoint place = list().visualRect(index).center();
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, place);
    ASSERT_EQ(list().selectedRow(), row);
    if (twice)
        QTest::mouseDClick(list().viewport(), Qt::LeftButton, {}, place);
}

Lines ConsoleTest::tree() {
    Lines lines;
    for (QTreeWidgetItemIterator item(window().tree()); *item; ++item) {
        std::string line;
        for (QTreeWidgetItem* parent = (*item)->parent(); parent; parent = parent->parent())
            line += '.';
        for (const int role : {kKeyRole, kImageRole})
            line += (*item)->data(0, role).toString().toStdString() + ' ';
        lines.push_back(line + (*item)->text(0).toStdString());
    }
    return lines;
}

Lines ConsoleTest::listed() {
    const QAbstractItemModel& model = *list().model();
    Lines lines;
    for (int row = -1; row < model.rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < model.columnCount(); ++column)
            cells << (row < 0 ? model.headerData(column, Qt::Horizontal)
                              : model.index(row, column).data())
                         .toString();
        QString line = cells.join('|');
        for (const int role : {kImageRole, kKeyRole})
            if (row >= 0)
                line = model.index(row, 0).data(role).toString() + ' ' + line;
        lines.push_back(line.toStdString());
    }
    return lines;
}

bool ConsoleTest::isLoggedOut() {
    return waitUntil([this] {
        return !context().link.isOpen() && tree().empty() && listed() == Lines{""} &&
               info() == context().text(Text::StatusConnectionClosed) &&
               action("LoginMenu")->isEnabled() && !action("LogOffMenu")->isEnabled();
    });
}

void ConsoleTest::restore() {
    onServer([](Server& server) {
        server.site() = simulator::sampleSite();
        server.faults() = {};
        server.forgetRequests();
    });
}

std::string ConsoleTest::refused(ObjectClass object_class, const std::string& what,
                                 const Work& work) {
    onServer([&](Server& server) {
        server.faults().only_class = object_class;
        server.faults().result = result::Refused;
    });
    std::string status;
    boxes.expectBox(kCritical, unable(what), [&](QMessageBox&) {
        EXPECT_TRUE(context().requests.isBusy()) << "told before anything else goes on";
        status = info();
    });
    work();
    EXPECT_TRUE(boxes.done());
    return status;
}

void ConsoleTest::neverReply(ObjectClass object_class) {
    onServer([&](Server& server) {
        server.faults().only_class = object_class;
        server.faults().never_reply = true;
    });
}

int ConsoleTest::requestCount(ObjectClass object_class) {
    return onServer([&](Server& server) {
        return static_cast<int>(std::ranges::count_if(server.requests(), [&](const auto& request) {
            return request.object_class == static_cast<Integer>(object_class);
        }));
    });
}

int ConsoleTest::saves() {
    constexpr std::array kSaves{Operation::Add, Operation::Save, Operation::Delete};
    return onServer([&](Server& server) {
        return static_cast<int>(std::ranges::count_if(server.requests(), [&](const auto& request) {
            return std::ranges::count(kSaves, static_cast<Operation>(request.operation)) > 0;
        }));
    });
}

Lines ConsoleTest::logged() {
    std::istringstream log(folder.read("install/Logs/Tollwick.log"));
    Lines lines;
    for (std::string line; std::getline(log, line);)
        lines.push_back(line.substr(line.find("A:") + 2));
    return lines;
}

} // namespace tollwick
