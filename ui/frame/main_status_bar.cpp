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
    : QStatusBar(parent), info_(new QLabel(this)), fetched_(new QLabel(this)),
      busy_bar_(new QProgressBar(this)), give_up_hint_(new QLabel(this)) {
    setObjectName("StatusBar");
    info_->setObjectName("info");
    info_->setTextFormat(Qt::PlainText);
    addWidget(info_, 1);
    fetched_->setObjectName("FetchedEntries");
    addWidget(fetched_);
    busy_bar_->setObjectName("BusyBar");
    busy_bar_->setRange(0, 0);
    busy_bar_->setTextVisible(false);
    busy_bar_->setFixedSize(kBusyBarWidth, fontMetrics().height());
    addWidget(busy_bar_);
    give_up_hint_->setObjectName("GiveUpHint");
    addWidget(give_up_hint_);
    show_fetched_.callOnTimeout(this, &MainStatusBar::showFetched);
    setFetched({});
}

void MainStatusBar::setTexts(const StringTable& texts) {
    give_up_hint_->setText(toQString(texts(Text::GiveUpHint)));
    busy_bar_->setAccessibleName(toQString(texts(Text::AccessibleBusy)));
}

void MainStatusBar::setInfo(std::string_view text) {
    const QString shown = toQString(text);
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

void MainStatusBar::setFetched(std::optional<std::size_t> entries) {
    entries_ = entries.value_or(0);
    if (entries) {
        if (!show_fetched_.isActive())
            show_fetched_.start(kShowEveryMs);
        return;
    }
    show_fetched_.stop();
    for (QWidget* part : std::initializer_list<QWidget*>{fetched_, busy_bar_, give_up_hint_})
        part->hide();
}

void MainStatusBar::showFetched() {
    fetched_->setText(QString::fromStdString(groupedNumber(static_cast<std::int64_t>(entries_))));
    for (QWidget* part : std::initializer_list<QWidget*>{fetched_, busy_bar_, give_up_hint_})
        part->show();
}

} // namespace tollwick
