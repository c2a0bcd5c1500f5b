// The status bar with its panel "info", what it shows while a list is fetched, and the hourglass
// pointer.
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
    void setFetched(std::optional<std::size_t> entries) override;

private:
    void showFetched();

    QLabel* info_;
    QLabel* fetched_;
    QProgressBar* busy_bar_;
    QLabel* give_up_hint_;
    std::size_t entries_ = 0; // that have come so far
    QTimer show_fetched_;     // runs while a list is fetched
};

} // namespace tollwick
