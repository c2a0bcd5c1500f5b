// The menus and the toolbar: every entry by its name, with its caption from the string table.
#pragma once

#include "base/string_table.h"
#include "rules/command_rules.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QToolBar>

#include <array>

namespace tollwick {

class MainActions : public QObject {
    Q_OBJECT
public:
    // Adds menu bar and toolbar to the window.
    MainActions(QMainWindow& window, const StringTable& texts);

    QAction* LoginMenu;
    QAction* LogOffMenu;
    QAction* SaveConfigurationMenu;
    QAction* UucpTransportNowMenu;
    QAction* CancelUucpTransportMenu;
    QAction* TollwickServiceStart;
    QAction* TollwickserviceStop;
    QAction* Exitmenu;

    QAction* AddMenu;
    QAction* DeleteMenu;
    QAction* PropertiesMenu;
    QAction* Toggmenu;
    QAction* OpenMenu;
    QAction* Refreshmenu;
    QAction* Cancelmenu;

    QAction* ContentsMenu;
    QAction* CorvaleWWWMenu;
    QAction* CorvaleFaqMenu;
    QAction* AboutMenu;

    QAction* toolbar_login;
    QAction* toolbar_logout;
    QAction* toolbar_properties;
    QAction* toolbar_delete;
    QAction* toolbar_addschedule;
    QAction* toolbar_adduucphost;

    // One flag for each item: on, off or as it is.
    void setEnabled(const EnableFlags& flags);
    // What can be done on an open and on a closed connection.
    void setConnected(bool connected);

    // The entries of the Tools menu that do something on a node, for context menus.
    [[nodiscard]] QList<QAction*> nodeCommands(std::string_view node_key) const;

private:
    void addFileMenu(QMenu* menu);
    void addToolsMenu(QMenu* menu);
    void addHelpMenu(QMenu* menu);
    void addToolbar(QMainWindow& window);
    QAction* addEntry(QMenu* menu, const char* name, Text caption);
    QAction* addButton(QToolBar* toolbar, const char* key, Text tip);

    const StringTable& texts_;
    std::array<QAction*, kAllItems> items_{}; // by indexOf(Item)
};

} // namespace tollwick
