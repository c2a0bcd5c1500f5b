#include "ui/lists/filter_bar.h"

#include "ui/common/to_qstring.h"
#include "ui/lists/list_view.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QStyle>
#include <QToolButton>

namespace tollwick {

FilterBar::FilterBar(ListView& list, const StringTable& texts, QWidget* parent)
    : QWidget(parent), list_(list), text_(new QLineEdit), count_(new QLabel) {
    setObjectName("FilterBar");
    text_->setObjectName("ListFilter");
    text_->setAccessibleName(toQString(texts(Text::FilterHint)));
    text_->setPlaceholderText(toQString(texts(Text::FilterHint)));
    text_->setClearButtonEnabled(true);
    text_->installEventFilter(this);
    count_->setObjectName("FilterCount");
    auto* close = new QToolButton;
    close->setObjectName("CloseFilter");
    close->setAutoRaise(true);
    close->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    close->setAccessibleName(toQString(texts(Text::CloseFilter)));
    close->setToolTip(toQString(texts(Text::CloseFilter)));
    close->setFocusPolicy(Qt::TabFocus);

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 3, 0, 0);
    layout->addWidget(text_, 1);
    layout->addWidget(count_);
    layout->addWidget(close);
    hide();

    connect(text_, &QLineEdit::textChanged, &list_, &ListView::setFilter);
    connect(close, &QToolButton::clicked, this, &FilterBar::dismiss);
    connect(&list_, &ListView::rowsChanged, this, &FilterBar::showCount);
    // Another list starts without a filter.
    connect(&list_, &ListView::contentsReplaced, this, [this] {
        text_->clear();
        setVisible(false);
        emit toggled();
    });
}

void FilterBar::open() {
    show();
    emit toggled();
    text_->setFocus();
    text_->selectAll();
    showCount();
}

void FilterBar::dismiss() {
    text_->clear();
    hide();
    emit toggled();
    list_.setFocus();
}

bool FilterBar::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        switch (static_cast<QKeyEvent*>(event)->key()) {
        case Qt::Key_Escape:
            dismiss();
            return true;
        case Qt::Key_Down:
        case Qt::Key_Return:
        case Qt::Key_Enter:
            list_.setFocus();
            list_.selectSomeRow();
            return true;
        default:
            break;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void FilterBar::showCount() {
    if (isVisible())
        count_->setText(
            QStringLiteral("%1 / %2").arg(list_.model()->rowCount()).arg(list_.contentsCount()));
}

} // namespace tollwick
