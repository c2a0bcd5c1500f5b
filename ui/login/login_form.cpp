#include "ui/login/login_form.h"

#include "base/text.h"
#include "rules/recent_servers.h"
#include "rules/window_placement.h"
#include "ui_login_form.h"
#include "wire/record_packing.h"

#include <QCompleter>
#include <QKeyEvent>
#include <QScopeGuard>
#include <QScreen>
#include <QStandardItemModel>

namespace tollwick {
namespace {

// Twips. They hold for the usual font; a larger one stretches the dialog as a whole.
constexpr int kExpandedHeight = 3165;
constexpr int kCollapsedHeight = 1965;
constexpr int kExpandedButtonTop = 2460;
constexpr int kCollapsedButtonTop = 1260;
constexpr int kWidth = 6000;
constexpr int kMargin = 120;
constexpr int kFrameTop = 30;
constexpr int kLocationTop = 1230;
constexpr int kFrameHeight = 1170;
constexpr int kButtonHeight = 400;
constexpr int kButtonWidth = 1380;

constexpr Caption kCaptions[] = {{"AccountFrame", Text::AccountFrame},
                                 {"txtUsername", Text::txtUsername},
                                 {"txtPassword", Text::txtPassword},
                                 {"frmeLocation", Text::frmeLocation},
                                 {"txtHostOrIp", Text::txtHostOrIp},
                                 {"txtPort", Text::txtPort},
                                 {"btnOk", Text::Ok},
                                 {"btnCancel", Text::Cancel}};

// Item data of a server in the list of completions.
constexpr int kHostRole = Qt::UserRole;
constexpr int kPortRole = Qt::UserRole + 1;
constexpr int kUserRole = Qt::UserRole + 2;

std::string utf8(const QString& text) {
    return text.toStdString();
}

} // namespace

LoginForm::LoginForm(ConsoleContext& context, QWidget* parent)
    : ConsoleDialog(context, parent), ui_(std::make_unique<Ui::frmLogin>()) {
    ui_->setupUi(this);
    help_ = makeHelpButton();
    dress(Text::frmLogin, kCaptions);
    takeCodePage(ui_->tbServerConnectUsername);
    takeCodePage(ui_->tbServerConnectPassword);
    // The fields of both frames start at the same place.
    const int label_width =
        std::max({ui_->txtUsername->sizeHint().width(), ui_->txtPassword->sizeHint().width(),
                  ui_->txtHostOrIp->sizeHint().width(), ui_->txtPort->sizeHint().width()});
    ui_->txtUsername->setMinimumWidth(label_width);
    ui_->txtHostOrIp->setMinimumWidth(label_width);
    layOut(false);
    const QRect desktop = screen()->geometry();
    move(desktop.left() + (desktop.width() - width()) / 2,
         desktop.top() + (desktop.height() - height()) / 2);

    const ConnectionSettings& connection = context.connection;
    const auto fill = [](QLineEdit* edit, const std::string& text) {
        edit->setText(QString::fromStdString(text));
        edit->setCursorPosition(static_cast<int>(edit->text().size()));
    };
    fill(ui_->tbServerConnectIp, connection.ServerConnectIp);
    fill(ui_->tbServerConnectPort, connection.ServerConnectPort);
    setEntered(ui_->tbServerConnectUsername, toQString(connection.ServerConnectUsername));
    ui_->tbServerConnectPassword->setFocus();

    completeServers();

    connect(ui_->btnOk, &QPushButton::clicked, this, &LoginForm::login);
    connect(ui_->btnCancel, &QPushButton::clicked, this, &LoginForm::reject);
    connect(ui_->btnOptions, &QPushButton::clicked, this, &LoginForm::toggleOptions);
}

LoginForm::~LoginForm() {
    ui_->tbServerConnectPassword->clear();
}

void LoginForm::completeServers() {
    auto* servers = new QStandardItemModel(this);
    for (const RecentServer& server : readRecentServers(context_.settings)) {
        auto* item = new QStandardItem(toQString(server.host + ':' + server.port + " \u2013 ") +
                                       toQString(server.user));
        item->setData(toQString(server.host), kHostRole);
        item->setData(toQString(server.port), kPortRole);
        item->setData(toQString(server.user), kUserRole);
        servers->appendRow(item);
    }
    auto* completer = new QCompleter(servers, this);
    completer->setObjectName("RecentServers");
    completer->setCompletionRole(kHostRole);
    completer->setCaseSensitivity(Qt::CaseInsensitive);
    completer->setFilterMode(Qt::MatchContains);
    ui_->tbServerConnectIp->setCompleter(completer);
    ui_->tbServerConnectIp->installEventFilter(this);
    connect(completer, qOverload<const QModelIndex&>(&QCompleter::activated), this,
            &LoginForm::showServer);
}

void LoginForm::showServer(const QModelIndex& server) {
    ui_->tbServerConnectIp->setText(server.data(kHostRole).toString());
    ui_->tbServerConnectPort->setText(server.data(kPortRole).toString());
    setEntered(ui_->tbServerConnectUsername, server.data(kUserRole).toString());
}

bool LoginForm::eventFilter(QObject* watched, QEvent* event) {
    // The down arrow shows all servers, whatever has been typed.
    if (event->type() == QEvent::KeyPress &&
        static_cast<const QKeyEvent*>(event)->key() == Qt::Key_Down) {
        QCompleter* completer = ui_->tbServerConnectIp->completer();
        completer->setCompletionPrefix({});
        completer->complete();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void LoginForm::toggleOptions() {
    layOut(!ui_->tbServerConnectIp->isEnabled());
}

void LoginForm::layOut(bool expanded) {
    ui_->tbServerConnectIp->setEnabled(expanded);
    ui_->tbServerConnectPort->setEnabled(expanded);
    ui_->btnOptions->setText(
        context_.caption(expanded ? Text::OptionsCollapse : Text::OptionsExpand));
    ui_->frmeLocation->setVisible(expanded);

    const double stretch =
        std::max(1.0, ui_->AccountFrame->sizeHint().height() * 1.0 / toPixels(kFrameHeight));
    const auto scaled = [&](int twips) { return qRound(toPixels(twips) * stretch); };
    const int frame_width = scaled(kWidth - 2 * kMargin);
    ui_->AccountFrame->setGeometry(scaled(kMargin), scaled(kFrameTop), frame_width,
                                   scaled(kFrameHeight));
    ui_->frmeLocation->setGeometry(scaled(kMargin), scaled(kLocationTop), frame_width,
                                   scaled(kFrameHeight));
    const int top = scaled(expanded ? kExpandedButtonTop : kCollapsedButtonTop);
    const int gap = (frame_width - 4 * scaled(kButtonWidth)) / 3;
    int left = scaled(kMargin);
    for (QPushButton* button : {ui_->btnOk, ui_->btnCancel, ui_->btnOptions, help_}) {
        button->setGeometry(left, top, scaled(kButtonWidth), scaled(kButtonHeight));
        left += scaled(kButtonWidth) + gap;
    }
    setFixedSize(scaled(kWidth), scaled(expanded ? kExpandedHeight : kCollapsedHeight));
}

void LoginForm::setRunning(bool running) {
    running_ = running;
    for (QPushButton* button : {ui_->btnOk, ui_->btnCancel, ui_->btnOptions})
        button->setEnabled(!running);
}

void LoginForm::login() {
    if (running_)
        return;
    context_.errors.guard(Routine::Login, [&](Integer& step) {
        ConnectionSettings& connection = context_.connection;
        connection.ServerConnectIp = utf8(ui_->tbServerConnectIp->text());
        connection.ServerConnectPort = utf8(ui_->tbServerConnectPort->text());
        connection.ServerConnectUsername = utf8(ui_->tbServerConnectUsername->text());
        const std::string password = trimmed(utf8(ui_->tbServerConnectPassword->text()));
        if (!fitsBlock(LoginRecord{VarText(connection.ServerConnectUsername), VarText(password)}))
            return refuse(BoxIcon::Critical, Text::SettingTooLarge, ui_->tbServerConnectPassword);
        step = 1;
        saveConnectionSettings(context_.settings, connection);
        context_.data.user_id = connection.ServerConnectUsername;
        context_.data.password = password;
        step = 2;
        LoginOutcome outcome = LoginOutcome::LinkFailed;
        {
            setRunning(true);
            const auto end = qScopeGuard([this] { setRunning(false); });
            const BusyPointer busy(context_.progress);
            outcome = LoginSequence(context_, connection).run();
        }
        step = 3;
        finish(outcome);
    });
}

void LoginForm::finish(LoginOutcome outcome) {
    const bool is_logged_in = outcome == LoginOutcome::LoggedIn;
    // A link that was lost before the main window's timer has seen it is told here.
    if ((is_logged_in && !context_.link.isOpen()) || outcome == LoginOutcome::LinkFailed)
        context_.showIdle();
    if (is_logged_in) {
        const ConnectionSettings& connection = context_.connection;
        rememberServer(context_.settings, {connection.ServerConnectIp, connection.ServerConnectPort,
                                           connection.ServerConnectUsername});
        accept();
    } else if (outcome == LoginOutcome::Rejected) {
        focusField(ui_->tbServerConnectPassword);
    }
}

void LoginForm::reject() {
    if (running_) // the wait is given up in the way of every wait
        return;
    if (context_.link.isOpen()) { // of a login that was rejected
        context_.link.Close();
        context_.showIdle();
    }
    QDialog::reject();
}

} // namespace tollwick
