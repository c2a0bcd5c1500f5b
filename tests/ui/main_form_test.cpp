#include "tests/ui/support/console_test.h"

#include <QMouseEvent>
#include <QScreen>

namespace tollwick {
namespace {

class MainFormTest : public ConsoleTest {
protected:
    static constexpr std::array kPlacement{&setting::WindowStateRead, &setting::WindowXpos,
                                           &setting::WindowYpos,      &setting::WindowXsize,
                                           &setting::WindowYsize,     &setting::SplitterPos};
    using Placement = std::array<int, kPlacement.size()>; // in their order, in twips

    void startAt(const Placement& placement) {
        for (std::size_t i = 0; i < placement.size(); ++i)
            set(*kPlacement[i], std::to_string(placement[i]));
        ASSERT_TRUE(start());
    }
    std::string placement() {
        std::string numbers;
        for (const Setting* each : kPlacement)
            numbers += stored(*each) + ' ';
        return numbers;
    }
    QRect place() { return {window().pos(), window().size()}; } // in pixels
    int treeWidth() { return child(window(), "Tree")->width(); }
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
    EXPECT_EQ(place(), QRect(0, 0, 496, 349)) << "the first time";
    EXPECT_EQ(treeWidth(), 199);
    startAt({0, 0, 0, 7110, 4455, 2985}); // the design size at zero is centred
    EXPECT_NEAR(window().x(), (window().screen()->size().width() - 7110 / 15) / 2, 1);
    startAt({0, 40000, 1500, 9000, 6000, 3600}); // impossible: logged and left alone
    EXPECT_EQ(window().size(), QSize(7110 / 15, 4455 / 15));
    EXPECT_NE(system_log.entries.back().find("Overflow"), std::string::npos);

    startAt({0, 3000, 1500, 9000, 6000, 3600});
    EXPECT_EQ(place(), QRect(200, 100, 600, 400));
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
    EXPECT_EQ(treeWidth(), 240) << "laid out on release";
    splitterMouse(QEvent::MouseButtonRelease, 300);
    EXPECT_FALSE(bar->isVisible());
    EXPECT_EQ(treeWidth(), 300);
    for (const auto& [key, width] : {std::pair{Qt::Key_Right, 320}, {Qt::Key_Left, 300}}) {
        QTest::keyClick(child(window(), "imgSplitter"), key);
        EXPECT_EQ(treeWidth(), width);
    }
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
    startAt({2, 3000, 1500, 9000, 6000, 3600});
    EXPECT_TRUE(window().isMaximized());
    window().close();
    EXPECT_EQ(stored(setting::WindowStateRead), "2");
}

TEST_F(MainFormTest, WebPagesAreThoseOfTheLanguage) {
    set(setting::CountryCode, "4000");
    ASSERT_TRUE(start());
    QStringList opened;
    window().open_url = [&](const QUrl& url) { opened << url.toString(); };
    trigger("CorvaleWWWMenu");
    trigger("CorvaleFaqMenu");
    EXPECT_EQ(opened.join(' '), "http://www.corvale.example/asp/index.asp?area=se&origin=se "
                                "http://www.corvale.example/asp/faq.asp?area=se&origin=se");
}

constexpr const char* kMissingText =
    "The localized text that was about to be shown, could not be found in this language. Please "
    "e-mail support and describe exactly 'when' and how this error occured!";

TEST_F(MainFormTest, WithoutTextsInItsLanguageTheWindowComesUpAsDesigned) {
    // None of them is a language, save the last, whose texts are not there yet.
    for (const char* code : {"SE", "0", "46", "2000", "40000", "7000"}) {
        SCOPED_TRACE(code);
        console.reset();
        set(setting::CountryCode, code);
        boxes.expectBox(kCritical, kMissingText);
        ASSERT_TRUE(start());
        EXPECT_EQ(action("LoginMenu")->text(), "&Login...");
        EXPECT_TRUE(boxes.done());
    }
    boxes.expectBox(kCritical, kMissingText);
    trigger("LoginMenu");
    QString opened;
    window().open_url = [&](const QUrl& url) { opened = url.toString(); };
    trigger("CorvaleFaqMenu");
    EXPECT_EQ(opened, "http://www.corvale.example/asp/faq.asp?area=eu&origin=es");
    // Before there is a folder to log into, what fails goes to the system's log alone.
    EXPECT_EQ(std::ranges::count_if(system_log.entries,
                                    [](const std::string& entry) {
                                        return entry.find("Overflow") != std::string::npos;
                                    }),
              1);
}

} // namespace
} // namespace tollwick
