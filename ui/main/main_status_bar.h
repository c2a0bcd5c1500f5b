// The status bar with its panel "info", and the hourglass pointer.
#pragma once

#include "app/progress.h"

#include <QLabel>
#include <QStatusBar>

namespace tollwick {

class MainStatusBar : public QStatusBar, public Progress {
    Q_OBJECT
public:
    explicit MainStatusBar(QWidget* parent = nullptr);

    void setInfo(std::string_view text) override;
    void setBusy(bool busy) override;

private:
    QLabel* info_;
};

} // namespace tollwick
