#include "ui/frame/config_tree.h"

#include "rules/node_keys.h"
#include "ui/common/icons.h"
#include "ui/common/to_qstring.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QSignalBlocker>
#include <QTreeWidgetItemIterator>

#include <map>

namespace tollwick {
namespace {

constexpr int kIndentation = 16; // pixels

} // namespace

ConfigTree::ConfigTree(QWidget* parent) : QTreeWidget(parent) {
    setObjectName("Tree");
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setIndentation(kIndentation);
    connect(this, &QTreeWidget::itemSelectionChanged, this, &ConfigTree::nodeSelected);
}

void ConfigTree::build(const std::string& host, const StringTable& texts) {
    {
        const QSignalBlocker quiet(this);
        clear();
    }
    std::map<std::string_view, QTreeWidgetItem*> items;
    for (const TreeNode& tree_node : treeNodes()) {
        const bool is_root = tree_node.parent.empty();
        QTreeWidgetItem* item =
            is_root ? new QTreeWidgetItem(this) : new QTreeWidgetItem(items.at(tree_node.parent));
        item->setText(0,
                      is_root ? '[' + toQString(host) + ']' : toQString(texts(tree_node.caption)));
        item->setIcon(0, imageIcon(tree_node.image));
        item->setData(0, kKeyRole, toQString(tree_node.key));
        item->setData(0, kImageRole, toQString(tree_node.image));
        items[tree_node.key] = item;
    }
    expandAll();
    // A narrow tree scrolls sideways instead of cutting names off.
    header()->setMinimumSectionSize(sizeHintForColumn(0));
    setCurrentItem(topLevelItem(0));
}

void ConfigTree::selectNode(std::string_view key) {
    for (QTreeWidgetItemIterator item(this); *item; ++item)
        if ((*item)->data(0, kKeyRole).toString() == toQString(key))
            return setCurrentItem(*item);
}

void ConfigTree::contextMenuEvent(QContextMenuEvent* event) {
    if (!currentItem())
        return;
    const bool by_keyboard = event->reason() == QContextMenuEvent::Keyboard;
    emit contextMenuWanted(by_keyboard
                               ? viewport()->mapToGlobal(visualItemRect(currentItem()).bottomLeft())
                               : event->globalPos());
}

std::string ConfigTree::selectedKey() const {
    const QList<QTreeWidgetItem*> selected = selectedItems();
    return selected.isEmpty() ? std::string()
                              : selected.first()->data(0, kKeyRole).toString().toStdString();
}

} // namespace tollwick
