#include "tests/ui/support/console_test.h"
#include "ui/main/window_placement.h"

#include <QApplication>
#include <QMouseEvent>
#include <QScreen>

#include <map>

namespace tollwick {
namespace {

const std::map<std::string, Setting> kPlacement = {
    {"state", setting::WindowStateRead}, {"left", setting::WindowXpos},
    {"top", setting::WindowYpos},        {"width", setting::WindowXsize},
    {"height", setting::WindowYsize},    {"splitter", setting::SplitterPos}};

class MainFormTest : public ConsoleTest {
protected:
    // "state left top width height splitter"
    void setPlacement(const std::string& numbers) {
        std::istringstream stream(numbers);
        for (const char* name : {"state", "left", "top", "width", "height", "splitter"}) {
            std::string number;
            stream >> number;
            set(kPlacement.at(name), number);
        }
    }
    std::string placement() {
        std::string numbers;
        for (const char* name : {"state", "left", "top", "width", "height", "splitter"})
            numbers += (numbers.empty() ? "" : " ") + stored(kPlacement.at(name));
        return numbers;
    }
    template <class T = QWidget>
    T* find(const char* name) {
        return window().findChild<T*>(name);
    }
    // A mouse event on the splitter, at this position of the pane.
    void splitterMouse(QEvent::Type type, int x) {
        auto* strip = find("imgSplitter");
        const QPointF position(x - strip->x(), strip->height() / 2);
        QMouseEvent event(type, position, strip->mapToGlobal(position),
                          type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, {});
        QApplication::sendEvent(strip, &event);
    }
};

TEST_F(MainFormTest, AFirstStartPlacesTheWindowAtTheTopLeft) {
    ASSERT_TRUE(start());
    EXPECT_EQ(window().windowTitle(), "Corvale Tollwick admin");
    EXPECT_EQ(window().pos(), QPoint(0, 0));
    EXPECT_EQ(window().size(), QSize(7440 / 15, 5235 / 15));
    EXPECT_EQ(find("imgSplitter")->x(), 2985 / 15);
    EXPECT_TRUE(tree().empty());
    EXPECT_EQ(info(), "");
}

TEST_F(MainFormTest, ComesBackWhereItWasLeft) {
    setPlacement("0 3000 1500 9000 6000 3600");
    ASSERT_TRUE(start());
    EXPECT_EQ(window().pos(), QPoint(200, 100));
    EXPECT_EQ(window().size(), QSize(600, 400));
    EXPECT_EQ(find("Tree")->width(), 240);

    window().move(50, 30);
    window().resize(700, 500);
    splitterMouse(QEvent::MouseButtonPress, 240);
    splitterMouse(QEvent::MouseMove, 300);
    splitterMouse(QEvent::MouseButtonRelease, 300);
    trigger("Exitmenu");
    EXPECT_EQ(ended, 1);
    EXPECT_EQ(placement(), "0 750 450 10500 7500 4500");
    ASSERT_TRUE(start());
    EXPECT_EQ(window().geometry().size(), QSize(700, 500));
    EXPECT_EQ(find("Tree")->width(), 300);
}

TEST_F(MainFormTest, AMinimizedWindowKeepsThePlacementBefore) {
    const std::string rest = " 3000 1500 9000 6000 3600";
    setPlacement("0" + rest);
    ASSERT_TRUE(start());
    window().showMinimized();
    window().close();
    EXPECT_EQ(placement(), "1" + rest);
    console.reset();

    console = std::make_unique<Console>(ConsoleEnvironment{
        store, system_log, clock, {"", folder.text("install")}, [this] { ++ended; }});
    ASSERT_TRUE(console->Main());
    EXPECT_TRUE(window().isMinimized());
    window().showNormal();
    EXPECT_EQ(window().size(), QSize(600, 400));
}

TEST_F(MainFormTest, AMaximizedWindowComesBackMaximized) {
    setPlacement("2 3000 1500 9000 6000 3600");
    ASSERT_TRUE(start());
    EXPECT_TRUE(window().isMaximized());
    window().close();
    EXPECT_EQ(stored(setting::WindowStateRead), "2");
}

TEST_F(MainFormTest, TheDesignSizeAtZeroIsCentred) {
    setPlacement("0 0 0 7110 4455 2985");
    ASSERT_TRUE(start());
    const QSize desktop = window().screen()->size();
    EXPECT_EQ(window().size(), QSize(7110 / 15, 4455 / 15));
    EXPECT_NEAR(window().x(), (desktop.width() - 7110 / 15) / 2, 1);
    EXPECT_NEAR(window().y(), (desktop.height() - 4455 / 15) / 2, 1);
}

TEST_F(MainFormTest, AnImpossiblePlacementIsLoggedAndLeftAlone) {
    setPlacement("0 40000 1500 9000 6000 3600");
    ASSERT_TRUE(start());
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(window().size(), QSize(7110 / 15, 4455 / 15));
    ASSERT_FALSE(system_log.entries.empty());
    EXPECT_NE(system_log.entries.back().find("Overflow"), std::string::npos)
        << system_log.entries.back();

    setPlacement("x y 1500z 9000.4 6000 -x");
    ASSERT_TRUE(start());
    EXPECT_EQ(window().pos(), QPoint(0, 100));
    EXPECT_EQ(window().size(), QSize(600, 400));
    EXPECT_EQ(find("Tree")->width(), 1500 / 15);
}

TEST_F(MainFormTest, TheSplitterFollowsTheMouseWithinItsMargins) {
    setPlacement("0 0 0 9000 6000 3600"); // 600 pixels wide
    ASSERT_TRUE(start());
    const struct {
        int mouse;
        int bar;
        int tree;
    } cases[] = {{320, 320, 320},
                 {-50, 500 / 15, 1500 / 15},
                 {10'000, 600 - 500 / 15, 600 - 1500 / 15},
                 {110, 110, 110}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.mouse);
        splitterMouse(QEvent::MouseMove, c.mouse);
        EXPECT_FALSE(find("picSplitter")->isVisible()) << "no button is pressed";
        splitterMouse(QEvent::MouseButtonPress, find("imgSplitter")->x() + 1);
        EXPECT_TRUE(find("picSplitter")->isVisible());
        const int width = find("Tree")->width();
        splitterMouse(QEvent::MouseMove, c.mouse);
        EXPECT_NEAR(find("picSplitter")->x(), c.bar, 1);
        EXPECT_EQ(find("Tree")->width(), width) << "laid out on release";
        splitterMouse(QEvent::MouseButtonRelease, c.mouse);
        EXPECT_FALSE(find("picSplitter")->isVisible());
        EXPECT_EQ(find("Tree")->width(), c.tree);
        EXPECT_EQ(find("imgSplitter")->x(), c.tree);
        EXPECT_EQ(find("List")->geometry().right() + 1, 600);
        EXPECT_EQ(find("List")->x(), find("imgSplitter")->geometry().right() + 1);
    }
}

TEST_F(MainFormTest, ClosingEndsTheProcessOnce) {
    logIn();
    window().close();
    EXPECT_EQ(ended, 1);
    EXPECT_TRUE(context().link.isOpen()) << "nothing is closed politely";
}

TEST_F(MainFormTest, WebPagesAreThoseOfTheLanguage) {
    const struct {
        Integer lang_base;
        const char* query;
    } cases[] = {{1000, "area=eu&origin=uk"},
                 {4000, "area=se&origin=se"},
                 {7000, "area=eu&origin=es"},
                 {10000, "area=eu&origin=uk"},
                 {19000, "area=eu&origin=nl"}};
    for (const auto& c : cases) {
        EXPECT_EQ(webAddress("faq", c.lang_base).toStdString(),
                  std::string("http://www.corvale.example/asp/faq.asp?") + c.query);
        EXPECT_EQ(webAddress("index", c.lang_base).toStdString(),
                  std::string("http://www.corvale.example/asp/index.asp?") + c.query);
    }
    set(setting::CountryCode, "4000");
    ASSERT_TRUE(start());
    std::vector<QUrl> opened;
    window().open_url = [&](const QUrl& url) { opened.push_back(url); };
    trigger("CorvaleWWWMenu");
    trigger("CorvaleFaqMenu");
    EXPECT_EQ(opened, (std::vector<QUrl>{webAddress("index", 4000), webAddress("faq", 4000)}));
}

TEST_F(MainFormTest, ALanguageWithoutTextsFailsTheStart) {
    set(setting::CountryCode, "7000");
    boxes.expectBox(QMessageBox::Critical,
                    "The localized text that was about to be shown, could not be found in this "
                    "language. Please e-mail support and describe exactly 'when' and how this "
                    "error occured!");
    boxes.expectBox(QMessageBox::Critical, "The console could not start.");
    EXPECT_FALSE(start());
    EXPECT_EQ(console->mainForm(), nullptr);
    EXPECT_EQ(ended, 0);
}

} // namespace
} // namespace tollwick
