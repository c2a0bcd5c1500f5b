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
    QMenu* file = addMenu(window, "FileMenu", texts(Text::FileMenu));
    LoginMenu = addEntry(file, "LoginMenu", Text::LoginMenu);
    LogOffMenu = addEntry(file, "LogOffMenu", Text::LogOffMenu);
    file->addSeparator();
    UucpTransportNowMenu = addEntry(file, "UucpTransportNowMenu", Text::UucpTransportNowMenu);
    CancelUucpTransportMenu =
        addEntry(file, "CancelUucpTransportMenu", Text::CancelUucpTransportMenu);
    file->addSeparator();
    TollwickServiceStart = addEntry(file, "TollwickServiceStart", Text::TollwickServiceStart);
    TollwickserviceStop = addEntry(file, "TollwickserviceStop", Text::TollwickserviceStop);
    file->addSeparator();
    Exitmenu = addEntry(file, "Exitmenu", Text::Exitmenu);
    Exitmenu->setMenuRole(QAction::QuitRole);

    QMenu* tools = addMenu(window, "Toolsmenu", texts(Text::Toolsmenu));
    AddMenu = addEntry(tools, "AddMenu", Text::AddMenu);
    DeleteMenu = addEntry(tools, "DeleteMenu", Text::DeleteMenu);
    PropertiesMenu = addEntry(tools, "PropertiesMenu", Text::PropertiesMenu);
    Toggmenu = addEntry(tools, "Toggmenu", Text::Toggmenu);
    OpenMenu = addEntry(tools, "OpenMenu", Text::OpenMenu);
    tools->addSeparator();
    Refreshmenu = addEntry(tools, "Refreshmenu", Text::Refreshmenu);
    Refreshmenu->setShortcut(QKeySequence::Refresh);
    Cancelmenu = addEntry(tools, "Cancelmenu", Text::Cancelmenu);

    QMenu* help = addMenu(window, "HelpMenu", texts(Text::HelpMenu));
    ContentsMenu = addEntry(help, "ContentsMenu", Text::ContentsMenu);
    help->addSeparator();
    CorvaleWWWMenu = addEntry(help, "CorvaleWWWMenu", Text::CorvaleWWWMenu);
    CorvaleFaqMenu = addEntry(help, "CorvaleFaqMenu", Text::CorvaleFaqMenu);
    help->addSeparator();
    AboutMenu = addEntry(help, "AboutMenu", Text::AboutMenu);
    AboutMenu->setMenuRole(QAction::AboutRole);

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
    VisibleFlags visible;
    visible.fill(kOn);
    setVisible(visible);
    EnableFlags enabled;
    enabled.fill(kOff);
    setEnabled(enabled);
    // The service is started and stopped where it runs; these entries have no action.
    TollwickServiceStart->setEnabled(false);
    TollwickserviceStop->setEnabled(false);
    setConnected(false);
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

void MainActions::setVisible(const VisibleFlags& flags) {
    for (std::size_t i = 0; i < flags.size(); ++i)
        if (flags[i] == kOn || flags[i] == kOff)
            items_[i]->setVisible(flags[i] == kOn);
}

void MainActions::setConnected(bool connected) {
    UucpTransportNowMenu->setEnabled(connected);
    CancelUucpTransportMenu->setEnabled(connected);
    LogOffMenu->setEnabled(connected);
    LoginMenu->setEnabled(!connected);
    toolbar_login->setEnabled(!connected);
    toolbar_logout->setEnabled(connected);
}

} // namespace tollwick
