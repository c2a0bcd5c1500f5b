// The lists, and what a person does with them: sorting, filtering, selecting, copying, saving.
#include "base/files.h"
#include "rules/node_keys.h"
#include "tests/ui/support/console_test.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>

namespace tollwick {
namespace {

// Titles, then key, image and cells of each row.
// clang-format off
const std::pair<const char*, Lines> kLists[] = {
    {"schedule",
     {"Day|When|Between|Delay", "setting schedule Weekdays|At: 07:30|00:00 - 23:59|0",
      "setting schedule Every day|At: 23:15|00:00 - 23:59|0",
      "setting schedule Weekdays|Every: 15 min|08:00 - 17:00|5",
      "setting schedule Weekends|Every: 2 hour|09:00 - 21:00|0",
      "setting schedule Friday|Every: 30 min|12:00 - 16:30|10"}},
    {"logs",
     {"Available logs|Period", "maillogging squareselected Mail logging|30",
      "uucptransferlogging squareselected UUCP transfer logging|14",
      "smtplogging squareselected Smtp logging|14", "scriptlogging square Script logging|7",
      "comlogging square Communication logging|3", "uucpcmdlogging square UUCP command logging|7",
      "uucpadvlogging square UUCP advanced logging|7"}},
    {"outbox",
     {"To:|Via node:|File size:|File name:",
      "setting outboxcont åke.öberg@malmo.corvale.example|malmo|1,234,567 kB|D.corv0A18",
      "setting outboxcont info@sthlm.corvale.example|sthlm|40 kB|D.corv0A1A"}},
    {"uucpmonitor",
     {"Item:|Status:", "setting monitor State:|", "setting monitor Number of queued files:|0",
      "setting monitor Transferring file #:|0", "setting monitor File in progress:|",
      "setting monitor File size:|0 kB", "setting monitor Progress:|0 %",
      "setting monitor Average speed:|0 bps"}}};
// clang-format on

class ListTest : public ConsoleTest {
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
    QLineEdit* filter() { return child<QLineEdit>(window(), "ListFilter"); }
    QPoint placeOf(int row) { return list().visualRect(list().model()->index(row, 0)).center(); }
    void clickShownRow(int row) {
        QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, placeOf(row));
    }
};

TEST_F(ListTest, EveryNodeHasItsList) {
    onServer([](simulator::Server& s) { // two mails, one of them huge
        s.site().outbox = {s.site().outbox[1], s.site().outbox[3]};
        s.site().outbox[0].size = 1'234'567;
    });
    logIn();
    for (const auto& [node, lines] : kLists) {
        clickNode(node);
        EXPECT_EQ(listed(), lines) << node;
        EXPECT_EQ(list().selectedRow(), -1);
    }
    EXPECT_EQ(tree().size(), treeNodes().size());
    for (const TreeNode& node : treeNodes()) {
        clickNode(std::string(node.key));
        for (int row = 0; row < list().model()->rowCount(); ++row)
            EXPECT_FALSE(list().model()->index(row, 0).data(Qt::DecorationRole).isNull());
    }
}

TEST_F(ListTest, CommandsActOnTheRowThatIsSeenAsSelected) {
    logIn();
    stopTimer();
    clickNode("outbox");
    EXPECT_TRUE(list().model()->index(0, 2).data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight);
    std::string in_service_order = column(0);
    clickTitle(2);
    EXPECT_TRUE(column(2).starts_with("1 kB;1 kB;2 kB;")) << column(2);
    clickTitle(2);
    EXPECT_TRUE(column(2).starts_with("58 kB;40 kB;12 kB;")) << column(2);
    QTest::keySequence(&list(), QKeySequence::Find);
    QTest::keyClicks(filter(), "sthlm");
    EXPECT_EQ(column(2), "40 kB;5 kB;");
    EXPECT_EQ(textOf(window(), "FilterCount"), "2 / 12");
    QTest::keyClick(filter(), Qt::Key_Down);
    EXPECT_TRUE(list().hasFocus());
    EXPECT_EQ(list().selectedRow(), 3) << "in the order of the service";
    tick();
    boxes.expectQuestion(Text::ConfirmDeleteMail, kYes);
    trigger("DeleteMenu");
    EXPECT_EQ(column(2), "5 kB;");
    EXPECT_EQ(site().outbox, context().data.outbox);
    filter()->setFocus();
    QTest::keyClick(filter(), Qt::Key_Escape);
    EXPECT_TRUE(!filter()->isVisible() && window().focusWidget() == &list());
    clickTitle(2); // the third click
    const std::string gone = "info@sthlm.corvale.example;";
    EXPECT_EQ(column(0), in_service_order.erase(in_service_order.find(gone), gone.size()));
    // Several rows are none, for a command that takes one.
    QTest::keySequence(&list(), QKeySequence::SelectAll);
    EXPECT_EQ(list().selectedRows().size(), 11U);
    EXPECT_EQ(list().selectedRow(), -1);
    // Another list starts unfiltered.
    for (const bool is_closed : {true, false}) {
        trigger("FilterRows");
        QTest::keyClicks(filter(), "nobody");
        EXPECT_EQ(column(0), "");
        if (is_closed)
            clickOn(window(), "CloseFilter");
    }
    clickNode("uucphosts");
    EXPECT_FALSE(filter()->isVisible());
    EXPECT_EQ(list().model()->rowCount(), 5);
}

TEST_F(ListTest, TheMenuSortsAndFitsColumns) {
    logIn();
    clickNode("outbox");
    const std::string in_service_order = column(0);
    emit list().contextMenuWanted(window().mapToGlobal(QPoint(300, 100)));
    auto* context_menu = window().findChild<QMenu*>("ContextMenu");
    QMenu* menu = nullptr;
    for (const QAction* entry : context_menu->actions())
        menu = entry->objectName() == "SortRows" ? entry->menu() : menu;
    context_menu->close();
    // Triggers an entry; tells which one was checked, and the sizes at the head of the list then.
    const auto sortBy = [&](const char* title) {
        emit menu->aboutToShow();
        std::string checked;
        QAction* wanted = nullptr;
        for (QAction* entry : menu->actions()) {
            checked += entry->isChecked() ? entry->text().toStdString() + ' ' : "";
            wanted = entry->text() == title ? entry : wanted;
        }
        wanted->trigger();
        return checked + column(2).substr(0, 10);
    };
    EXPECT_EQ(sortBy("File size:"), "Order of the service 1 kB;1 kB;");
    EXPECT_EQ(sortBy("File size:"), "File size: 58 kB;40 k");
    EXPECT_EQ(sortBy("Order of the service"), "File size: 3 kB;2 kB;");
    EXPECT_EQ(column(0), in_service_order);
    list().header()->resizeSection(0, 30);
    trigger("FitColumns");
    EXPECT_GT(list().columnWidth(0), 100);
}

TEST_F(ListTest, ACellThatIsRewrittenCountsForTheFilterAndIsNoMarkup) {
    logIn();
    clickNode("uucpmonitor");
    QTest::keySequence(&list(), QKeySequence::Find);
    QTest::keyClicks(filter(), "<b>");
    EXPECT_EQ(column(1), "");
    list().setCell(2, 1, "1 <b>bold</b>");
    EXPECT_EQ(column(1), "1 <b>bold</b>;");
    EXPECT_EQ(list().model()->index(0, 1).data(Qt::ToolTipRole), "1 &lt;b&gt;bold&lt;/b&gt;");
}

TEST_F(ListTest, OnlyTheLeftButtonActivatesARow) {
    logIn();
    select("logs", 0);
    QTest::mouseDClick(list().viewport(), Qt::MiddleButton, {}, placeOf(0));
    EXPECT_EQ(saves(), 0);
    clickRow(0, true);
    EXPECT_EQ(saves(), 1);
}

TEST_F(ListTest, RowsAreCopiedAndSavedAsTheyAreShown) {
    logIn();
    clickNode("uucphosts");
    clickTitle(0);
    clickShownRow(0);
    QTest::keySequence(&list(), QKeySequence::SelectAll);
    QTest::keySequence(&list(), QKeySequence::Copy);
    const QString copied = QApplication::clipboard()->text();
    EXPECT_TRUE(copied.startsWith("Göteborgs lager\tlager.corvale.example\tYes\n"))
        << copied.toStdString();
    EXPECT_EQ(copied.count('\n'), 5);

    const std::string file = folder.text("hosts.csv");
    const auto save = [&](const std::string& name) {
        inDialog("SaveCsv", [&](QDialog& dialog) {
            child<QLineEdit>(dialog, "fileNameEdit")->setText(QString::fromStdString(name));
            dialog.accept();
        });
    };
    clickShownRow(1);                      // one is not worth a file: all are saved
    save(file.substr(0, file.size() - 4)); // the suffix is added
    const std::string csv = readWholeFile(toPath(file), 10'000).value_or("");
    EXPECT_TRUE(csv.starts_with("\xEF\xBB\xBF"
                                "DisplayName,Domain,Active\r\n"
                                "Göteborgs lager,lager.corvale.example,Yes\r\n"))
        << csv;
    EXPECT_EQ(std::ranges::count(csv, '\n'), 1 + list().model()->rowCount());
#ifndef Q_OS_WIN // the dialog itself lets no such name through there
    boxes.expectBox(QMessageBox::Critical, Text::ListNotSaved);
    save("/dev/null/hosts.csv");
#endif
}

TEST_F(ListTest, WidthsAndOrderAreKeptForEachList) {
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

TEST_F(ListTest, ContextMenusHoldTheNodesCommands) {
    logIn();
    const auto menuAt = [this](QWidget* viewport, const QPoint& place) {
        QContextMenuEvent wanted(QContextMenuEvent::Mouse, place, viewport->mapToGlobal(place));
        QApplication::sendEvent(viewport, &wanted);
        std::string entries;
        auto* menu = window().findChild<QMenu*>("ContextMenu");
        for (const QAction* entry : menu->actions())
            entries += (entry == menu->defaultAction() ? "*" : "") +
                       entry->objectName().toStdString() + ' ';
        menu->close();
        return entries;
    };
    const std::string rows = "  CopyRows SelectRows FilterRows SortRows FitColumns SaveCsv ";
    clickNode("schedule");
    EXPECT_EQ(menuAt(list().viewport(), placeOf(0)), "AddMenu DeleteMenu *PropertiesMenu" + rows);
    ConfigTree* tree = window().tree();
    const auto nodeMenu = [&](const char* key) {
        clickNode(key);
        return menuAt(tree->viewport(), tree->visualItemRect(node(key)).center());
    };
    EXPECT_EQ(nodeMenu("logs"), "PropertiesMenu *Toggmenu ");
    EXPECT_EQ(nodeMenu("outbox"), "DeleteMenu Refreshmenu ");
    EXPECT_EQ(nodeMenu("loginaccount"), "PropertiesMenu ");
}

} // namespace
} // namespace tollwick
