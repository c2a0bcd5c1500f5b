// Answers message boxes in advance: the test names the boxes that it expects, in their order. One
// that comes unexpected or looks otherwise, and one that is left over at the end, fails the test.
#pragma once

#include "app/error_handler.h"

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

class BoxWatcher : public QObject {
public:
    // What happens while the box is up, before it is answered.
    using Meanwhile = std::function<void(QMessageBox&)>;

    BoxWatcher() { QApplication::instance()->installEventFilter(this); }
    ~BoxWatcher() override {
        for (const Expectation& left : expected_)
            ADD_FAILURE() << "Box that never came: " << left.box;
    }

    // A box with the whole of this text and one button, which is clicked.
    void expectBox(QMessageBox::Icon icon, const std::string& text, Meanwhile meanwhile = {}) {
        expected_.push_back({describe(icon, text, "Ok"), QMessageBox::Ok, std::move(meanwhile)});
    }
    // A question whose default button is No, unless told otherwise.
    void expectQuestion(const std::string& text, QMessageBox::StandardButton pressed,
                        Meanwhile meanwhile = {}, QMessageBox::Icon icon = QMessageBox::Question,
                        QMessageBox::StandardButton default_button = kNo) {
        expected_.push_back({describe(icon, text, default_button == kYes ? "(Yes)No" : "Yes(No)"),
                             pressed, std::move(meanwhile)});
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
        std::string box;
        QMessageBox::StandardButton pressed;
        Meanwhile meanwhile;
    };

    static std::string describe(QMessageBox::Icon icon, const std::string& text,
                                const std::string& buttons) {
        constexpr const char* kIcons[] = {"plain", "information", "exclamation", "critical",
                                          "question"};
        return kIcons[icon] + (": " + text) + ' ' + buttons;
    }
    static std::string describe(const QMessageBox& box) {
        std::string buttons = box.windowTitle().toStdString() == kProgramName ? "" : "title! ";
        for (const auto& [button, name] :
             {std::pair{QMessageBox::Ok, "Ok"}, {QMessageBox::Yes, "Yes"}, {QMessageBox::No, "No"}})
            if (box.button(button))
                buttons += box.button(button) == box.defaultButton() ? '(' + std::string(name) + ')'
                                                                     : name;
        return describe(box.icon(), box.text().toStdString(), buttons);
    }
    void answer(QMessageBox& box) {
        if (taken_) {
            taken_->push_back(box.text().toStdString());
            if (meanwhile_)
                meanwhile_(box);
            QAbstractButton* yes = box.button(kYes);
            return (yes ? yes : box.button(QMessageBox::Ok))->click();
        }
        if (expected_.empty()) {
            ADD_FAILURE() << "Unexpected box: " << describe(box);
            return box.reject();
        }
        const Expectation next = std::move(expected_.front());
        expected_.pop_front();
        EXPECT_EQ(describe(box), next.box);
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
