#include "ui/main/list_view.h"

#include "ui/main/config_tree.h"
#include "ui/main/window_placement.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>

namespace tollwick {
namespace {

// Rows that are measured for the width of a column.
constexpr int kMeasuredRows = 100;
constexpr int kMaxColumnWidth = 320; // pixels, of a column that follows its contents

} // namespace

ListView::ListView(QWidget* parent) : QTreeView(parent), list_model_(new ListModel(this)) {
    setObjectName("List");
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setModel(list_model_);
    header()->setStretchLastSection(false);
    header()->setResizeContentsPrecision(kMeasuredRows);
    connect(this, &QTreeView::doubleClicked, this, &ListView::rowActivated);
}

void ListView::showContents(ListContents contents) {
    list_model_->setContents(std::move(contents));
    layOutColumns();
}

void ListView::refill(ListContents contents, const std::string& selected_identity) {
    list_model_->setContents(std::move(contents));
    const int row =
        selected_identity.empty() ? -1 : list_model_->findIdentity(selected_identity);
    if (row >= 0)
        setCurrentIndex(list_model_->index(row, 0));
}

void ListView::removeRow(int row, const std::function<void()>& erase) {
    list_model_->removeListRow(row, erase);
}

int ListView::selectedRow() const {
    const QModelIndexList rows = selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
}

std::string ListView::selectedKey() const {
    const int row = selectedRow();
    return row < 0 ? std::string()
                   : list_model_->index(row, 0).data(kKeyRole).toString().toStdString();
}

std::string ListView::selectedIdentity() const {
    const int row = selectedRow();
    return row < 0 ? std::string() : list_model_->identity(row);
}

void ListView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Delete && event->modifiers() == Qt::NoModifier) {
        emit deletePressed();
    } else if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) &&
               selectedRow() >= 0) {
        emit rowActivated();
    } else {
        QTreeView::keyPressEvent(event);
    }
}

void ListView::contextMenuEvent(QContextMenuEvent* event) {
    const bool by_keyboard = event->reason() == QContextMenuEvent::Keyboard;
    emit contextMenuWanted(by_keyboard
                               ? viewport()->mapToGlobal(visualRect(currentIndex()).bottomLeft())
                               : event->globalPos());
}

void ListView::layOutColumns() {
    const std::vector<ListColumn>& columns = list_model_->contents().columns;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const int section = static_cast<int>(i);
        resizeColumnToContents(section);
        const int needed = columnWidth(section);
        // A given width holds unless it would cut a text off.
        setColumnWidth(section, columns[i].width == 0
                                    ? std::min(needed, kMaxColumnWidth)
                                    : std::max(needed, toPixels(columns[i].width)));
    }
}

} // namespace tollwick
