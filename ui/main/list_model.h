// The rows of the list as the view asks for them.
#pragma once

#include "ui/main/list_contents.h"

#include <QAbstractTableModel>

#include <map>
#include <string>

namespace tollwick {

class ListModel : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit ListModel(QObject* parent = nullptr);

    void setContents(ListContents contents);
    [[nodiscard]] const ListContents& contents() const { return contents_; }

    // Writes a cell only when it differs from what is shown there.
    void setCell(int row, int column, const std::string& text);
    // Takes a row away. `erase` takes its record from the data that the contents follow.
    void removeListRow(int row, const std::function<void()>& erase);

    // Tells a row apart from the others of its list.
    [[nodiscard]] std::string identity(int row) const;
    // The row with this identity, or -1.
    [[nodiscard]] int findIdentity(const std::string& identity) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

private:
    [[nodiscard]] const ListRow& row(int row) const;

    ListContents contents_;
    std::map<std::pair<int, int>, std::string> rewritten_; // cells written since the contents came
    mutable int cached_row_ = -1; // the row that was asked for last
    mutable ListRow cached_;
};

} // namespace tollwick
