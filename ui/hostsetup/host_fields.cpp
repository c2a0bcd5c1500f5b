#include "ui/hostsetup/host_fields.h"

#include "ui_host_setup_form.h"

namespace tollwick {
namespace {

// Calls `visit(control, field)` for each pair, page by page.
template <class Entry, class Visit>
void forEachField(const Ui::HostSetupForm& ui, Entry& entry, Visit visit) {
    visit(ui.HostSetupNameTxt, entry.display_name);
    visit(ui.MailDomainTxt, entry.mail_domain);
    visit(ui.ActiveHostCheck, entry.active);
    visit(ui.DefaultDomainCheck, entry.default_domain);

    visit(ui.obMailTransport1, entry.transport_when_in_queue);
    visit(ui.tbMailLimit, entry.mail_limit.text);
    visit(ui.chkUseTapi, entry.do_not_use_tapi);
    visit(ui.PhoneNoTxt, entry.phone_number);
    visit(ui.CallRetriesTxt, entry.call_retries.text);
    visit(ui.RetryTimeTxt, entry.retry_time.text);
    visit(ui.TimeoutTxt, entry.dial_timeout.text);

    visit(ui.LoginNameTxt, entry.login_name);
    visit(ui.PasswordTxt, entry.password);
    visit(ui.UucpLoginNameTxt, entry.uucp_login_name);
    visit(ui.UucpPasswordTxt, entry.uucp_password);
    visit(ui.LocalUUCPnameTxt, entry.local_uucp_name);
    visit(ui.RemoteHostNameTxt, entry.remote_uucp_name);
    visit(ui.UucpProtocolLbx, entry.uucp_protocol.index);
    visit(ui.UucpTimeoutTxt, entry.uucp_timeout.text);
    visit(ui.PackSizeLbx, entry.packet_size.index);
    visit(ui.WindowsSizeLbx, entry.window_size.index);

    visit(ui.ScripFileNameTxt, entry.script_file_name);

    visit(ui.InitializationStringTxt, entry.modem_init);
    visit(ui.ComPortLbx, entry.com_port.index);
    visit(ui.ParityLbx, entry.parity.index);
    visit(ui.DataBitsLbx, entry.data_bits.index);
    visit(ui.StopBitsLbx, entry.stop_bits.index);
    visit(ui.RasHost, entry.ras_host);
    visit(ui.RasUucpPort, entry.uucp_tcp_port.text);
    visit(ui.HostLupTm, entry.host_lookup_timeout.text);
    visit(ui.RasUsernameTxt, entry.ras_user_name);
    visit(ui.RasPasswordTxt, entry.ras_password);
    visit(ui.UseCurrentTcp, entry.do_not_use_active_connection);
}

struct Show {
    void operator()(QLineEdit* edit, const std::string& text) const {
        edit->setText(QString::fromStdString(text));
        edit->setCursorPosition(0);
    }
    void operator()(QAbstractButton* button, bool is_on) const { button->setChecked(is_on); }
    void operator()(QComboBox* list, int position) const { list->setCurrentIndex(position); }
};

struct Take {
    void operator()(const QLineEdit* edit, std::string& text) const {
        text = edit->text().toStdString();
    }
    void operator()(const QAbstractButton* button, bool& is_on) const {
        is_on = button->isChecked();
    }
    void operator()(const QComboBox* list, int& position) const {
        const bool could_be_shown = position >= 0 && position < list->count();
        if (could_be_shown || list->currentIndex() >= 0)
            position = list->currentIndex();
    }
};

} // namespace

void showFields(const HostEntry& entry, const Ui::HostSetupForm& ui) {
    forEachField(ui, entry, Show());
    ui.obMailTransport0->setChecked(!entry.transport_when_in_queue);
}

QWidget* controlOf(const HostField& field, const Ui::HostSetupForm& ui) {
    if (field == HostField::ScriptText)
        return ui.ScriptBox;
    if (field == HostField::Modem)
        return ui.Modems;
    HostEntry entry;
    const void* wanted = std::visit(
        [&entry](auto member) -> const void* {
            if constexpr (std::is_same_v<decltype(member), NumberField HostEntry::*>)
                return &(entry.*member).text;
            else if constexpr (std::is_member_pointer_v<decltype(member)>)
                return &(entry.*member);
            else
                return nullptr;
        },
        field.member);
    QWidget* found = nullptr;
    forEachField(ui, entry, [&](QWidget* control, const auto& shown) {
        if (&shown == wanted)
            found = control;
    });
    return found;
}

void takeFields(const Ui::HostSetupForm& ui, HostEntry& entry) {
    forEachField(ui, entry, Take());
}

} // namespace tollwick
