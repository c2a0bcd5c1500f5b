#include "ui/frame/main_actions.h"

#include "ui/common/icons.h"
#include "ui/common/to_qstring.h"

#include <QMenuBar>

namespace tollwick {
namespace {

QMenu* addMenu(QMainWindow& window, const char* name, std::string_view caption) {
    QMenu* menu = window.menuBar()->addMenu(toQString(caption));
    menu->setObjectName(name);
    return menu;
}

} // namespace

MainActions::MainActions(QMainWindow& window, const StringTable& texts)
    : QObject(&window), texts_(texts) {
    addFileMenu(addMenu(window, "FileMenu", texts(Text::FileMenu)));
    addToolsMenu(addMenu(window, "Toolsmenu", texts(Text::Toolsmenu)));
    addHelpMenu(addMenu(window, "HelpMenu", texts(Text::HelpMenu)));
    addToolbar(window);

    for (const auto& [item, action] : {std::pair{Item::AddMenu, AddMenu},
                                       {Item::DeleteMenu, DeleteMenu},
                                       {Item::PropertiesMenu, PropertiesMenu},
                                       {Item::Toggmenu, Toggmenu},
                                       {Item::OpenMenu, OpenMenu},
                                       {Item::Refreshmenu, Refreshmenu},
                                       {Item::Cancelmenu, Cancelmenu},
                                       {Item::ToolbarAddSchedule, toolbar_addschedule},
                                       {Item::ToolbarAddUucpHost, toolbar_adduucphost},
                                       {Item::ToolbarDelete, toolbar_delete},
                                       {Item::ToolbarProperties, toolbar_properties}})
        items_[indexOf(item)] = action;
    EnableFlags enabled;
    enabled.fill(kOff);
    setEnabled(enabled);
    // The service is started and stopped where it runs; these entries have no action.
    TollwickServiceStart->setEnabled(false);
    TollwickserviceStop->setEnabled(false);
    setConnected(false);
}

void MainActions::addFileMenu(QMenu* menu) {
    LoginMenu = addEntry(menu, "LoginMenu", Text::LoginMenu);
    LogOffMenu = addEntry(menu, "LogOffMenu", Text::LogOffMenu);
    SaveConfigurationMenu = addEntry(menu, "SaveConfigurationMenu", Text::SaveConfigurationMenu);
    SaveConfigurationMenu->setShortcut(QKeySequence("Ctrl+Shift+S"));
    menu->addSeparator();
    UucpTransportNowMenu = addEntry(menu, "UucpTransportNowMenu", Text::UucpTransportNowMenu);
    CancelUucpTransportMenu =
        addEntry(menu, "CancelUucpTransportMenu", Text::CancelUucpTransportMenu);
    menu->addSeparator();
    TollwickServiceStart = addEntry(menu, "TollwickServiceStart", Text::TollwickServiceStart);
    TollwickserviceStop = addEntry(menu, "TollwickserviceStop", Text::TollwickserviceStop);
    menu->addSeparator();
    Exitmenu = addEntry(menu, "Exitmenu", Text::Exitmenu);
    Exitmenu->setMenuRole(QAction::QuitRole);
}

void MainActions::addToolsMenu(QMenu* menu) {
    AddMenu = addEntry(menu, "AddMenu", Text::AddMenu);
    DeleteMenu = addEntry(menu, "DeleteMenu", Text::DeleteMenu);
    PropertiesMenu = addEntry(menu, "PropertiesMenu", Text::PropertiesMenu);
    Toggmenu = addEntry(menu, "Toggmenu", Text::Toggmenu);
    OpenMenu = addEntry(menu, "OpenMenu", Text::OpenMenu);
    menu->addSeparator();
    Refreshmenu = addEntry(menu, "Refreshmenu", Text::Refreshmenu);
    Refreshmenu->setShortcut(QKeySequence::Refresh);
    Cancelmenu = addEntry(menu, "Cancelmenu", Text::Cancelmenu);
}

void MainActions::addHelpMenu(QMenu* menu) {
    ContentsMenu = addEntry(menu, "ContentsMenu", Text::ContentsMenu);
    menu->addSeparator();
    CorvaleWWWMenu = addEntry(menu, "CorvaleWWWMenu", Text::CorvaleWWWMenu);
    CorvaleFaqMenu = addEntry(menu, "CorvaleFaqMenu", Text::CorvaleFaqMenu);
    menu->addSeparator();
    AboutMenu = addEntry(menu, "AboutMenu", Text::AboutMenu);
    AboutMenu->setMenuRole(QAction::AboutRole);
}

void MainActions::addToolbar(QMainWindow& window) {
    QToolBar* toolbar = window.addToolBar(QString());
    toolbar->setObjectName("Toolbar");
    toolbar->setMovable(false);
    toolbar->setContextMenuPolicy(Qt::PreventContextMenu);
    toolbar->setIconSize({24, 24});
    toolbar_login = addButton(toolbar, "login", Text::TipLogin);
    toolbar_logout = addButton(toolbar, "logout", Text::TipLogout);
    toolbar->addSeparator();
    toolbar_properties = addButton(toolbar, "properties", Text::TipProperties);
    toolbar_delete = addButton(toolbar, "delete", Text::TipDelete);
    toolbar->addSeparator();
    toolbar_addschedule = addButton(toolbar, "addschedule", Text::TipAddSchedule);
    toolbar_adduucphost = addButton(toolbar, "adduucphost", Text::TipAddUucpHost);
}

QAction* MainActions::addEntry(QMenu* menu, const char* name, Text caption) {
    QAction* action = menu->addAction(toQString(texts_(caption)));
    action->setObjectName(name);
    return action;
}

QAction* MainActions::addButton(QToolBar* toolbar, const char* key, Text tip) {
    const QString text = toQString(texts_(tip));
    QAction* action = toolbar->addAction(imageIcon(key), text);
    action->setObjectName(QStringLiteral("toolbar_") + key);
    action->setToolTip(text);
    return action;
}

QList<QAction*> MainActions::nodeCommands(std::string_view node_key) const {
    const EnableFlags flags = enableFlags({true, node_key, true});
    QList<QAction*> commands;
    for (std::size_t i = 0; i < kMenuItems; ++i)
        if (flags[i] == kOn)
            commands.append(items_[i]);
    return commands;
}

void MainActions::setEnabled(const EnableFlags& flags) {
    for (std::size_t i = 0; i < flags.size(); ++i)
        if (flags[i] == kOn || flags[i] == kOff)
            items_[i]->setEnabled(flags[i] == kOn);
}

void MainActions::setConnected(bool connected) {
    UucpTransportNowMenu->setEnabled(connected);
    CancelUucpTransportMenu->setEnabled(connected);
    LogOffMenu->setEnabled(connected);
    SaveConfigurationMenu->setEnabled(connected);
    LoginMenu->setEnabled(!connected);
    toolbar_login->setEnabled(!connected);
    toolbar_logout->setEnabled(connected);
}

} // namespace tollwick
