#include "tests/support/temporary_folder.h"
#include "ui/main/help_window.h"

#include <QLineEdit>
#include <QListWidget>
#include <QTest>
#include <QTextBrowser>
#include <QToolButton>
#include <QTreeWidget>
#include <gtest/gtest.h>

namespace tollwick {
namespace {

class HelpWindowTest : public testing::Test {
protected:
    HelpWindowTest() {
        folder_.write("Tollwick.hlp", "@topic start\n@title Översikt\n@keywords overview, common\n"
                                      "See [login](login) and [nothing](gone).\n"
                                      "@topic login\n@title Logging in\n"
                                      "@keywords password, common\n"
                                      "# First steps\nType the **password**.\n");
        folder_.write("Tollwick.cnt",
                      "Getting started\n  Overview = start\n  Logging in = login\n");
    }
    bool open(const char* help, const char* contents = "Tollwick.cnt") {
        return help_.open(folder_.text(help), folder_.text(contents));
    }
    template <class Widget>
    Widget* find(const char* name) {
        return help_.findChild<Widget*>(name);
    }
    // The first line of the page, and what is selected in the contents.
    std::string shown() {
        const auto items = find<QTreeWidget>("HelpContents")->selectedItems();
        return find<QTextBrowser>("HelpPage")->toPlainText().section('\n', 0, 0).toStdString() +
               (items.isEmpty() ? "" : " / " + items.first()->text(0).toStdString());
    }

    TemporaryFolder folder_;
    HelpWindow help_{StringTable(kEnglish)};
};

TEST_F(HelpWindowTest, ShowsATopicOrTheFirstOneOrThatThereIsNone) {
    EXPECT_FALSE(open("missing.hlp"));
    help_.showTopic("login");
    EXPECT_EQ(shown(), "The help file could not be found.");
    EXPECT_TRUE(open("Tollwick.hlp", "missing.cnt"));
    EXPECT_EQ(shown(), "Översikt / Översikt") << "contents made from the topics";
    EXPECT_TRUE(open("Tollwick.hlp"));
    help_.showTopic("login");
    EXPECT_EQ(shown(), "First steps / Logging in");
    help_.showTopic("gone");
    EXPECT_EQ(shown(), "Översikt / Overview");
}

TEST_F(HelpWindowTest, ContentsIndexSearchAndLinksLeadToTopics) {
    ASSERT_TRUE(open("Tollwick.hlp"));
    auto* contents = find<QTreeWidget>("HelpContents");
    contents->setCurrentItem(contents->topLevelItem(0)->child(1));
    EXPECT_EQ(shown(), "First steps / Logging in");
    auto* index = find<QListWidget>("HelpIndex");
    ASSERT_EQ(index->count(), 4);
    EXPECT_EQ(index->item(1)->text(), "common – Logging in");
    find<QLineEdit>("HelpIndexFilter")->setText("OVER");
    EXPECT_TRUE(index->item(3)->isHidden());
    index->setCurrentRow(2);
    EXPECT_EQ(shown(), "Översikt / Overview");
    auto* words = find<QLineEdit>("HelpSearchText");
    words->setText("PASSWORD type");
    ASSERT_EQ(find<QListWidget>("HelpSearchResults")->count(), 1);
    QTest::keyClick(words, Qt::Key_Return);
    EXPECT_EQ(shown(), "First steps / Logging in");

    help_.show();
    help_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&help_));
    help_.showTopic("start");
    emit find<QTextBrowser>("HelpPage")->anchorClicked(QUrl("login"));
    EXPECT_FALSE(find<QToolButton>("HelpForward")->isEnabled());
    QTest::keyClick(&help_, Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(shown(), "Översikt / Overview");
    QTest::keyClick(&help_, Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(shown(), "First steps / Logging in");
    QTest::keyClick(&help_, Qt::Key_Escape);
    EXPECT_FALSE(help_.isVisible());
}

} // namespace
} // namespace tollwick
