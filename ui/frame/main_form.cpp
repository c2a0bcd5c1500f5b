#include "ui/frame/main_form.h"

#include "ui/common/icons.h"
#include "ui/frame/about_form.h"
#include "ui/frame/config_tree.h"
#include "ui/frame/configuration_saver.h"
#include "ui/frame/explorer_pane.h"
#include "ui/frame/main_actions.h"
#include "ui/frame/main_status_bar.h"
#include "ui/frame/menu_timer.h"
#include "ui/help/help_desk.h"
#include "ui/lists/list_actions.h"
#include "ui/lists/list_view.h"
#include "ui/login/login_form.h"
#include "ui/monitor/desktop_notifier.h"
#include "ui/monitor/monitor_panel.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QScreen>

namespace tollwick {
namespace {

constexpr const char* kDesignCaption = "Corvale Tollwick admin";
constexpr const char* kWebServer = TOLLWICK_WEB_SERVER;

// The design size; start-up replaces it by what is stored.
constexpr int kDesignWidth = 7110;  // twips
constexpr int kDesignHeight = 4455; // twips

struct WebRegion {
    Integer lang_base;
    const char* query;
};
// The slots of 7000 and 19000 stand ready for later languages.
constexpr WebRegion kWebRegions[] = {
    {4000, "area=se&origin=se"}, {7000, "area=eu&origin=es"}, {19000, "area=eu&origin=nl"}};
constexpr const char* kOtherRegions = "area=eu&origin=uk";

Routine routineOf(Action action) {
    switch (action) {
    case Action::ChangeLogin:
        return Routine::ChangeLogin;
    case Action::AddSchedule:
        return Routine::AddSchedule;
    case Action::EditSchedule:
        return Routine::EditSchedule;
    case Action::DeleteSchedule:
        return Routine::DeleteSchedule;
    case Action::DeleteHost:
        return Routine::DeleteHost;
    case Action::DeleteMail:
        return Routine::DeleteMail;
    case Action::EditAdminSetting:
    case Action::EditSmtpServiceSetting:
    case Action::EditSmtpForwardSetting:
    case Action::EditOptionSetting:
    case Action::EditUucpDaemonSetting:
    case Action::EditLogPeriod:
    case Action::ToggleLogSwitch:
        return Routine::EditSetting;
    default:
        return Routine::Command;
    }
}

// The first one is the one that the user works at mainly.
std::vector<ScreenArea> screenAreas() {
    std::vector<ScreenArea> areas;
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect area = screen->availableGeometry();
        areas.push_back({toTwips(area.left()), toTwips(area.top()), toTwips(area.width()),
                         toTwips(area.height())});
    }
    return areas;
}

} // namespace

QString webAddress(std::string_view page, Integer lang_base) {
    const char* query = kOtherRegions;
    for (const WebRegion& region : kWebRegions)
        if (region.lang_base == lang_base)
            query = region.query;
    return QStringLiteral("%1/asp/%2.asp?%3")
        .arg(QLatin1StringView(kWebServer), toQString(page), QLatin1StringView(query));
}

Twmainform::Twmainform(ConsoleContext& context, MainStatusBar* status_bar,
                       std::function<void()> end_process)
    : open_url([](const QUrl& url) { QDesktopServices::openUrl(url); }),
      notify([notifier = DesktopNotifier::create(this)](const QString& text) {
          notifier->notify(text);
      }),
      context_(context), end_process_(std::move(end_process)),
      actions_(new MainActions(*this, context.texts)), pane_(new ExplorerPane(context, this)),
      tree_(pane_->tree()), list_(pane_->list()),
      list_actions_(new ListActions(context, *list_, *pane_->filter(), this)),
      commands_(context, *tree_, *list_, this),
      menu_timer_(new MenuTimer(context, *actions_, *tree_, *list_, *pane_->monitor(), this)),
      context_menu_(new QMenu(this)) {
    setObjectName("Twmainform");
    setWindowTitle(kDesignCaption);
    setWindowIcon(imageIcon("tollwick"));
    setStatusBar(status_bar);
    setCentralWidget(pane_);
    status_bar->setTexts(context.texts);
    setProperty(kHelpTopicProperty, "start");
    context_menu_->setObjectName("ContextMenu");
    tree_->setAccessibleName(context.caption(Text::AccessibleTree));
    list_->setAccessibleName(context.caption(Text::AccessibleList));

    resize(toPixels(kDesignWidth), toPixels(kDesignHeight));
    centre();
    connectActions();
}

