#include "ui/main/main_status_bar.h"

#include <QApplication>

namespace tollwick {

MainStatusBar::MainStatusBar(QWidget* parent) : QStatusBar(parent), info_(new QLabel(this)) {
    setObjectName("StatusBar");
    info_->setObjectName("info");
    info_->setTextFormat(Qt::PlainText);
    addWidget(info_, 1);
}

void MainStatusBar::setInfo(std::string_view text) {
    const QString shown = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
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

} // namespace tollwick
