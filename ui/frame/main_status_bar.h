// The status bar with its panel "info", what it shows while a longer work goes on, and the
// hourglass pointer.
#pragma once

#include "base/progress.h"
#include "base/string_table.h"

#include <QLabel>
#include <QProgressBar>
#include <QStatusBar>
#include <QTimer>

namespace tollwick {

class MainStatusBar : public QStatusBar, public Progress {
    Q_OBJECT
public:
    explicit MainStatusBar(QWidget* parent = nullptr);

    // The texts that it shows of its own.
    void setTexts(const StringTable& texts);

    void setInfo(std::string_view text) override;
    void setBusy(bool busy) override;
    void setCount(std::optional<WorkCount> count) override;
    // Says behind the text of the panel that the wait can be given up.
    void offerGiveUp(bool offered);

private:
    void showInfo();
    void showCount();

    QLabel* info_;
    QLabel* count_label_;
    QProgressBar* busy_bar_;
    QString text_; // of the panel, without the hint
    QString give_up_hint_;
    QString stop_hint_;
    bool is_give_up_offered_ = false;
    WorkCount count_;   // of the work that is going on
    QTimer show_count_; // runs while there is one
};

} // namespace tollwick
