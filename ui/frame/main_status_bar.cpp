#include "ui/frame/main_status_bar.h"

#include "base/numeric.h"
#include "ui/common/to_qstring.h"

#include <QApplication>

namespace tollwick {
namespace {

// What takes less is over before it could be read; and so often the count is renewed.
constexpr int kShowEveryMs = 100;
constexpr int kBusyBarWidth = 120; // pixels

} // namespace

MainStatusBar::MainStatusBar(QWidget* parent)
    : QStatusBar(parent), info_(new QLabel(this)), count_label_(new QLabel(this)),
      busy_bar_(new QProgressBar(this)) {
    setObjectName("StatusBar");
    info_->setObjectName("info");
    info_->setTextFormat(Qt::PlainText);
    addWidget(info_, 1);
    count_label_->setObjectName("WorkCount");
    addWidget(count_label_);
    busy_bar_->setObjectName("BusyBar");
    busy_bar_->setRange(0, 0);
    busy_bar_->setTextVisible(false);
    busy_bar_->setFixedSize(kBusyBarWidth, fontMetrics().height());
    addWidget(busy_bar_);
    show_count_.callOnTimeout(this, &MainStatusBar::showCount);
    setCount({});
}

void MainStatusBar::setTexts(const StringTable& texts) {
    give_up_hint_ = toQString(texts(Text::GiveUpHint));
    stop_hint_ = toQString(texts(Text::StopHint));
    busy_bar_->setAccessibleName(toQString(texts(Text::AccessibleBusy)));
}

void MainStatusBar::setInfo(std::string_view text) {
    text_ = toQString(text);
    showInfo();
}

void MainStatusBar::offerGiveUp(bool offered) {
    is_give_up_offered_ = offered;
    showInfo();
}

void MainStatusBar::showInfo() {
    QString shown = text_;
    if (is_give_up_offered_)
        shown += u' ' + give_up_hint_;
    else if (count_.of)
        shown += u' ' + stop_hint_;
    if (info_->text() == shown)
        return;
    info_->setText(shown);
    info_->setAccessibleName(shown);
}

void MainStatusBar::setBusy(bool busy) {
    if (busy)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

void MainStatusBar::setCount(std::optional<WorkCount> count) {
    const bool was_stoppable = count_.of.has_value();
    count_ = count.value_or(WorkCount());
    if (was_stoppable != count_.of.has_value())
        showInfo();
    if (count) {
        if (!show_count_.isActive())
            show_count_.start(kShowEveryMs);
        return;
    }
    show_count_.stop();
    count_label_->hide();
    busy_bar_->hide();
}

void MainStatusBar::showCount() {
    const auto grouped = [](std::size_t number) {
        return QString::fromStdString(groupedNumber(static_cast<std::int64_t>(number)));
    };
    count_label_->setText(count_.of ? grouped(count_.done) + " / " + grouped(*count_.of)
                                    : grouped(count_.done));
    busy_bar_->setRange(0, static_cast<int>(count_.of.value_or(0)));
    busy_bar_->setValue(static_cast<int>(count_.done));
    count_label_->show();
    busy_bar_->show();
}

} // namespace tollwick
