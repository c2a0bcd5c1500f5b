// The rows of the list as the view asks for them: those of the contents that pass the filter, in
// the order that the user has chosen.
#pragma once

#include "base/error_handler.h"
#include "rules/list_contents.h"
#include "rules/list_export.h"
#include "rules/list_order.h"

#include <QAbstractTableModel>

#include <map>
#include <optional>
#include <string>

namespace tollwick {

class ListModel : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit ListModel(ErrorHandler& errors, QObject* parent = nullptr);

    void setContents(ListContents contents, const ListSort& sort, std::string filter);
    [[nodiscard]] const ListContents& contents() const { return contents_; }

    void setFilter(std::string filter);
    // Column -1 goes back to the order of the contents. Called by the view, when a title is
    // clicked.
    void sort(int column, Qt::SortOrder order) override;
    [[nodiscard]] const ListSort& sorting() const { return sort_; }

    // The position in the contents of a row that the view shows, and the other way round; -1 for a
    // row that is filtered out.
    [[nodiscard]] int contentsRow(int shown) const;
    [[nodiscard]] int shownRow(int contents_row) const;

    // Writes a cell only when it differs from what is shown there.
    void setCell(int contents_row, int column, const std::string& text);
    // Takes a row away. `erase` takes its record from the data that the contents follow.
    void removeListRow(int contents_row, const std::function<void()>& erase);

    // Tells a row apart from the others of its list.
    [[nodiscard]] std::string identity(int contents_row) const;
    // The row of the contents with this identity, or -1.
    [[nodiscard]] int findIdentity(const std::string& identity) const;
    // The titles, and the texts of a row that the view shows.
    [[nodiscard]] TableRow titles() const;
    [[nodiscard]] TableRow cells(int shown) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

private:
    [[nodiscard]] const ListRow& row(int contents_row) const;
    [[nodiscard]] std::string cell(int contents_row, int column) const;
    // Orders the rows anew; what is selected and current stays so where it is still shown.
    void reorder();
    [[nodiscard]] std::optional<std::vector<std::size_t>> makeOrder() const;

    ErrorHandler& errors_;
    ListContents contents_;
    ListSort sort_;
    std::string filter_;
    // Positions in the contents; without it all rows are shown in their own order.
    std::optional<std::vector<std::size_t>> order_;
    std::map<std::pair<int, int>, std::string> rewritten_; // cells written since the contents came
    mutable int cached_row_ = -1; // of the contents, the one that was asked for last
    mutable ListRow cached_;
};

} // namespace tollwick
