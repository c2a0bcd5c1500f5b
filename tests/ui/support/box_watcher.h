// Answers message boxes in advance: the test names the boxes that it expects, in their order. One
// that comes unexpected or looks otherwise, and one that is left over at the end, fails the test.
#pragma once

#include "base/error_handler.h"
#include "base/string_table.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <vector>

namespace tollwick {

inline constexpr auto kCritical = QMessageBox::Critical;
inline constexpr auto kExclamation = QMessageBox::Warning;
inline constexpr auto kYes = QMessageBox::Yes;
inline constexpr auto kNo = QMessageBox::No;

// The English text as a box shows it.
inline std::string english(Text text) {
    std::string shown(StringTable(kEnglish)(text));
    std::erase(shown, '\r');
    return shown;
}

class BoxWatcher : public QObject {
public:
    // What happens while the box is up, before it is answered.
    using Meanwhile = std::function<void(QMessageBox&)>;

    BoxWatcher() { QApplication::instance()->installEventFilter(this); }
    ~BoxWatcher() override {
        for (const Expectation& left : expected_)
            ADD_FAILURE() << "Box that never came: " << left.text;
    }

    // A box with the whole of this text and one button, which is clicked.
    void expectBox(QMessageBox::Icon icon, const std::string& text, Meanwhile meanwhile = {}) {
        expected_.push_back({icon, text, QMessageBox::Ok, QMessageBox::NoButton, QMessageBox::Ok,
                             std::move(meanwhile)});
    }
    void expectBox(QMessageBox::Icon icon, Text text, Meanwhile meanwhile = {}) {
        expectBox(icon, english(text), std::move(meanwhile));
    }
    // A question whose default button is No, unless told otherwise.
    void expectQuestion(const std::string& text, QMessageBox::StandardButton pressed,
                        Meanwhile meanwhile = {}, QMessageBox::Icon icon = QMessageBox::Question,
                        QMessageBox::StandardButton default_button = kNo) {
        expected_.push_back(
            {icon, text, kYes | kNo, default_button, pressed, std::move(meanwhile)});
    }
    void expectQuestion(Text text, QMessageBox::StandardButton pressed, Meanwhile meanwhile = {},
                        QMessageBox::Icon icon = QMessageBox::Question,
                        QMessageBox::StandardButton default_button = kNo) {
        expectQuestion(english(text), pressed, std::move(meanwhile), icon, default_button);
    }
    // From now on takes any box as it comes: notes its text and presses Yes or Ok.
    void takeAll(std::vector<std::string>& texts, Meanwhile meanwhile = {}) {
        taken_ = &texts;
        meanwhile_ = std::move(meanwhile);
    }
    // True when every box that was expected has come.
    [[nodiscard]] bool done() const { return expected_.empty(); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        // Answered from the box's own event loop, once it is up.
        if (event->type() == QEvent::Show)
            if (auto* box = qobject_cast<QMessageBox*>(watched))
                QTimer::singleShot(0, box, [this, box] { answer(*box); });
        return false;
    }

private:
    struct Expectation {
        QMessageBox::Icon icon;
        std::string text;
        QMessageBox::StandardButtons buttons;
        QMessageBox::StandardButton default_button;
        QMessageBox::StandardButton pressed;
        Meanwhile meanwhile;
    };

    void answer(QMessageBox& box) {
        if (taken_) {
            taken_->push_back(box.text().toStdString());
            if (meanwhile_)
                meanwhile_(box);
            QAbstractButton* yes = box.button(kYes);
            return (yes ? yes : box.button(QMessageBox::Ok))->click();
        }
        if (expected_.empty()) {
            ADD_FAILURE() << "Unexpected box: " << box.text().toStdString();
            return box.reject();
        }
        const Expectation next = std::move(expected_.front());
        expected_.pop_front();
        EXPECT_EQ(box.text().toStdString(), next.text);
        EXPECT_EQ(box.windowTitle().toStdString(), kProgramName) << next.text;
        EXPECT_EQ(box.icon(), next.icon) << next.text;
        EXPECT_EQ(box.standardButtons(), next.buttons) << next.text;
        EXPECT_EQ(box.standardButton(box.defaultButton()), next.default_button) << next.text;
        if (next.meanwhile)
            next.meanwhile(box);
        if (QAbstractButton* button = box.button(next.pressed))
            QTest::mouseClick(button, Qt::LeftButton);
        if (box.isVisible())
            box.reject();
    }

    std::deque<Expectation> expected_;
    std::vector<std::string>* taken_ = nullptr;
    Meanwhile meanwhile_; // for those
};

} // namespace tollwick
