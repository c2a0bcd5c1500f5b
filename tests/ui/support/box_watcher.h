// Answers message boxes in advance: the test names the boxes that it expects, in their order. One
// that comes unexpected or looks otherwise, and one that is left over at the end, fails the test.
#pragma once

#include <QMessageBox>

#include <deque>
#include <functional>
#include <string>

namespace tollwick {

class BoxWatcher : public QObject {
public:
    // What happens while the box is up, before it is answered.
    using Meanwhile = std::function<void(QMessageBox&)>;

    BoxWatcher();
    ~BoxWatcher() override;

    // A box with the whole of this text and one button, which is clicked.
    void expectBox(QMessageBox::Icon icon, const std::string& text, Meanwhile meanwhile = {});
    // A question whose default button is No.
    void expectQuestion(const std::string& text, QMessageBox::StandardButton pressed,
                        Meanwhile meanwhile = {});
    // True when every box that was expected has come.
    [[nodiscard]] bool done() const { return expected_.empty(); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Expectation {
        std::string box;
        QMessageBox::StandardButton pressed;
        Meanwhile meanwhile;
    };

    void answer(QMessageBox& box);

    std::deque<Expectation> expected_;
};

} // namespace tollwick
