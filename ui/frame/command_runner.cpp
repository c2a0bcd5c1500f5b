#include "ui/frame/command_runner.h"

#include "base/text.h"
#include "rules/node_keys.h"
#include "ui/dialogs/schedule_form.h"
#include "ui/frame/config_tree.h"
#include "ui/hostsetup/host_setup_form.h"
#include "ui/lists/list_view.h"
#include "ui/login/new_login_form.h"

#include <QScopeGuard>
#include <QTimer>

#include <algorithm>
#include <optional>

namespace tollwick {
namespace {

constexpr std::size_t kFileColumn = 3; // of the outbox
constexpr std::size_t kMostNamesTold = 10;

} // namespace

CommandRunner::CommandRunner(ConsoleContext& context, ConfigTree& tree, ListView& list,
                             QWidget* window)
    : context_(context), tree_(tree), list_(list), window_(window),
      editors_(
          context, [&list] { return list.selectedKey(); },
          [this](std::string_view node_key) { rebuild(node_key); }, window) {}

CommandRunner::~CommandRunner() = default;

void CommandRunner::run(Action action) {
    switch (action) {
    case Action::ChangeLogin:
        return changeLogin();
    case Action::AddSchedule:
        return addSchedule();
    case Action::EditSchedule:
        return EditSchedule();
    case Action::AddHost:
        return addHost();
    case Action::EditHost:
        return EditHost();
    case Action::EditAdminSetting:
        return editors_.EditAdminSetting();
    case Action::EditSmtpServiceSetting:
        return editors_.EditSmtpServiceSetting();
    case Action::EditSmtpForwardSetting:
        return editors_.EditSmtpForwardSetting();
    case Action::EditOptionSetting:
        return editors_.EditOptionSetting();
    case Action::EditUucpDaemonSetting:
        return editors_.EditUucpDaemonSetting();
    case Action::EditLogPeriod:
        return editors_.EditLogPeriod();
    case Action::ToggleLogSwitch:
        return editors_.ToggleLogSwitch();
    case Action::DeleteSchedule:
        return deleteSelected({node::Schedule, Text::ConfirmDeleteSchedule,
                               Text::ConfirmDeleteSchedules, Text::NotRemoved, 0},
                              context_.data.schedules, removeSchedule);
    case Action::DeleteHost:
        return deleteSelected({node::UucpHosts, Text::ConfirmDeleteHost, Text::ConfirmDeleteHosts,
                               Text::HostNotRemoved, 0},
                              context_.data.hosts, removeHost);
    case Action::DeleteMail:
        return deleteSelected({node::Outbox, Text::ConfirmDeleteMail, Text::ConfirmDeleteMails,
                               Text::MailNotRemoved, kFileColumn},
                              context_.data.outbox, removeMail);
    case Action::GoToNode:
        return tree_.selectNode(list_.selectedKey());
    case Action::RefreshOutbox:
        return refreshOutbox();
    default:
        return;
    }
}

void CommandRunner::showNode(const std::string& node_key) {
    list_.showContents(node_key, contentsOf(node_key));
    if (node_key == node::UucpHosts)
        prepareHostForm();
}

ListContents CommandRunner::contentsOf(std::string_view node_key) const {
    return listContents(
        node_key, context_.data, context_.texts,
        {context_.link.host(), context_.connection.ServerConnectPort, context_.link.clock().now()});
}

void CommandRunner::rebuild(std::string_view node_key) {
    rebuild(node_key, list_.selectedIdentity());
}

void CommandRunner::rebuild(std::string_view node_key, const std::string& selected_identity) {
    if (tree_.selectedKey() == node_key)
        list_.refill(contentsOf(node_key), selected_identity);
}

void CommandRunner::changeLogin() {
    NewLoginForm(context_, window_).exec();
    rebuild(node::LoginAccount);
}

void CommandRunner::showScheduleForm(Text caption) {
    std::optional<ScheduleForm> form;
    {
        const BusyPointer busy(context_.progress);
        form.emplace(context_, window_);
        form->setWindowTitle(context_.caption(caption));
    }
    form->exec();
}

void CommandRunner::showHostForm(Text caption) {
    makeHostForm();
    const std::unique_ptr<HostSetupForm> form = std::move(next_host_form_);
    form->ShowAllData();
    form->setWindowTitle(context_.caption(caption));
    form->exec();
    prepareHostForm();
}

void CommandRunner::prepareHostForm() {
    QTimer::singleShot(0, window_, [this] {
        context_.errors.guard(Routine::FillList, [this](Integer&) { makeHostForm(); });
    });
}

void CommandRunner::makeHostForm() {
    if (!next_host_form_)
        next_host_form_ = std::make_unique<HostSetupForm>(context_, window_);
}

template <class Record>
void CommandRunner::editSelected(std::vector<Record>& records, Record& current,
                                 const std::function<void()>& show_form) {
    const Record* record = selected(records);
    if (!record)
        return;
    const auto row = static_cast<std::size_t>(record - records.data());
    current = *record;
    show_form();
    // Taken back in every case: after a cancel it is what it was.
    records.at(row) = current;
}

void CommandRunner::addSchedule() {
    const std::size_t count = context_.data.schedules.size();
    context_.data.current_schedule = EmptyScheduleRecord;
    showScheduleForm(Text::AddScheduleCaption);
    showAdded(node::Schedule, count, context_.data.schedules.size());
}

void CommandRunner::EditSchedule() {
    editSelected(context_.data.schedules, context_.data.current_schedule,
                 [this] { showScheduleForm(Text::EditScheduleCaption); });
    rebuild(node::Schedule);
}

void CommandRunner::showAdded(std::string_view node_key, std::size_t count_before,
                              std::size_t count) {
    rebuild(node_key);
    // A new one is the last of its list.
    if (count > count_before && list_.nodeKey() == node_key)
        list_.selectContentsRow(static_cast<int>(count) - 1);
}

void CommandRunner::addHost() {
    const std::size_t count = context_.data.hosts.size();
    context_.data.current_host = EmptyHostRecord;
    showHostForm(Text::AddHostCaption);
    showAdded(node::UucpHosts, count, context_.data.hosts.size());
}

void CommandRunner::EditHost() {
    editSelected(context_.data.hosts, context_.data.current_host,
                 [this] { showHostForm(Text::EditHostCaption); });
    rebuild(node::UucpHosts);
}

template <class Record>
Record* CommandRunner::selected(std::vector<Record>& records) {
    const int row = list_.selectedRow();
    return row >= 0 && static_cast<std::size_t>(row) < records.size()
               ? &records[static_cast<std::size_t>(row)]
               : nullptr;
}

template <class Record>
void CommandRunner::deleteSelected(const Deletion& deletion, std::vector<Record>& records,
                                   Removal (*remove)(ServiceContext&, const Record&)) {
    const std::size_t count = list_.selectedCount();
    if (count == 0)
        return;
    const std::string question =
        count == 1 ? std::string(context_.text(deletion.question))
                   : filledIn(context_.text(deletion.many_question), {std::to_string(count)});
    if (context_.prompter.ask(BoxIcon::Question, question, Answer::No) != Answer::Yes)
        return;
    // While the question stood the link may have been lost, and with it the rows.
    std::vector<int> rows = list_.selectedContentsRows();
    std::vector<std::string> refused;
    int next = -1; // where the row behind the last removed one is shown
    bool is_stopped = false;
    const auto listening = QObject::connect(&context_.input, &InputBlocker::escapePressed, window_,
                                            [&] { is_stopped = true; });
    const auto end = qScopeGuard([&] {
        QObject::disconnect(listening);
        context_.progress.setCount({});
    });
    for (std::size_t i = 0; i < rows.size() && !is_stopped; ++i) {
        if (rows.size() > 1)
            context_.progress.setCount(WorkCount{i, rows.size()});
        const auto row = static_cast<std::size_t>(rows[i]);
        const Record record = records.at(row);
        const Removal removal = remove(context_, record);
        if (removal == Removal::LinkFailed)
            return;
        // The list is empty already when the link was lost behind the reply, and an assistive tool
        // can have shown another one.
        const bool is_shown = list_.nodeKey() == deletion.node_key;
        if (removal == Removal::Refused) {
            if (is_shown)
                refused.push_back(list_.contentsCell(rows[i], deletion.name_column));
            continue;
        }
        const auto erase = [&] { records.erase(records.begin() + rows[i]); };
        if (is_shown)
            next = list_.removeRow(rows[i], erase);
        else
            erase();
        for (std::size_t later = i + 1; later < rows.size(); ++later)
            rows[later] -= rows[later] > rows[i] ? 1 : 0;
    }
    if (!is_stopped)
        list_.selectShownRow(next);
    context_.showIdle();
    if (!refused.empty())
        tellRefused(deletion, std::move(refused), rows.size() == 1);
}

void CommandRunner::tellRefused(const Deletion& deletion, std::vector<std::string> names,
                                bool is_single) {
    std::string text(context_.text(is_single ? deletion.refused : Text::NotRemoved));
    if (!is_single) {
        const std::size_t told = std::min(names.size(), kMostNamesTold);
        for (std::size_t i = 0; i < told; ++i)
            text += "\r\n" + names[i];
        if (told < names.size())
            text += "\r\n" +
                    filledIn(context_.text(Text::AndMore), {std::to_string(names.size() - told)});
    }
    context_.prompter.beep();
    context_.prompter.critical(text);
}

void CommandRunner::refreshOutbox() {
    const std::string selected = list_.selectedIdentity();
    context_.requests.txGetAllOutbox();
    rebuild(tree_.selectedKey(), selected);
}

void CommandRunner::sendCommand(Integer UucpCommandRecord::*flag) {
    context_.data.uucp_command = UucpCommandRecord();
    context_.data.uucp_command.*flag = kTrue;
    context_.requests.txSendUucpCommand();
}

void CommandRunner::transportNow() {
    sendCommand(&UucpCommandRecord::transport_now);
}

void CommandRunner::cancelTransport() {
    sendCommand(&UucpCommandRecord::cancel_transport);
}

} // namespace tollwick
