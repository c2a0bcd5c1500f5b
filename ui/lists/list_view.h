// The list of what the selected node holds, in report style. Its columns sort and can be resized,
// which is kept for each node, and its rows can be filtered.
#pragma once

#include "rules/list_layout.h"
#include "ui/common/console_context.h"
#include "ui/lists/list_model.h"

#include <QTreeView>

#include <string>

namespace tollwick {

class ListView : public QTreeView {
    Q_OBJECT
public:
    explicit ListView(ConsoleContext& context, QWidget* parent = nullptr);

    // Shows the contents of a node, with their own columns, arranged as the user left that list. An
    // empty key and contents clear the list.
    void showContents(std::string node_key, ListContents contents);
    // Shows the contents of the same list again and selects the row with this identity, if any.
    void refill(ListContents contents, const std::string& selected_identity);
    // Stores how the user has arranged the list, if that was changed.
    void storeLayout();

    // Takes a row of the contents away. `erase` takes its record from the data that they follow.
    // Gives the place at which it was shown, or -1.
    int removeRow(int contents_row, const std::function<void()>& erase);
    // Selects the row that is shown at this place, or the last one when there are not so many.
    void selectShownRow(int shown);
    void setCell(int contents_row, int column, const std::string& text) {
        list_model_->setCell(contents_row, column, text);
    }
    [[nodiscard]] std::string contentsCell(int contents_row, std::size_t column) const {
        return list_model_->contents().cell(static_cast<std::size_t>(contents_row), column);
    }
    // The node whose list is shown.
    [[nodiscard]] const std::string& nodeKey() const { return node_key_; }
    // Makes sure that a row is selected, for who comes to the list by keyboard.
    void selectSomeRow();
    // Shows only rows with this text, UTF-8, in one of their cells.
    void setFilter(const QString& text);

    // The position, in the order of the list's contents, of the row that the user sees as selected;
    // -1 when none or more than one is.
    [[nodiscard]] int selectedRow() const;
    // How many rows are selected, and the positions of all of them in the order in which they are
    // shown.
    [[nodiscard]] std::size_t selectedCount() const;
    [[nodiscard]] std::vector<int> selectedContentsRows() const;
    // Selects a row of the contents alone and scrolls to it, if the filter shows it.
    void selectContentsRow(int contents_row);
    // Its key, or an empty text.
    [[nodiscard]] std::string selectedKey() const;
    // What tells it apart from the other rows, or an empty text.
    [[nodiscard]] std::string selectedIdentity() const;

    [[nodiscard]] TableRow titles() const { return list_model_->titles(); }
    // The texts of all shown rows or of the selected ones, in the order in which they are shown.
    [[nodiscard]] std::vector<TableRow> shownRows() const;
    [[nodiscard]] std::vector<TableRow> selectedRows() const;
    // How many rows the list holds, whether the filter shows them or not.
    [[nodiscard]] int contentsCount() const {
        return static_cast<int>(list_model_->contents().row_count);
    }

signals:
    void rowActivated();
    void deletePressed();
    void contextMenuWanted(const QPoint& global_position);
    // Another list is shown.
    void contentsReplaced();
    // The same, or other rows of the same list.
    void rowsChanged();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    [[nodiscard]] int shownSelectedRow() const;
    void layOutColumns(const std::vector<int>& stored_widths);

    ConsoleContext& context_;
    ListModel* list_model_;
    std::string node_key_; // of the list that is shown
    std::string filter_;
    bool is_laying_out_ = false;
    bool has_stored_widths_ = false;
    bool widths_changed_ = false; // by the user, since the list is shown
    bool sort_changed_ = false;
};

} // namespace tollwick
