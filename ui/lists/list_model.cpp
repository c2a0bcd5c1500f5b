#include "ui/lists/list_model.h"

#include "ui/common/icons.h"
#include "ui/common/item_roles.h"
#include "ui/common/to_qstring.h"

#include <QTextDocument>

#include <algorithm>

namespace tollwick {

ListModel::ListModel(ErrorHandler& errors, QObject* parent)
    : QAbstractTableModel(parent), errors_(errors) {}

void ListModel::setContents(ListContents contents, const ListSort& sort, std::string filter) {
    beginResetModel();
    contents_ = std::move(contents);
    sort_ = sort;
    filter_ = std::move(filter);
    rewritten_.clear();
    cached_row_ = -1;
    order_ = makeOrder();
    endResetModel();
}

void ListModel::setFilter(std::string filter) {
    filter_ = std::move(filter);
    reorder();
}

void ListModel::sort(int column, Qt::SortOrder order) {
    const ListSort sort{column, order == Qt::DescendingOrder};
    if (sort == sort_)
        return;
    errors_.guard(Routine::FillList, [&](Integer&) {
        sort_ = sort;
        reorder();
    });
}

int ListModel::contentsRow(int shown) const {
    return order_ ? static_cast<int>(order_->at(static_cast<std::size_t>(shown))) : shown;
}

int ListModel::shownRow(int contents_row) const {
    if (!order_)
        return contents_row;
    const auto found = std::ranges::find(*order_, static_cast<std::size_t>(contents_row));
    return found == order_->end() ? -1 : static_cast<int>(found - order_->begin());
}

void ListModel::setCell(int contents_row, int column, const std::string& text) {
    if (contents_row >= static_cast<int>(contents_.row_count) || column >= columnCount() ||
        cell(contents_row, column) == text)
        return;
    rewritten_[{contents_row, column}] = text;
    if (const int shown = shownRow(contents_row); shown >= 0) {
        const QModelIndex changed = index(shown, column);
        emit dataChanged(changed, changed, {Qt::DisplayRole});
    }
    if (order_)
        reorder();
}

void ListModel::removeListRow(int contents_row, const std::function<void()>& erase) {
    const int shown = shownRow(contents_row);
    if (shown >= 0)
        beginRemoveRows({}, shown, shown);
    erase();
    --contents_.row_count;
    cached_row_ = -1;
    if (order_) {
        const auto removed = static_cast<std::size_t>(contents_row);
        std::erase(*order_, removed);
        for (std::size_t& row : *order_)
            row -= row > removed ? 1 : 0;
    }
    if (shown >= 0)
        endRemoveRows();
}

std::string ListModel::identity(int contents_row) const {
    return row(contents_row).identity;
}

int ListModel::findIdentity(const std::string& identity) const {
    for (std::size_t i = 0; i < contents_.row_count; ++i)
        if (contents_.row(i).identity == identity)
            return static_cast<int>(i);
    return -1;
}

TableRow ListModel::titles() const {
    TableRow titles;
    for (const ListColumn& column : contents_.columns)
        titles.push_back(column.title);
    return titles;
}

TableRow ListModel::cells(int shown) const {
    TableRow cells;
    for (int column = 0; column < columnCount(); ++column)
        cells.push_back(cell(contentsRow(shown), column));
    return cells;
}

int ListModel::rowCount(const QModelIndex& parent) const {
    if (parent.isValid())
        return 0;
    return static_cast<int>(order_ ? order_->size() : contents_.row_count);
}

int ListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(contents_.columns.size());
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const int contents_row = contentsRow(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return toQString(cell(contents_row, index.column()));
    case Qt::ToolTipRole: {
        // Names and addresses come from outside; none is read as markup.
        const QString text = toQString(cell(contents_row, index.column()));
        return Qt::mightBeRichText(text) ? text.toHtmlEscaped() : text;
    }
    case Qt::DecorationRole:
        return index.column() == 0 ? imageIcon(row(contents_row).image) : QVariant();
    case Qt::TextAlignmentRole:
        return contents_.columns[static_cast<std::size_t>(index.column())].is_number
                   ? QVariant(static_cast<int>(Qt::AlignRight | Qt::AlignVCenter))
                   : QVariant();
    case kKeyRole:
        return toQString(row(contents_row).key);
    case kImageRole:
        return toQString(row(contents_row).image);
    default:
        return {};
    }
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section >= columnCount())
        return {};
    const ListColumn& column = contents_.columns[static_cast<std::size_t>(section)];
    if (role == Qt::DisplayRole)
        return toQString(column.title);
    if (role == Qt::TextAlignmentRole)
        return static_cast<int>((column.is_number ? Qt::AlignRight : Qt::AlignLeft) |
                                Qt::AlignVCenter);
    return {};
}

const ListRow& ListModel::row(int contents_row) const {
    if (contents_row != cached_row_) {
        cached_ = contents_.row(static_cast<std::size_t>(contents_row));
        cached_row_ = contents_row;
    }
    return cached_;
}

std::string ListModel::cell(int contents_row, int column) const {
    const auto written = rewritten_.find({contents_row, column});
    return written != rewritten_.end()
               ? written->second
               : row(contents_row).cells.at(static_cast<std::size_t>(column));
}

std::optional<std::vector<std::size_t>> ListModel::makeOrder() const {
    if (sort_.column < 0 && filter_.empty())
        return {};
    if (rewritten_.empty())
        return orderedRows(contents_, sort_, filter_);
    ListContents as_shown = contents_;
    as_shown.cell = [this](std::size_t row, std::size_t column) {
        return cell(static_cast<int>(row), static_cast<int>(column));
    };
    return orderedRows(as_shown, sort_, filter_);
}

void ListModel::reorder() {
    emit layoutAboutToBeChanged();
    const QModelIndexList before = persistentIndexList();
    std::vector<int> rows; // of the contents
    for (const QModelIndex& index : before)
        rows.push_back(contentsRow(index.row()));
    order_ = makeOrder();
    // Where each row of the contents is shown now, looked up once for all.
    std::map<int, int> shown;
    for (int row = 0; !before.isEmpty() && row < rowCount(); ++row)
        shown[contentsRow(row)] = row;
    QModelIndexList after;
    for (qsizetype i = 0; i < before.size(); ++i) {
        const auto place = shown.find(rows[static_cast<std::size_t>(i)]);
        after.append(place == shown.end() ? QModelIndex()
                                          : index(place->second, before[i].column()));
    }
    changePersistentIndexList(before, after);
    emit layoutChanged();
}

} // namespace tollwick
