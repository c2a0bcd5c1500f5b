// The tree on the left, the list on the right with what belongs to it below, and the bar between
// them that can be dragged.
#pragma once

#include "ui/common/console_context.h"

#include <QFrame>

namespace tollwick {

class ConfigTree;
class FilterBar;
class ListView;
class MonitorPanel;
class SplitterStrip;

class ExplorerPane : public QWidget {
    Q_OBJECT
public:
    ExplorerPane(ConsoleContext& context, QWidget* parent);

    [[nodiscard]] ConfigTree* tree() const { return tree_; }
    [[nodiscard]] ListView* list() const { return list_; }
    [[nodiscard]] FilterBar* filter() const { return filter_; }
    [[nodiscard]] MonitorPanel* monitor() const { return monitor_; }

    // The left edge of the splitter bar in twips.
    [[nodiscard]] int splitter() const;
    void setSplitter(int twips);

    // Lays tree, bar and list out at the bar's position.
    void layOut();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    friend class SplitterStrip;
    // `x` is a position within the pane, in pixels.
    void startDrag();
    void drag(int x);
    void endDrag();

    ConfigTree* tree_;
    ListView* list_;
    MonitorPanel* monitor_; // below the list while that shows the monitor's rows
    FilterBar* filter_;     // below all, while it is open
    SplitterStrip* strip_;
    QFrame* bar_;       // drawn while the splitter is dragged
    int wanted_ = 2985; // twips; what the user chose, before the window's margins
    bool splitter_moving_ = false;
};

// The area at which the splitter is grabbed.
class SplitterStrip : public QWidget {
    Q_OBJECT
public:
    explicit SplitterStrip(ExplorerPane* pane);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    ExplorerPane* pane_;
};

} // namespace tollwick
