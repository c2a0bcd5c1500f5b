#include "tests/support/temporary_folder.h"
#include "ui/main/help_window.h"

#include <QAction>
#include <QLineEdit>
#include <QListWidget>
#include <QTest>
#include <QTextBrowser>
#include <QToolButton>
#include <QTreeWidget>
#include <gtest/gtest.h>

namespace tollwick {
namespace {

constexpr std::string_view kTopics = "@topic start\n"
                                     "@title Översikt\n"
                                     "@keywords overview, common\n"
                                     "See [login](login) and [nothing](gone).\n"
                                     "@topic login\n"
                                     "@title Logging in\n"
                                     "@keywords password, common\n"
                                     "# First steps\n"
                                     "Type the **password**.\n";
constexpr std::string_view kContents = "Getting started\n"
                                       "  Overview = start\n"
                                       "  Logging in = login\n";

class HelpWindowTest : public testing::Test {
protected:
    HelpWindowTest() {
        folder_.write("Tollwick.hlp", kTopics);
        folder_.write("Tollwick.cnt", kContents);
    }

    bool open() { return help_.open(folder_.text("Tollwick.hlp"), folder_.text("Tollwick.cnt")); }

    template <class Widget>
    Widget* find(const char* name) {
        auto* widget = help_.findChild<Widget*>(name);
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    }
    // The first line of the page.
    std::string heading() {
        return find<QTextBrowser>("HelpPage")->toPlainText().section('\n', 0, 0).toStdString();
    }
    std::string selectedInContents() {
        const auto items = find<QTreeWidget>("HelpContents")->selectedItems();
        return items.isEmpty() ? "" : items.first()->text(0).toStdString();
    }
    void press(Qt::Key key) {
        QTest::keyClick(&help_, key, key == Qt::Key_Escape ? Qt::NoModifier : Qt::AltModifier);
    }
    bool isEnabled(const char* button) { return find<QToolButton>(button)->isEnabled(); }

    TemporaryFolder folder_;
    HelpWindow help_{StringTable(kEnglish)};
};

TEST_F(HelpWindowTest, TellsThatTheHelpIsMissing) {
    EXPECT_FALSE(help_.open(folder_.text("missing.hlp"), folder_.text("Tollwick.cnt")));
    EXPECT_EQ(heading(), "The help file could not be found.");
    help_.showTopic("login");
    EXPECT_EQ(heading(), "The help file could not be found.");
    EXPECT_TRUE(open());
    EXPECT_EQ(heading(), "Översikt");
    // Contents are made from the topics when their file is missing.
    EXPECT_TRUE(help_.open(folder_.text("Tollwick.hlp"), folder_.text("missing.cnt")));
    EXPECT_EQ(selectedInContents(), "Översikt");
}

TEST_F(HelpWindowTest, ShowsATopicOrTheFirstOne) {
    ASSERT_TRUE(open());
    help_.showTopic("login");
    EXPECT_EQ(heading(), "First steps");
    EXPECT_EQ(selectedInContents(), "Logging in");
    help_.showTopic("gone");
    EXPECT_EQ(heading(), "Översikt");
    EXPECT_EQ(selectedInContents(), "Overview");
}

TEST_F(HelpWindowTest, ContentsIndexAndSearchLeadToTopics) {
    ASSERT_TRUE(open());
    auto* contents = find<QTreeWidget>("HelpContents");
    contents->setCurrentItem(contents->topLevelItem(0)->child(1));
    EXPECT_EQ(heading(), "First steps");
    contents->setCurrentItem(contents->topLevelItem(0));
    EXPECT_EQ(heading(), "First steps") << "a heading has no page";

    auto* index = find<QListWidget>("HelpIndex");
    std::vector<std::string> rows;
    for (int i = 0; i < index->count(); ++i)
        rows.push_back(index->item(i)->text().toStdString());
    EXPECT_EQ(rows, (std::vector<std::string>{"common – Översikt", "common – Logging in",
                                              "overview", "password"}));
    find<QLineEdit>("HelpIndexFilter")->setText("OVER");
    EXPECT_TRUE(index->item(3)->isHidden());
    ASSERT_FALSE(index->item(2)->isHidden());
    index->setCurrentRow(2);
    EXPECT_EQ(heading(), "Översikt");

    auto* words = find<QLineEdit>("HelpSearchText");
    auto* results = find<QListWidget>("HelpSearchResults");
    words->setText("PASSWORD type");
    ASSERT_EQ(results->count(), 1);
    EXPECT_EQ(heading(), "Översikt") << "typing does not turn the page";
    QTest::keyClick(words, Qt::Key_Return);
    EXPECT_EQ(heading(), "First steps");
    words->setText("översikt");
    ASSERT_EQ(results->count(), 1);
    EXPECT_EQ(results->item(0)->text(), "Översikt");
}

TEST_F(HelpWindowTest, LinksAreFollowedAndTracedBack) {
    ASSERT_TRUE(open());
    help_.show();
    help_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&help_));
    auto* page = find<QTextBrowser>("HelpPage");
    EXPECT_FALSE(isEnabled("HelpBack"));
    emit page->anchorClicked(QUrl("gone"));
    EXPECT_EQ(heading(), "Översikt");
    emit page->anchorClicked(QUrl("login"));
    EXPECT_EQ(heading(), "First steps");

    EXPECT_TRUE(isEnabled("HelpBack"));
    EXPECT_FALSE(isEnabled("HelpForward"));
    press(Qt::Key_Left);
    EXPECT_EQ(heading(), "Översikt");
    EXPECT_EQ(selectedInContents(), "Overview");
    press(Qt::Key_Left);
    EXPECT_TRUE(isEnabled("HelpForward"));
    press(Qt::Key_Right);
    EXPECT_EQ(heading(), "First steps");
    // A new way forward replaces the old one.
    press(Qt::Key_Left);
    emit page->anchorClicked(QUrl("login"));
    EXPECT_FALSE(isEnabled("HelpForward"));

    press(Qt::Key_Escape);
    EXPECT_FALSE(help_.isVisible());
}

} // namespace
} // namespace tollwick
