// What can be done with the list itself, whatever it shows: copying, saving, selecting and
// filtering rows.
#pragma once

#include "ui/common/console_context.h"

#include <QAction>
#include <QMenu>

#include <memory>

namespace tollwick {

class FilterBar;
class ListView;

class ListActions : public QObject {
    Q_OBJECT
public:
    // The actions become the window's and the list's, with their keys.
    ListActions(ConsoleContext& context, ListView& list, FilterBar& filter, QWidget* window);

    // All of them in the order of a menu.
    [[nodiscard]] QList<QAction*> menuEntries() const;

    QAction* CopyRows;
    QAction* SelectRows;
    QAction* FilterRows;
    QAction* SaveCsv;
    QAction* SortRows; // with a menu of the columns
    QAction* FitColumns;

private:
    QAction* add(const char* name, Text caption, QKeySequence::StandardKey key, QWidget* owner,
                 void (ListActions::*handler)());
    void copy();
    void selectAll();
    void filter();
    void fitColumns();
    // Saves the selected rows, or all that are shown when at most one is selected.
    void save();
    void followRows();
    void fillSortMenu();

    ConsoleContext& context_;
    ListView& list_;
    FilterBar& filter_;
    QWidget* window_;
    std::unique_ptr<QMenu> sort_menu_;
};

} // namespace tollwick
