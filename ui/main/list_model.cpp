#include "ui/main/list_model.h"

#include "ui/main/config_tree.h"
#include "ui/main/svg_icons.h"

namespace tollwick {
namespace {

QString toQString(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

} // namespace

ListModel::ListModel(QObject* parent) : QAbstractTableModel(parent) {}

void ListModel::setContents(ListContents contents) {
    beginResetModel();
    contents_ = std::move(contents);
    rewritten_.clear();
    cached_row_ = -1;
    endResetModel();
}

void ListModel::setCell(int row, int column, const std::string& text) {
    const QModelIndex cell = index(row, column);
    if (!cell.isValid() || cell.data(Qt::DisplayRole).toString() == toQString(text))
        return;
    rewritten_[{row, column}] = text;
    emit dataChanged(cell, cell, {Qt::DisplayRole});
}

void ListModel::removeListRow(int row, const std::function<void()>& erase) {
    beginRemoveRows({}, row, row);
    erase();
    --contents_.row_count;
    cached_row_ = -1;
    endRemoveRows();
}

std::string ListModel::identity(int row) const {
    return this->row(row).identity;
}

int ListModel::findIdentity(const std::string& identity) const {
    for (std::size_t i = 0; i < contents_.row_count; ++i)
        if (contents_.row(i).identity == identity)
            return static_cast<int>(i);
    return -1;
}

int ListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(contents_.row_count);
}

int ListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(contents_.columns.size());
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const auto column = static_cast<std::size_t>(index.column());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole: {
        const auto written = rewritten_.find({index.row(), index.column()});
        return toQString(written != rewritten_.end() ? written->second
                                                     : row(index.row()).cells.at(column));
    }
    case Qt::DecorationRole:
        return column == 0 ? imageIcon(row(index.row()).image) : QVariant();
    case Qt::TextAlignmentRole:
        return contents_.columns[column].is_number
                   ? QVariant(static_cast<int>(Qt::AlignRight | Qt::AlignVCenter))
                   : QVariant();
    case kKeyRole:
        return toQString(row(index.row()).key);
    case kImageRole:
        return toQString(row(index.row()).image);
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

const ListRow& ListModel::row(int row) const {
    if (row != cached_row_) {
        cached_ = contents_.row(static_cast<std::size_t>(row));
        cached_row_ = row;
    }
    return cached_;
}

} // namespace tollwick
