// What a person does with the lists: sorting, filtering, selecting, copying, saving, arranging.
#include "app/files.h"
#include "tests/ui/support/console_test.h"

#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>

namespace tollwick {
namespace {

class ListUseTest : public ConsoleTest {
protected:
    void clickTitle(int column) {
        QHeaderView* header = list().header();
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                          {header->sectionViewportPosition(column) + 10, header->height() / 2});
    }
    std::string column(int column) {
        std::string cells;
        for (int row = 0; row < list().model()->rowCount(); ++row)
            cells += list().model()->index(row, column).data().toString().toStdString() + ';';
        return cells;
    }
    QLineEdit* filter() { return window().findChild<QLineEdit*>("ListFilter"); }
    void clickShownRow(int row) {
        QTest::mouseClick(list().viewport(), Qt::LeftButton, {},
                          list().visualRect(list().model()->index(row, 0)).center());
    }
    void filterFor(const char* text) {
        window().activateWindow(); // no window manager does it here after a box
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
        QTest::keySequence(&list(), QKeySequence::Find);
        ASSERT_TRUE(filter()->isVisible() && filter()->hasFocus());
        QTest::keyClicks(filter(), text);
    }
};

TEST_F(ListUseTest, CommandsActOnTheRowThatIsSeenAsSelected) {
    logIn();
    stopTimer();
    clickNode("schedule");
    const std::string before = column(1);
    clickTitle(1);
    EXPECT_EQ(column(1), "At: 07:30;At: 23:15;Every: 15 min;Every: 30 min;Every: 2 hour;");
    clickTitle(1);
    EXPECT_EQ(column(1), "Every: 2 hour;Every: 30 min;Every: 15 min;At: 23:15;At: 07:30;");
    clickShownRow(1);
    EXPECT_EQ(list().selectedRow(), 4) << "Friday is the last in the service's order";
    tick();
    boxes.expectQuestion("You have selected to delete a schedule!\nDo you want to continue?",
                         QMessageBox::Yes);
    trigger("DeleteMenu");
    EXPECT_EQ(column(1), "Every: 2 hour;Every: 15 min;At: 23:15;At: 07:30;");
    EXPECT_EQ(onServer([](simulator::Server& server) {
                  std::string days;
                  for (const ScheduleRecord& schedule : server.site().schedules)
                      days += std::to_string(schedule.day) + ' ';
                  return days;
              }),
              "7 9 7 8 ");
    // The third click goes back to the service's order, in which the rest still stands.
    clickTitle(1);
    EXPECT_EQ(column(1) + "Every: 30 min;", before);
}

TEST_F(ListUseTest, FilteredRowsAreActedOnTooAndSeveralAreNone) {
    logIn();
    stopTimer();
    clickNode("outbox");
    const int all = list().model()->rowCount();
    filterFor("sthlm");
    const int some = list().model()->rowCount();
    ASSERT_GT(some, 1);
    ASSERT_LT(some, all);
    EXPECT_EQ(window().findChild<QLabel*>("FilterCount")->text(),
              QString("%1 / %2").arg(some).arg(all));
    QTest::keyClick(filter(), Qt::Key_Down);
    EXPECT_TRUE(list().hasFocus());
    const OutboxRecord mail =
        context().data.outbox.at(static_cast<std::size_t>(list().selectedRow()));
    EXPECT_NE(mail.recipient.text().find("sthlm"), std::string::npos);
    tick();
    boxes.expectQuestion("You have selected to delete a mail!\nDo you want to continue?",
                         QMessageBox::Yes);
    trigger("DeleteMenu");
    EXPECT_EQ(list().model()->rowCount(), some - 1);
    EXPECT_EQ(std::ranges::count(context().data.outbox, mail), 0);

    QTest::keySequence(&list(), QKeySequence::SelectAll);
    EXPECT_EQ(list().selectedRows().size(), static_cast<std::size_t>(some - 1));
    tick();
    EXPECT_EQ(action("DeleteMenu")->isEnabled(), some - 1 == 1);

    filter()->setFocus();
    QTest::keyClick(filter(), Qt::Key_Escape);
    EXPECT_FALSE(filter()->isVisible());
    EXPECT_EQ(list().model()->rowCount(), all - 1);
    // Another list starts unfiltered.
    filterFor("x");
    clickNode("uucphosts");
    EXPECT_FALSE(filter()->isVisible());
    EXPECT_GT(list().model()->rowCount(), 0);
}

TEST_F(ListUseTest, RowsAreCopiedAndSavedAsTheyAreShown) {
    logIn();
    clickNode("uucphosts");
    clickTitle(0);
    clickShownRow(0);
    QTest::keySequence(&list(), QKeySequence::SelectAll);
    QTest::keySequence(&list(), QKeySequence::Copy);
    const QString copied = QApplication::clipboard()->text();
    EXPECT_TRUE(copied.startsWith("Göteborgs lager\tlager.corvale.example\tYes\n"))
        << copied.toStdString();
    EXPECT_TRUE(copied.endsWith("Åre fjällstation\tare.corvale.example\tNo\n"))
        << copied.toStdString();

    const std::string file = folder.text("hosts.csv");
    const auto save = [&](const std::string& name) {
        inDialog(
            [this] { trigger("SaveCsv"); },
            [&](QDialog& dialog) {
                auto& files = dynamic_cast<QFileDialog&>(dialog);
                files.findChild<QLineEdit*>("fileNameEdit")->setText(QString::fromStdString(name));
                QMetaObject::invokeMethod(&files, "accept");
            });
    };
    save(file.substr(0, file.size() - 4)); // the suffix is added
    const std::string csv = readWholeFile(toPath(file), 10'000).value_or("");
    EXPECT_TRUE(csv.starts_with("\xEF\xBB\xBF"
                                "DisplayName,Domain,Active\r\n"
                                "Göteborgs lager,lager.corvale.example,Yes\r\n"))
        << csv;
    EXPECT_EQ(std::ranges::count(csv, '\n'), 1 + list().model()->rowCount());
#ifndef Q_OS_WIN // the dialog itself lets no such name through there
    boxes.expectBox(QMessageBox::Critical, "The list could not be saved!");
    save("/dev/null/hosts.csv");
#endif
}

TEST_F(ListUseTest, QtsOwnDialogsSpeakSwedish) {
    set(setting::CountryCode, std::to_string(kSwedish));
    logIn();
    clickNode("uucphosts");
    inDialog([this] { trigger("SaveCsv"); },
             [&](QDialog& dialog) {
                 EXPECT_EQ(dialog.findChild<QLabel*>("lookInLabel")->text(), "Leta i:");
                 EXPECT_EQ(dialog.windowTitle(), "Spara listan som...");
                 dialog.reject();
             });
}

TEST_F(ListUseTest, WidthsAndOrderAreKeptForEachList) {
    logIn();
    clickNode("uucphosts");
    const int usual = list().columnWidth(1);
    list().header()->resizeSection(1, usual + 77);
    clickTitle(1);
    clickNode("outbox");
    EXPECT_EQ(list().header()->sortIndicatorSection(), -1);
    clickTitle(2);
    window().exitProgram();
    EXPECT_EQ(stored({"Lists", "outboxWidths", ""}), "") << "only what the user has changed";
    console.reset();
    logIn();
    clickNode("uucphosts");
    EXPECT_EQ(list().columnWidth(1), usual + 77);
    EXPECT_TRUE(column(1).starts_with("are.")) << column(1);
    clickNode("outbox");
    EXPECT_EQ(list().header()->sortIndicatorSection(), 2);
}

TEST_F(ListUseTest, ContextMenusHoldTheNodesCommands) {
    logIn();
    const auto menuAt = [this](QWidget* viewport, const QPoint& place) {
        QContextMenuEvent wanted(QContextMenuEvent::Mouse, place, viewport->mapToGlobal(place));
        QApplication::sendEvent(viewport, &wanted);
        std::string entries;
        auto* menu = window().findChild<QMenu*>("ContextMenu");
        for (const QAction* entry : menu->actions())
            entries += entry->objectName().toStdString() + ' ';
        menu->close();
        return entries;
    };
    const std::string rows = "  CopyRows SelectRows FilterRows SortRows FitColumns SaveCsv ";
    clickNode("schedule");
    clickRow(0);
    const QPoint row = list().visualRect(list().model()->index(0, 0)).center();
    EXPECT_EQ(menuAt(list().viewport(), row), "AddMenu DeleteMenu PropertiesMenu" + rows);
    ConfigTree* tree = window().tree();
    const auto nodeMenu = [&](const char* key) {
        clickNode(key);
        return menuAt(tree->viewport(), tree->visualItemRect(node(key)).center());
    };
    EXPECT_EQ(nodeMenu("logs"), "PropertiesMenu Toggmenu ");
    EXPECT_EQ(nodeMenu("outbox"), "DeleteMenu Refreshmenu ");
    EXPECT_EQ(nodeMenu("loginaccount"), "PropertiesMenu ");
}

} // namespace
} // namespace tollwick