void Twmainform::centre() {
    const QRect desktop = screen()->geometry();
    move(desktop.left() + (desktop.width() - width()) / 2,
         desktop.top() + (desktop.height() - height()) / 2);
}

Twmainform::~Twmainform() = default;

void Twmainform::connectActions() {
    const auto on = [this](QAction* action, auto&& handler) {
        connect(action, &QAction::triggered, this, [this, handler] {
            // An assistive tool reaches an action even while no window takes input or a dialog is
            // up.
            if (!context_.requests.isRunning() && !QApplication::activeModalWidget())
                handler();
        });
    };
    const auto onCommand = [&](QAction* action, Command command) {
        on(action, [this, command] { run(command); });
    };
    const auto onAction = [&](QAction* button, Action action) {
        on(button, [this, action] { run(action); });
    };
    on(actions_->LoginMenu, [this] { logIn(); });
    on(actions_->toolbar_login, [this] { logIn(); });
    on(actions_->LogOffMenu, [this] { logOff(); });
    on(actions_->toolbar_logout, [this] { logOff(); });
    on(actions_->SaveConfigurationMenu, [this] {
        context_.errors.guard(Routine::Command,
                              [&](Integer&) { saveConfiguration(context_, this); });
    });
    on(actions_->UucpTransportNowMenu, [this] {
        context_.errors.guard(Routine::Command, [&](Integer&) { commands_.transportNow(); });
    });
    for (QAction* cancel : {actions_->CancelUucpTransportMenu, actions_->Cancelmenu})
        on(cancel, [this] {
            context_.errors.guard(Routine::Command, [&](Integer&) { commands_.cancelTransport(); });
        });
    connect(actions_->Exitmenu, &QAction::triggered, this, &Twmainform::exitProgram);

    onCommand(actions_->AddMenu, Command::Add);
    onCommand(actions_->DeleteMenu, Command::Delete);
    onCommand(actions_->PropertiesMenu, Command::Properties);
    onCommand(actions_->Toggmenu, Command::Toggle);
    onCommand(actions_->Refreshmenu, Command::Refresh);
    onCommand(actions_->toolbar_properties, Command::Properties);
    onCommand(actions_->toolbar_delete, Command::Delete);
    onAction(actions_->toolbar_addschedule, Action::AddSchedule);
    onAction(actions_->toolbar_adduucphost, Action::AddHost);

    on(actions_->ContentsMenu, [this] { context_.help.showContents(); });
    on(actions_->CorvaleFaqMenu, [this] { openWebPage("faq"); });
    on(actions_->CorvaleWWWMenu, [this] { openWebPage("index"); });
    on(actions_->AboutMenu, [this] { showAbout(); });

    connect(tree_, &ConfigTree::nodeSelected, this, &Twmainform::showSelectedNode);
    connect(list_, &ListView::rowActivated, this, [this] { run(Command::Activate); });
    connect(list_, &ListView::deletePressed, this, [this] { run(Command::Delete); });
    connect(list_, &ListView::contextMenuWanted, this,
            [this](const QPoint& position) { showContextMenu(position, true); });
    connect(tree_, &ConfigTree::contextMenuWanted, this,
            [this](const QPoint& position) { showContextMenu(position, false); });
    connect(pane_->monitor(), &MonitorPanel::transportEnded, this,
            [this] { notify(context_.caption(Text::TransportEnded)); });
}

