// What can be done with the list itself, whatever it shows: copying, saving, selecting and filtering rows.
#pragma once

#include "ui/main/console_context.h"

#include <QAction>

namespace tollwick {

class FilterBar;
class ListView;

class ListActions : public QObject {
    Q_OBJECT
public:
    // The actions become the window's and the list's, with their keys.
    ListActions(ConsoleContext& context, ListView& list, FilterBar& filter, QWidget* window);

    QAction* CopyRows;
    QAction* SelectRows;
    QAction* FilterRows;
    QAction* SaveCsv;

private:
    QAction* add(const char* name, Text caption, QKeySequence::StandardKey key, QWidget* owner,
                 void (ListActions::*handler)());
    void copy();
    void selectAll();
    void filter();
    // Saves the selected rows, or all that are shown when at most one is selected.
    void save();
    void followRows();

    ConsoleContext& context_;
    ListView& list_;
    FilterBar& filter_;
    QWidget* window_;
};

} // namespace tollwick
