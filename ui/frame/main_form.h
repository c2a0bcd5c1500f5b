// The console's main window: menus and toolbar, the tree, the list and the status bar.
#pragma once

#include "rules/window_placement.h"
#include "ui/common/console_context.h"
#include "ui/frame/command_runner.h"

#include <QMainWindow>
#include <QUrl>

#include <functional>

class QMenu;

namespace tollwick {

class ConfigTree;
class ExplorerPane;
class ListActions;
class ListView;
class MainActions;
class MainStatusBar;
class MenuTimer;

class Twmainform : public QMainWindow {
    Q_OBJECT
public:
    // `status_bar` becomes the window's own. `end_process` ends the program at once.
    Twmainform(ConsoleContext& context, MainStatusBar* status_bar,
               std::function<void()> end_process);
    ~Twmainform() override;

    [[nodiscard]] ConfigTree* tree() const { return tree_; }
    [[nodiscard]] ListView* list() const { return list_; }
    [[nodiscard]] MainActions* actions() const { return actions_; }
    [[nodiscard]] MenuTimer* menuTimer() const { return menu_timer_; }

    // Puts the window where it was left.
    void restorePlacement();
    // Brings menus and toolbar into line with the selection, and keeps them so.
    void startTimer();

    void logIn();
    void logOff();
    // Stores the placement and ends the program; nothing is asked and nothing is closed politely.
    void exitProgram();

    // What leaves the program; tests replace it: opening a web page, telling something on the
    // desktop.
    std::function<void(const QUrl&)> open_url;
    std::function<void(const QString&)> notify;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void connectActions();
    void centre();
    void run(Command command);
    void run(Action action);
    void showSelectedNode();
    // The commands of the selected node, and for the list also what can be done with its rows.
    void showContextMenu(const QPoint& global_position, bool is_list);
    void showAbout();
    void openWebPage(std::string_view page);

    ConsoleContext& context_;
    std::function<void()> end_process_;
    MainActions* actions_;
    ExplorerPane* pane_;
    ConfigTree* tree_;
    ListView* list_;
    ListActions* list_actions_;
    CommandRunner commands_;
    MenuTimer* menu_timer_;
    QMenu* context_menu_;
};

// The address of a page of the maker's web server: "faq" or "index", in the region of LangBase.
QString webAddress(std::string_view page, Integer lang_base);

} // namespace tollwick
