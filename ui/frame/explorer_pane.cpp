#include "ui/frame/explorer_pane.h"

#include "rules/node_keys.h"
#include "rules/window_placement.h"
#include "ui/common/to_qstring.h"
#include "ui/frame/config_tree.h"
#include "ui/lists/filter_bar.h"
#include "ui/lists/list_view.h"
#include "ui/monitor/monitor_panel.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace tollwick {
namespace {

constexpr int kStripWidth = 6;     // pixels
constexpr int kKeyStep = 300;      // twips that an arrow key moves the bar by
constexpr int kBarShortening = 20; // twips

} // namespace

ExplorerPane::ExplorerPane(ConsoleContext& context, QWidget* parent)
    : QWidget(parent), tree_(new ConfigTree(this)), list_(new ListView(context, this)),
      monitor_(new MonitorPanel(context, this)),
      filter_(new FilterBar(*list_, context.texts, this)), strip_(new SplitterStrip(this)),
      bar_(new QFrame(this)) {
    monitor_->hide();
    strip_->setAccessibleName(context.caption(Text::AccessibleSplitter));
    setTabOrder(tree_, strip_);
    setTabOrder(strip_, list_);
    bar_->setObjectName("picSplitter");
    bar_->setAutoFillBackground(true);
    bar_->setBackgroundRole(QPalette::Mid);
    bar_->hide();
    connect(tree_, &QTreeWidget::itemExpanded, this, &ExplorerPane::layOut);
    connect(filter_, &FilterBar::toggled, this, &ExplorerPane::layOut);
    connect(list_, &ListView::contentsReplaced, this, [this] {
        monitor_->setVisible(list_->nodeKey() == node::UucpMonitor);
        layOut();
    });
}

int ExplorerPane::splitter() const {
    return toTwips(strip_->x());
}

void ExplorerPane::setSplitter(int twips) {
    wanted_ = twips;
    layOut();
}

void ExplorerPane::layOut() {
    const int left = toPixels(laidOutSplitter(wanted_, toTwips(width())));
    tree_->setGeometry(0, 0, left, height());
    strip_->setGeometry(left, 0, kStripWidth, height());
    const int list_left = left + kStripWidth;
    int bottom = height();
    for (QWidget* below : std::initializer_list<QWidget*>{filter_, monitor_}) {
        if (below->isHidden())
            continue;
        const int wanted = below->sizeHint().height();
        bottom -= wanted;
        below->setGeometry(list_left, bottom, width() - list_left, wanted);
    }
    list_->setGeometry(list_left, 0, width() - list_left, std::max(bottom, 0));
}

void ExplorerPane::resizeEvent(QResizeEvent*) {
    layOut();
}

void ExplorerPane::startDrag() {
    bar_->setGeometry(strip_->x(), strip_->y(), strip_->width() / 2,
                      strip_->height() - toPixels(kBarShortening));
    bar_->show();
    bar_->raise();
    splitter_moving_ = true;
}

void ExplorerPane::drag(int x) {
    if (splitter_moving_)
        bar_->move(toPixels(draggedSplitter(toTwips(x), toTwips(width()))), bar_->y());
}

void ExplorerPane::endDrag() {
    if (!splitter_moving_)
        return;
    setSplitter(toTwips(bar_->x()));
    bar_->hide();
    splitter_moving_ = false;
}

SplitterStrip::SplitterStrip(ExplorerPane* pane) : QWidget(pane), pane_(pane) {
    setObjectName("imgSplitter");
    setCursor(Qt::SplitHCursor);
    setFocusPolicy(Qt::TabFocus);
}

void SplitterStrip::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Left)
        pane_->setSplitter(pane_->splitter() - kKeyStep);
    else if (event->key() == Qt::Key_Right)
        pane_->setSplitter(pane_->splitter() + kKeyStep);
    else
        QWidget::keyPressEvent(event);
}

void SplitterStrip::focusInEvent(QFocusEvent*) {
    update();
}

void SplitterStrip::focusOutEvent(QFocusEvent*) {
    update();
}

void SplitterStrip::paintEvent(QPaintEvent*) {
    if (hasFocus())
        QPainter(this).fillRect(rect(), palette().highlight());
}

void SplitterStrip::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        pane_->startDrag();
}

void SplitterStrip::mouseMoveEvent(QMouseEvent* event) {
    pane_->drag(x() + event->position().toPoint().x());
}

void SplitterStrip::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        pane_->endDrag();
}

} // namespace tollwick
