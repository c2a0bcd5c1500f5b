// The list of what the selected node holds, in report style.
#pragma once

#include "ui/main/list_model.h"

#include <QTreeView>

#include <string>

namespace tollwick {

class ListView : public QTreeView {
    Q_OBJECT
public:
    explicit ListView(QWidget* parent = nullptr);

    // Shows other contents, with their own columns.
    void showContents(ListContents contents);
    // Shows the contents of the same list again and selects the row with this identity, if any.
    void refill(ListContents contents, const std::string& selected_identity);
    // Takes a row away. `erase` takes its record from the data that the contents follow.
    void removeRow(int row, const std::function<void()>& erase);
    void setCell(int row, int column, const std::string& text) {
        list_model_->setCell(row, column, text);
    }

    // The position, in the order of the list's contents, of the row that the user sees as selected; -1
    // when there is none.
    [[nodiscard]] int selectedRow() const;
    // Its key, or an empty text.
    [[nodiscard]] std::string selectedKey() const;
    // What tells it apart from the other rows, or an empty text.
    [[nodiscard]] std::string selectedIdentity() const;

signals:
    void rowActivated();
    void deletePressed();
    void contextMenuWanted(const QPoint& global_position);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void layOutColumns();

    ListModel* list_model_;
};

} // namespace tollwick
