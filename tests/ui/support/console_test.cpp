#include "tests/ui/support/console_test.h"

#include <QApplication>
#include <QLineEdit>
#include <QTimer>
#include <QTreeWidgetItemIterator>

namespace tollwick {
namespace {

std::string text(const QModelIndex& index, int role = Qt::DisplayRole) {
    return index.data(role).toString().toStdString();
}

} // namespace

ConsoleTest::ConsoleTest(simulator::Site site)
    : service(std::move(site),
              [this] { return std::chrono::milliseconds(transport_time.load()); }) {
    set(setting::ServerConnectPort, std::to_string(service.port()));
}

void ConsoleTest::set(const Setting& setting, const std::string& value) {
    Settings(store).write(setting, value);
}

bool ConsoleTest::start() {
    console = std::make_unique<Console>(ConsoleEnvironment{
        store, system_log, clock, {"", folder.text("install")}, [this] { ++ended; }});
    return console->Main() && QTest::qWaitForWindowActive(&window());
}

void ConsoleTest::logIn() {
    ASSERT_TRUE(console || start());
    inDialog([this] { trigger("LoginMenu"); },
             [](QDialog& login) {
                 auto* password = login.findChild<QLineEdit*>("tbServerConnectPassword");
                 QTest::keyClicks(password, simulator::kSamplePassword);
                 QTest::keyClick(password, Qt::Key_Return);
             });
    ASSERT_TRUE(waitUntil([this] { return action("LogOffMenu")->isEnabled(); }));
    ASSERT_TRUE(context().link.isOpen());
    // No window manager does it here once the dialog is gone.
    window().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
}

void ConsoleTest::stopTimer() {
    tick();
    window().menuTimer()->stop();
}

void ConsoleTest::inDialog(const std::function<void()>& open,
                           const std::function<void(QDialog&)>& act) {
    bool came = false;
    QTimer later;
    later.callOnTimeout([&] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!dialog || came)
            return;
        came = true;
        later.stop();
        act(*dialog);
        if (dialog->isVisible()) {
            ADD_FAILURE() << "Dialog that stays: " << dialog->objectName().toStdString();
            dialog->reject();
        }
    });
    later.start(10);
    open();
    EXPECT_TRUE(came) << "no dialog came up";
}

void ConsoleTest::inRequest(const std::function<void()>& request,
                            const std::function<void()>& act) {
    bool came = false;
    QTimer later;
    later.callOnTimeout([&] {
        if (!context().link.isWaiting())
            return;
        came = true;
        later.stop();
        act();
    });
    later.start(10);
    request();
    EXPECT_TRUE(came) << "nothing was waited for";
}

QAction* ConsoleTest::action(const char* name) {
    auto* found = window().findChild<QAction*>(name);
    if (!found)
        throw std::out_of_range(name);
    return found;
}

void ConsoleTest::trigger(const char* name) {
    QAction* found = action(name);
    ASSERT_TRUE(waitUntil([&] { return found->isEnabled() && found->isVisible(); })) << name;
    found->trigger();
}

QTreeWidgetItem* ConsoleTest::node(const std::string& key) {
    for (QTreeWidgetItemIterator item(window().tree()); *item; ++item)
        if ((*item)->data(0, Qt::UserRole).toString().toStdString() == key)
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

void ConsoleTest::clickRow(int row) {
    const QModelIndex index = list().model()->index(row, 0);
    list().scrollTo(index);
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, list().visualRect(index).center());
    ASSERT_EQ(list().selectedRow(), row);
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
    const auto joined = [&](const auto& cell) {
        std::string line;
        for (int column = 0; column < model.columnCount(); ++column)
            line += (column == 0 ? "" : "|") + cell(column);
        return line;
    };
    Lines lines{joined([&](int column) {
        return model.headerData(column, Qt::Horizontal).toString().toStdString();
    })};
    for (int row = 0; row < model.rowCount(); ++row) {
        const QModelIndex first = model.index(row, 0);
        lines.push_back(text(first, Qt::UserRole) + ' ' + text(first, Qt::UserRole + 1) + ' ' +
                        joined([&](int column) { return text(model.index(row, column)); }));
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

int ConsoleTest::requestCount(ObjectClass object_class) {
    return onServer([&](simulator::Server& server) {
        return static_cast<int>(std::count_if(
            server.requests().begin(), server.requests().end(), [&](const auto& request) {
                return request.object_class == static_cast<Integer>(object_class);
            }));
    });
}

} // namespace tollwick
