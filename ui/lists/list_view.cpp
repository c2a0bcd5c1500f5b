#include "ui/lists/list_view.h"

#include "rules/window_placement.h"
#include "ui/common/item_roles.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScopedValueRollback>

#include <algorithm>

namespace tollwick {
namespace {

// Rows that are measured for the width of a column.
constexpr int kMeasuredRows = 100;
constexpr int kMaxColumnWidth = 20'000; // twips

} // namespace

ListView::ListView(ConsoleContext& context, QWidget* parent)
    : QTreeView(parent), context_(context), list_model_(new ListModel(context.errors, this)) {
    setObjectName("List");
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setModel(list_model_);
    header()->setStretchLastSection(false);
    header()->setResizeContentsPrecision(kMeasuredRows);
    // The third click on a title goes back to the order of the service.
    header()->setSortIndicatorClearable(true);
    header()->setSortIndicator(-1, Qt::AscendingOrder);
    setSortingEnabled(true);
    connect(header(), &QHeaderView::sectionResized, this,
            [this] { widths_changed_ = widths_changed_ || !is_laying_out_; });
    connect(header(), &QHeaderView::sortIndicatorChanged, this,
            [this] { sort_changed_ = sort_changed_ || !is_laying_out_; });
}

void ListView::showContents(std::string node_key, ListContents contents) {
    storeLayout();
    const QScopedValueRollback guard(is_laying_out_, true);
    node_key_ = std::move(node_key);
    const ListLayout layout = readListLayout(context_.settings, node_key_, contents.columns.size());
    has_stored_widths_ = !layout.widths.empty();
    filter_.clear();
    list_model_->setContents(std::move(contents), layout.sort, filter_);
    header()->setSortIndicator(layout.sort.column,
                               layout.sort.descending ? Qt::DescendingOrder : Qt::AscendingOrder);
    layOutColumns(layout.widths);
    emit contentsReplaced();
    emit rowsChanged();
}

void ListView::refill(ListContents contents, const std::string& selected_identity) {
    list_model_->setContents(std::move(contents), list_model_->sorting(), filter_);
    if (!has_stored_widths_ && !widths_changed_) {
        const QScopedValueRollback guard(is_laying_out_, true);
        layOutColumns({});
    }
    const int row = selected_identity.empty() ? -1 : list_model_->findIdentity(selected_identity);
    if (const int shown = row < 0 ? -1 : list_model_->shownRow(row); shown >= 0)
        setCurrentIndex(list_model_->index(shown, 0));
    emit rowsChanged();
}

void ListView::storeLayout() {
    if (!widths_changed_ && !sort_changed_)
        return;
    ListLayout layout;
    layout.sort = list_model_->sorting();
    if (widths_changed_ || has_stored_widths_)
        for (int section = 0; section < header()->count(); ++section)
            layout.widths.push_back(toTwips(columnWidth(section)));
    storeListLayout(context_.settings, node_key_, layout);
    widths_changed_ = sort_changed_ = false;
}

int ListView::removeRow(int contents_row, const std::function<void()>& erase) {
    const int shown = list_model_->shownRow(contents_row);
    list_model_->removeListRow(contents_row, erase);
    emit rowsChanged();
    return shown;
}

void ListView::selectShownRow(int shown) {
    const int row = std::min(shown, list_model_->rowCount() - 1);
    if (row < 0)
        return;
    setCurrentIndex(list_model_->index(row, 0));
    scrollTo(currentIndex());
}

void ListView::selectContentsRow(int contents_row) {
    if (const int shown = list_model_->shownRow(contents_row); shown >= 0)
        selectShownRow(shown);
}

void ListView::setFilter(const QString& text) {
    context_.errors.guard(Routine::FillList, [&](Integer&) {
        filter_ = text.toStdString();
        list_model_->setFilter(filter_);
        if (currentIndex().isValid())
            scrollTo(currentIndex());
        emit rowsChanged();
    });
}

void ListView::selectSomeRow() {
    if (selectionModel()->selection().isEmpty() && list_model_->rowCount() > 0)
        setCurrentIndex(list_model_->index(0, 0));
}

int ListView::shownSelectedRow() const {
    int row = -1;
    // By ranges: this is asked many times a second, and all of a long list may be selected.
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        if (range.height() != 1 || (row >= 0 && range.top() != row))
            return -1;
        row = range.top();
    }
    return row;
}

int ListView::selectedRow() const {
    const int shown = shownSelectedRow();
    return shown < 0 ? -1 : list_model_->contentsRow(shown);
}

std::size_t ListView::selectedCount() const {
    std::size_t count = 0;
    for (const QItemSelectionRange& range : selectionModel()->selection())
        count += static_cast<std::size_t>(range.height());
    return count;
}

std::vector<int> ListView::selectedContentsRows() const {
    std::vector<int> shown;
    for (const QModelIndex& index : selectionModel()->selectedRows())
        shown.push_back(index.row());
    std::ranges::sort(shown);
    for (int& row : shown)
        row = list_model_->contentsRow(row);
    return shown;
}

std::string ListView::selectedKey() const {
    const int shown = shownSelectedRow();
    return shown < 0 ? std::string()
                     : list_model_->index(shown, 0).data(kKeyRole).toString().toStdString();
}

std::string ListView::selectedIdentity() const {
    const int row = selectedRow();
    return row < 0 ? std::string() : list_model_->identity(row);
}

std::vector<TableRow> ListView::shownRows() const {
    std::vector<TableRow> rows;
    for (int row = 0; row < list_model_->rowCount(); ++row)
        rows.push_back(list_model_->cells(row));
    return rows;
}

std::vector<TableRow> ListView::selectedRows() const {
    QModelIndexList selected = selectionModel()->selectedRows();
    std::sort(selected.begin(), selected.end());
    std::vector<TableRow> rows;
    for (const QModelIndex& index : selected)
        rows.push_back(list_model_->cells(index.row()));
    return rows;
}

void ListView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Delete &&
        (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier) {
        emit deletePressed();
    } else if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) &&
               selectedRow() >= 0) {
        emit rowActivated();
    } else {
        QTreeView::keyPressEvent(event);
    }
}

void ListView::mouseDoubleClickEvent(QMouseEvent* event) {
    QTreeView::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton && indexAt(event->position().toPoint()).isValid())
        emit rowActivated();
}

void ListView::contextMenuEvent(QContextMenuEvent* event) {
    const bool by_keyboard = event->reason() == QContextMenuEvent::Keyboard;
    emit contextMenuWanted(by_keyboard
                               ? viewport()->mapToGlobal(visualRect(currentIndex()).bottomLeft())
                               : event->globalPos());
}

void ListView::layOutColumns(const std::vector<int>& stored_widths) {
    const std::vector<ListColumn>& columns = list_model_->contents().columns;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const int section = static_cast<int>(i);
        if (!stored_widths.empty()) {
            setColumnWidth(section, toPixels(stored_widths[i]));
            continue;
        }
        resizeColumnToContents(section);
        // A given width holds unless it would cut a text off.
        const int needed = std::max(columnWidth(section), toPixels(columns[i].width));
        setColumnWidth(section, std::min(needed, toPixels(kMaxColumnWidth)));
    }
}

} // namespace tollwick
