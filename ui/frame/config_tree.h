// The configuration tree: the node that is selected decides what everything else works on.
#pragma once

#include "base/string_table.h"
#include "ui/common/item_roles.h"

#include <QTreeWidget>

#include <string>

namespace tollwick {

class ConfigTree : public QTreeWidget {
    Q_OBJECT
public:
    explicit ConfigTree(QWidget* parent = nullptr);

    // Builds the tree anew for the service on this host (UTF-8), expands it and selects the root.
    void build(const std::string& host, const StringTable& texts);

    void selectNode(std::string_view key);
    // The key of the selected node; empty when there is none.
    [[nodiscard]] std::string selectedKey() const;

signals:
    void nodeSelected();
    void contextMenuWanted(const QPoint& global_position);

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
};

} // namespace tollwick