void Twmainform::restorePlacement() {
    context_.errors.guard(Routine::RestorePlacement, [&](Integer& step) {
        step = 1;
        WindowPlacement placement = readPlacement(context_.settings);
        step = 2;
        pane_->setSplitter(placement.splitter);
        if (placement.isCentred()) {
            centre();
        } else {
            placement = keptOnScreen(placement, screenAreas());
            move(toPixels(placement.left), toPixels(placement.top));
            resize(toPixels(placement.width), toPixels(placement.height));
        }
        step = 3;
        if (placement.state == window_state::Minimized)
            setWindowState(Qt::WindowMinimized);
        else if (placement.state == window_state::Maximized)
            setWindowState(Qt::WindowMaximized);
    });
}

void Twmainform::startTimer() {
    menu_timer_->tick();
    menu_timer_->start();
}

void Twmainform::logIn() {
    context_.errors.guard(Routine::Login, [&](Integer& step) {
        step = 1;
        LoginForm login(context_, this);
        if (login.exec() != QDialog::Accepted || !context_.link.isOpen())
            return;
        step = 2;
        menu_timer_->tick(); // knows the connection before there is something to clear at its loss
        context_.errors.guard(Routine::BuildTree, [&](Integer&) {
            tree_->build(context_.link.host(), context_.texts);
            pane_->layOut();
        });
    });
}

void Twmainform::logOff() {
    // The next tick of the timer does the rest.
    context_.link.Close();
}

void Twmainform::exitProgram() {
    context_.errors.guard(Routine::Exit, [&](Integer&) {
        WindowPlacement placement;
        if (windowState() & Qt::WindowMinimized)
            placement.state = window_state::Minimized;
        else if (windowState() & Qt::WindowMaximized)
            placement.state = window_state::Maximized;
        // Of a maximized window, too: wanted.
        placement.left = toTwips(x());
        placement.top = toTwips(y());
        placement.width = toTwips(width());
        placement.height = toTwips(height());
        placement.splitter = pane_->splitter();
        storePlacement(context_.settings, placement);
        list_->storeLayout();
    });
    end_process_();
}

void Twmainform::closeEvent(QCloseEvent* event) {
    event->accept();
    exitProgram();
}

void Twmainform::run(Command command) {
    run(actionFor(command, tree_->selectedKey()));
}

void Twmainform::run(Action action) {
    if (!context_.link.isOpen())
        return;
    context_.link.eventsAreProcessed();
    context_.guardControl(routineOf(action), [&] {
        try {
            commands_.run(action);
        } catch (const RunTimeError& error) {
            // Of a setting, whose editor ends with it.
            if (error.number() == error_number::Overflow)
                context_.tellOverflow();
            throw;
        }
    });
}

void Twmainform::showSelectedNode() {
    const std::string node_key = tree_->selectedKey();
    const QString caption = tree_->currentItem() ? tree_->currentItem()->text(0) : QString();
    list_->setAccessibleDescription(caption);
    setProperty(kHelpTopicProperty,
                node_key.empty() ? QStringLiteral("main-window") : toQString(node_key));
    context_.errors.guard(Routine::FillList,
                          [&](Integer&) { commands_.showNode(tree_->selectedKey()); });
}

void Twmainform::showContextMenu(const QPoint& global_position, bool is_list) {
    context_menu_->clear();
    context_menu_->addActions(actions_->nodeCommands(tree_->selectedKey()));
    const bool toggles = actionFor(Command::Activate, tree_->selectedKey()) ==
                         actionFor(Command::Toggle, tree_->selectedKey());
    context_menu_->setDefaultAction(toggles ? actions_->Toggmenu : actions_->PropertiesMenu);
    if (is_list) {
        context_menu_->addSeparator();
        context_menu_->addActions(list_actions_->menuEntries());
    }
    if (!context_menu_->isEmpty())
        context_menu_->popup(global_position);
}

void Twmainform::showAbout() {
    context_.errors.guard(Routine::About, [&](Integer&) { AboutForm(context_, this).exec(); });
}

void Twmainform::openWebPage(std::string_view page) {
    context_.errors.guard(Routine::Help, [&](Integer&) {
        open_url(QUrl(webAddress(page, context_.texts.LangBase())));
    });
}

} // namespace tollwick
