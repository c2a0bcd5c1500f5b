#include "tests/ui/support/console_test.h"
#include "ui/main/window_placement.h"

#include <QMouseEvent>
#include <QScreen>

namespace tollwick {
namespace {

class MainFormTest : public ConsoleTest {
protected:
    static constexpr std::array kPlacement{&setting::WindowStateRead, &setting::WindowXpos,
                                           &setting::WindowYpos,      &setting::WindowXsize,
                                           &setting::WindowYsize,     &setting::SplitterPos};

    // Starts with "state left top width height splitter" stored.
    void startAt(const std::string& numbers) {
        std::istringstream stream(numbers);
        std::string number;
        for (const Setting* setting : kPlacement) {
            stream >> number;
            set(*setting, number);
        }
        ASSERT_TRUE(start());
    }
    std::string placement() {
        std::string numbers;
        for (const Setting* setting : kPlacement)
            numbers += stored(*setting) + ' ';
        return numbers;
    }
    // The window and the width of its tree, in pixels.
    std::string shown() {
        std::string numbers;
        for (const int number : {window().x(), window().y(), window().width(), window().height(),
                                 child(window(), "Tree")->width()})
            numbers += std::to_string(number) + ' ';
        return numbers;
    }
    // A mouse event on the splitter, at this position of the pane.
    void splitterMouse(QEvent::Type type, int x) {
        QWidget* strip = child(window(), "imgSplitter");
        const QPointF position(x - strip->x(), strip->height() / 2);
        QMouseEvent event(type, position, strip->mapToGlobal(position),
                          type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, {});
        QApplication::sendEvent(strip, &event);
    }
};

TEST_F(MainFormTest, StartsWhereItWasLeft) {
    ASSERT_TRUE(start());
    EXPECT_EQ(window().windowTitle(), "Corvale Tollwick admin");
    EXPECT_EQ(shown(), "0 0 496 349 199 ") << "the first time";
    startAt("0 0 0 7110 4455 2985"); // the design size at zero is centred
    EXPECT_NEAR(window().x(), (window().screen()->size().width() - 7110 / 15) / 2, 1);
    startAt("0 40000 1500 9000 6000 3600"); // impossible: logged and left alone
    EXPECT_EQ(window().size(), QSize(7110 / 15, 4455 / 15));
    EXPECT_NE(system_log.entries.back().find("Overflow"), std::string::npos);

    startAt("0 3000 1500 9000 6000 3600");
    EXPECT_EQ(shown(), "200 100 600 400 240 ");
    window().move(50, 30);
    window().resize(700, 500);
    const QWidget* bar = child(window(), "picSplitter");
    splitterMouse(QEvent::MouseMove, 300);
    EXPECT_FALSE(bar->isVisible()) << "no button is pressed";
    splitterMouse(QEvent::MouseButtonPress, 240);
    splitterMouse(QEvent::MouseMove, 10'000);
    EXPECT_NEAR(bar->x(), 700 - 500 / 15, 1) << "held within its margins";
    splitterMouse(QEvent::MouseMove, 300);
    EXPECT_TRUE(bar->isVisible());
    EXPECT_EQ(child(window(), "Tree")->width(), 240) << "laid out on release";
    splitterMouse(QEvent::MouseButtonRelease, 300);
    EXPECT_FALSE(bar->isVisible());
    EXPECT_EQ(child(window(), "Tree")->width(), 300);
    EXPECT_EQ(child(window(), "List")->geometry().right() + 1, 700);
    trigger("Exitmenu");
    EXPECT_EQ(ended, 1);
    EXPECT_EQ(placement(), "0 750 450 10500 7500 4500 ");
    // Minimized it keeps the placement before, and so it comes back.
    ASSERT_TRUE(start());
    window().showMinimized();
    window().close();
    EXPECT_EQ(placement(), "1 750 450 10500 7500 4500 ");
    ASSERT_TRUE(start());
    EXPECT_TRUE(window().isMinimized());
    window().showNormal();
    EXPECT_EQ(window().size(), QSize(700, 500));
    startAt("2 3000 1500 9000 6000 3600");
    EXPECT_TRUE(window().isMaximized());
    window().close();
    EXPECT_EQ(stored(setting::WindowStateRead), "2");
}

TEST_F(MainFormTest, WebPagesAreThoseOfTheLanguage) {
    for (const auto& [lang_base, query] : {std::pair{1000, "area=eu&origin=uk"},
                                           {4000, "area=se&origin=se"},
                                           {7000, "area=eu&origin=es"},
                                           {10000, "area=eu&origin=uk"},
                                           {19000, "area=eu&origin=nl"}})
        EXPECT_EQ(webAddress("faq", static_cast<Integer>(lang_base)).toStdString(),
                  std::string("http://www.corvale.example/asp/faq.asp?") + query);
    set(setting::CountryCode, "4000");
    ASSERT_TRUE(start());
    std::vector<QUrl> opened;
    window().open_url = [&](const QUrl& url) { opened.push_back(url); };
    trigger("CorvaleWWWMenu");
    trigger("CorvaleFaqMenu");
    EXPECT_EQ(opened, (std::vector<QUrl>{webAddress("index", 4000), webAddress("faq", 4000)}));
    // A language without texts fails the start.
    set(setting::CountryCode, "7000");
    boxes.expectBox(kCritical, "The localized text that was about to be shown, could not be found "
                               "in this language. Please e-mail support and describe exactly "
                               "'when' and how this error occured!");
    boxes.expectBox(kCritical, "The console could not start.");
    EXPECT_FALSE(start());
    EXPECT_EQ(console->mainForm(), nullptr);
    EXPECT_EQ(ended, 0);
}

} // namespace
} // namespace tollwick
