#include "ui/lists/list_actions.h"

#include "base/files.h"
#include "ui/common/file_filter.h"
#include "ui/lists/filter_bar.h"
#include "ui/lists/list_view.h"

#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QHeaderView>

namespace tollwick {
namespace {

constexpr const char* kCsvSuffix = ".csv";

} // namespace

ListActions::ListActions(ConsoleContext& context, ListView& list, FilterBar& filter,
                         QWidget* window)
    : QObject(window), context_(context), list_(list), filter_(filter), window_(window),
      sort_menu_(std::make_unique<QMenu>()) {
    CopyRows = add("CopyRows", Text::CopyRows, QKeySequence::Copy, &list, &ListActions::copy);
    SelectRows = add("SelectRows", Text::SelectRows, QKeySequence::SelectAll, &list,
                     &ListActions::selectAll);
    FilterRows =
        add("FilterRows", Text::FilterRows, QKeySequence::Find, window, &ListActions::filter);
    SaveCsv = add("SaveCsv", Text::SaveCsv, QKeySequence::Save, window, &ListActions::save);
    FitColumns =
        add("FitColumns", Text::FitColumns, QKeySequence::ZoomIn, &list, &ListActions::fitColumns);
    SortRows = sort_menu_->menuAction();
    SortRows->setObjectName("SortRows");
    sort_menu_->setTitle(context.caption(Text::SortRows));
    connect(sort_menu_.get(), &QMenu::aboutToShow, this, &ListActions::fillSortMenu);
    connect(&list, &ListView::rowsChanged, this, &ListActions::followRows);
    followRows();
}

QAction* ListActions::add(const char* name, Text caption, QKeySequence::StandardKey key,
                          QWidget* owner, void (ListActions::*handler)()) {
    auto* action = new QAction(context_.caption(caption), this);
    action->setObjectName(name);
    action->setShortcut(key);
    if (owner == &list_)
        action->setShortcutContext(Qt::WidgetShortcut);
    owner->addAction(action);
    connect(action, &QAction::triggered, this, [this, handler] {
        context_.errors.guard(Routine::FillList, [&](Integer&) { (this->*handler)(); });
    });
    return action;
}

void ListActions::followRows() {
    const bool has_list = list_.model()->columnCount() > 0;
    for (QAction* action : {CopyRows, SelectRows, SaveCsv, FitColumns, SortRows})
        action->setEnabled(has_list && list_.model()->rowCount() > 0);
    FilterRows->setEnabled(has_list);
}

QList<QAction*> ListActions::menuEntries() const {
    return {CopyRows, SelectRows, FilterRows, SortRows, FitColumns, SaveCsv};
}

void ListActions::fillSortMenu() {
    sort_menu_->clear();
    const QHeaderView* header = list_.header();
    QAction* none = sort_menu_->addAction(context_.caption(Text::ServiceOrder));
    none->setCheckable(true);
    none->setChecked(header->sortIndicatorSection() < 0);
    connect(none, &QAction::triggered, this,
            [this] { list_.sortByColumn(-1, Qt::AscendingOrder); });
    sort_menu_->addSeparator();
    for (int column = 0; column < header->count(); ++column) {
        const bool is_sorted = header->sortIndicatorSection() == column;
        QAction* entry =
            sort_menu_->addAction(list_.model()->headerData(column, Qt::Horizontal).toString());
        entry->setCheckable(true);
        entry->setChecked(is_sorted);
        // As a click on the title: the other way round where it is sorted by already.
        const Qt::SortOrder order = is_sorted && header->sortIndicatorOrder() == Qt::AscendingOrder
                                        ? Qt::DescendingOrder
                                        : Qt::AscendingOrder;
        connect(entry, &QAction::triggered, this,
                [this, column, order] { list_.sortByColumn(column, order); });
    }
}

void ListActions::fitColumns() {
    for (int column = 0; column < list_.header()->count(); ++column)
        list_.resizeColumnToContents(column);
}

void ListActions::copy() {
    const std::vector<TableRow> rows = list_.selectedRows();
    if (!rows.empty())
        QApplication::clipboard()->setText(toQString(tabSeparated(rows)));
}

void ListActions::selectAll() {
    list_.selectAll();
}

void ListActions::filter() {
    filter_.open();
}

void ListActions::save() {
    std::vector<TableRow> rows = list_.selectedRows();
    if (rows.size() < 2)
        rows = list_.shownRows();
    rows.insert(rows.begin(), list_.titles());

    QFileDialog dialog(window_, context_.caption(Text::SaveCsv).remove('&'));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(kCsvSuffix);
    dialog.setNameFilter(fileFilter(context_.text(Text::SaveCsvFilter)));
    dialog.selectFile(QString::fromStdString(list_.nodeKey()) + kCsvSuffix);
    if (dialog.exec() != QDialog::Accepted)
        return;
    const std::string file = dialog.selectedFiles().constFirst().toStdString();
    if (!replaceFile(toPath(file), commaSeparated(rows)))
        context_.prompter.critical(context_.text(Text::ListNotSaved));
}

} // namespace tollwick
