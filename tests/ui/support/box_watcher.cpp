#include "tests/ui/support/box_watcher.h"

#include "app/error_handler.h"

#include <QAbstractButton>
#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

namespace tollwick {
namespace {

std::string nameOf(QMessageBox::Icon icon) {
    switch (icon) {
    case QMessageBox::Question:
        return "question";
    case QMessageBox::Warning:
        return "exclamation";
    case QMessageBox::Critical:
        return "critical";
    default:
        return "plain";
    }
}

std::string describe(QMessageBox::Icon icon, const std::string& title, const std::string& text,
                     const std::string& buttons) {
    return nameOf(icon) + " [" + title + "]: " + text + ' ' + buttons;
}

std::string describe(const QMessageBox& box) {
    std::string buttons;
    for (const auto& [button, name] :
         {std::pair{QMessageBox::Ok, "Ok"}, {QMessageBox::Yes, "Yes"}, {QMessageBox::No, "No"}})
        if (box.button(button))
            buttons +=
                box.button(button) == box.defaultButton() ? '(' + std::string(name) + ')' : name;
    return describe(box.icon(), box.windowTitle().toStdString(), box.text().toStdString(), buttons);
}

} // namespace

BoxWatcher::BoxWatcher() {
    QApplication::instance()->installEventFilter(this);
}

BoxWatcher::~BoxWatcher() {
    for (const Expectation& left : expected_)
        ADD_FAILURE() << "Box that never came: " << left.box;
}

void BoxWatcher::expectBox(QMessageBox::Icon icon, const std::string& text, Meanwhile meanwhile) {
    expected_.push_back({describe(icon, std::string(kProgramName), text, "Ok"), QMessageBox::Ok,
                         std::move(meanwhile)});
}

void BoxWatcher::expectQuestion(const std::string& text, QMessageBox::StandardButton pressed,
                                Meanwhile meanwhile) {
    expected_.push_back(
        {describe(QMessageBox::Question, std::string(kProgramName), text, "Yes(No)"), pressed,
         std::move(meanwhile)});
}

bool BoxWatcher::eventFilter(QObject* watched, QEvent* event) {
    // Answered from the box's own event loop, once it is up.
    if (event->type() == QEvent::Show)
        if (auto* box = qobject_cast<QMessageBox*>(watched))
            QTimer::singleShot(0, box, [this, box] { answer(*box); });
    return false;
}

void BoxWatcher::answer(QMessageBox& box) {
    if (expected_.empty()) {
        ADD_FAILURE() << "Unexpected box: " << describe(box);
        box.reject();
        return;
    }
    const Expectation next = std::move(expected_.front());
    expected_.pop_front();
    EXPECT_EQ(describe(box), next.box);
    if (next.meanwhile)
        next.meanwhile(box);
    if (QAbstractButton* button = box.button(next.pressed))
        QTest::mouseClick(button, Qt::LeftButton);
    if (box.isVisible()) {
        ADD_FAILURE() << "Box that cannot be answered: " << describe(box);
        box.reject();
    }
}

} // namespace tollwick
