#include "ui/frame/command_runner.h"

#include "rules/host_rules.h"
#include "rules/node_keys.h"
#include "ui/dialogs/schedule_form.h"
#include "ui/frame/config_tree.h"
#include "ui/hostsetup/host_setup_form.h"
#include "ui/lists/list_view.h"
#include "ui/login/new_login_form.h"

#include <QTimer>

#include <optional>

namespace tollwick {

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
        return deleteSchedule();
    case Action::DeleteHost:
        return deleteHost();
    case Action::DeleteMail:
        return deleteMail();
    case Action::RefreshOutbox:
        return refreshOutbox();
    default:
        return;
    }
}

void CommandRunner::showNode(const std::string& node_key) {
    list_.showContents(node_key, listContents(node_key, context_.data, context_.texts));
    if (node_key == node::UucpHosts)
        prepareHostForm();
}

void CommandRunner::rebuild(std::string_view node_key) {
    rebuild(node_key, list_.selectedIdentity());
}

void CommandRunner::rebuild(std::string_view node_key, const std::string& selected_identity) {
    if (tree_.selectedKey() == node_key)
        list_.refill(listContents(node_key, context_.data, context_.texts), selected_identity);
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
    context_.data.current_schedule = EmptyScheduleRecord;
    showScheduleForm(Text::AddScheduleCaption);
    rebuild(node::Schedule);
}

void CommandRunner::EditSchedule() {
    editSelected(context_.data.schedules, context_.data.current_schedule,
                 [this] { showScheduleForm(Text::EditScheduleCaption); });
    rebuild(node::Schedule);
}

void CommandRunner::addHost() {
    context_.data.current_host = EmptyHostRecord;
    showHostForm(Text::AddHostCaption);
    rebuild(node::UucpHosts);
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
void CommandRunner::remove(std::string_view node_key, std::vector<Record>& records,
                           const Record* record) {
    const auto row = record - records.data();
    const auto erase = [&] { records.erase(records.begin() + row); };
    // The list is empty already when the link was lost behind the reply, and an assistive tool can
    // have shown another one.
    if (list_.nodeKey() == node_key)
        list_.removeRow(static_cast<int>(row), erase);
    else
        erase();
}

bool CommandRunner::isConfirmed(Text question) {
    return context_.prompter.ask(BoxIcon::Question, context_.text(question), Answer::No) ==
           Answer::Yes;
}

void CommandRunner::deleteSchedule() {
    std::vector<ScheduleRecord>& schedules = context_.data.schedules;
    if (!selected(schedules) || !isConfirmed(Text::ConfirmDeleteSchedule))
        return;
    // While the question stood the link may have been lost, and with it the row.
    const ScheduleRecord* schedule = selected(schedules);
    if (!schedule)
        return;
    const BusyPointer busy(context_.progress);
    if (hasFailed(context_.requests.txDeleteSchedule(schedule->record_number)))
        return;
    remove(node::Schedule, schedules, schedule);
    context_.progress.setInfo(context_.text(Text::Ready));
}

void CommandRunner::deleteHost() {
    std::vector<HostRecord>& hosts = context_.data.hosts;
    if (!selected(hosts) || !isConfirmed(Text::ConfirmDeleteHost))
        return;
    const HostRecord* host = selected(hosts);
    if (!host)
        return;
    const BusyPointer busy(context_.progress);
    const std::string directory = host->spool_directory.text();
    if (hasFailed(context_.requests.txDeleteHost(host->record_number)))
        return;
    if (!context_.requests.wasDone()) {
        context_.prompter.beep();
        context_.prompter.critical(context_.text(Text::HostNotRemoved));
        context_.progress.setInfo(context_.text(Text::Ready));
        return;
    }
    if (!isSpoolDirectoryShared(directory, *host, hosts)) {
        context_.progress.setInfo(context_.text(Text::StatusRemovingHostDirectory));
        if (hasFailed(context_.requests.txDeleteHostDirectory(directory)))
            return;
        if (!context_.requests.wasDone()) {
            context_.prompter.beep();
            context_.prompter.critical(context_.text(Text::HostDirectoryNotRemoved));
        }
    }
    remove(node::UucpHosts, hosts, host);
    context_.progress.setInfo(context_.text(Text::Ready));
}

void CommandRunner::deleteMail() {
    std::vector<OutboxRecord>& outbox = context_.data.outbox;
    if (!selected(outbox) || !isConfirmed(Text::ConfirmDeleteMail))
        return;
    const OutboxRecord* mail = selected(outbox);
    if (!mail)
        return;
    const BusyPointer busy(context_.progress);
    bool removed = false;
    if (hasFailed(context_.requests.txDeleteOutboxMail(*mail, removed)))
        return;
    if (removed)
        remove(node::Outbox, outbox, mail);
    context_.progress.setInfo(context_.text(Text::Ready));
}

void CommandRunner::refreshOutbox() {
    const BusyPointer busy(context_.progress);
    const std::string selected = list_.selectedIdentity();
    const bool failed = hasFailed(context_.requests.txGetAllOutbox());
    rebuild(node::Outbox, selected);
    if (!failed)
        context_.progress.setInfo(context_.text(Text::Ready));
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
