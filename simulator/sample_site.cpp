#include "simulator/sample_site.h"

#include "wire/scramble.h"

#include <initializer_list>
#include <string>
#include <string_view>

namespace tollwick::simulator {
namespace {

enum ConnectUsing : Integer { ByModem = 0, ByRas = 1, ByTcp = 2 };
enum Day : Integer { Friday = 4, Weekdays = 7, Weekends = 8, EveryDay = 9 };
enum Interval : Integer { Every15Min = 2, Every30Min = 4, Every2Hours = 6 };

ScheduleRecord schedule(Long number, Day day) {
    ScheduleRecord record;
    record.identity = 1;
    record.record_number = number;
    record.day = day;
    record.at_time = "00:00";
    record.between_first = "00:00";
    record.between_second = "23:59";
    return record;
}

ScheduleRecord timed(Long number, Day day, const char* at) {
    ScheduleRecord record = schedule(number, day);
    record.timed = 1;
    record.at_time = at;
    return record;
}

ScheduleRecord every(Long number, Day day, Interval interval, const char* from, const char* to,
                     Integer delay) {
    ScheduleRecord record = schedule(number, day);
    record.interval = interval;
    record.between_first = from;
    record.between_second = to;
    record.delay = delay;
    return record;
}

template <std::size_t N>
void setPassword(FixedText<N>& field, std::string_view password) {
    field.setBytes(scramble(HostPasswordKey, toAnsi(password), 0x5A));
}

// What all hosts of the sample have in common.
HostRecord host(Long number, const char* display_name, const char* mail_domain, const char* node,
                ConnectUsing connect_using) {
    HostRecord record;
    record.state = -1;
    record.record_number = number;
    record.spool_directory = node;
    record.display_name = display_name;
    record.mail_domain = mail_domain;
    record.active = kTrue;
    record.connect_using = connect_using;
    record.local_uucp_name = "corvale";
    record.remote_uucp_name = node;
    record.login_name = "";
    record.password = "";
    record.uucp_login_name = "ucorvale";
    setPassword(record.uucp_password, "nattpost");
    record.uucp_timeout = 12;
    record.window_size = 7;
    record.packet_size = 2; // 64
    record.script_file_name = "";
    record.tapi_device = "";
    record.tapi_location = "";
    record.phone_number = "";
    record.retry_time = 5;
    record.call_retries = 3;
    record.dial_timeout = 60;
    record.modem_make = "None";
    record.modem_model = "";
    record.modem_reset = "ATZ^M";
    record.modem_init = "AT&F1";
    record.modem_attention = "AT";
    record.modem_busy = "BUSY";
    record.modem_connect = "CONNECT";
    record.modem_dial = "ATDT";
    record.modem_hang_up = "ATH^M";
    record.modem_answer = "ATA^M";
    record.modem_max_speed = 115200;
    record.com_port = 1;
    record.connect_speed = 6; // 57600
    record.ras_host = "";
    record.uucp_tcp_port = 540;
    record.ras_user_name = "";
    record.ras_password = "";
    record.ras_entry = "";
    record.host_lookup_timeout = 15;
    record.mail_limit = 5;
    return record;
}

std::vector<HostRecord> sampleHosts() {
    HostRecord malmo = host(1, "Malmö huvudkontor", "malmo.corvale.example", "malmo", ByModem);
    malmo.default_domain = kTrue;
    malmo.phone_number = "040-123456";
    malmo.tapi_location = "Kontoret i Lund";
    malmo.tapi_device = "Standard 33600 bps Modem";
    malmo.login_name = "växel";
    setPassword(malmo.password, "smörgås");
    malmo.script_file_name = "malmo.scp";
    malmo.transport_when_in_queue = kTrue;

    HostRecord goteborg = host(3, "Göteborgs lager", "lager.corvale.example", "gbglager", ByRas);
    goteborg.ras_entry = "Göteborg ISDN";
    goteborg.ras_entry_position = 1;
    goteborg.ras_user_name = "corvale";
    setPassword(goteborg.ras_password, "fiskmås");
    goteborg.ras_host = "uucp.lager.example";
    goteborg.uucp_protocol = 1; // t
    goteborg.uucp_timeout = 40;

    HostRecord stockholm = host(4, "Stockholm", "sthlm.corvale.example", "sthlm", ByTcp);
    stockholm.ras_host = "uucp.sthlm.example";
    stockholm.uucp_protocol = 1; // t
    stockholm.uucp_timeout = 40;

    HostRecord are = host(5, "Åre fjällstation", "are.corvale.example", "are", ByModem);
    are.do_not_use_tapi = kTrue;
    are.tapi_location = "Hotell Örnsköldsvik";
    are.tapi_device = "Standard 56000 bps Modem";
    are.phone_number = "0647-55501";
    are.script_file_name = "fjall.scp";
    are.connect_speed = 4; // 19200
    are.packet_size = 1;   // 32
    are.window_size = 3;
    are.active = kFalse; // no mail waits for it

    HostRecord vaxjo = host(8, "Växjö tryckeri", "tryckeri.example", "vaxjo", ByTcp);
    vaxjo.ras_host = "192.0.2.48";
    vaxjo.uucp_protocol = 2; // G
    return {malmo, goteborg, stockholm, are, vaxjo};
}

OutboxRecord mail(const char* recipient, const char* node, const char* file_name, Long size) {
    OutboxRecord record;
    record.recipient = recipient;
    record.node = node;
    record.file_name = file_name;
    record.size = size;
    return record;
}

SettingsRecord sampleSettings() {
    SettingsRecord settings;
    settings.service_version = 4;
    settings.smtp_service_ip = "127.0.0.1";
    settings.smtp_service_port = 25;
    settings.smtp_forward_ip = "192.0.2.10";
    settings.smtp_forward_port = 2525;
    settings.admin_ip = "127.0.0.1";
    settings.admin_port = 542;
    settings.schedule_activated = kTrue;
    settings.doc_viewer = "notepad.exe";
    settings.allow_priority = kTrue;
    settings.uucp_prior_command = "";
    settings.uucp_after_command = "rensa.bat";
    settings.remote_debugging_level = "3";
    settings.force_send_params = kFalse;
    settings.discharge_cr = kTrue;
    settings.mail_logging = kTrue;
    settings.uucp_transfer_logging = kTrue;
    settings.smtp_logging = kTrue;
    settings.mail_log_period = 30;
    settings.uucp_transfer_log_period = 14;
    settings.smtp_log_period = 14;
    settings.script_log_period = 7;
    settings.uucp_advanced_log_period = 7;
    settings.uucp_command_log_period = 7;
    settings.com_log_period = 3;
    return settings;
}

ScriptRecord script(const char* file_name, const char* text) {
    return {VarText(file_name), VarText(text)};
}

std::vector<VarText> names(std::initializer_list<const char*> texts) {
    return {texts.begin(), texts.end()};
}

} // namespace

Credentials sampleLogin() {
    return {QString::fromLatin1(kSampleUserId), QString::fromLatin1(kSamplePassword)};
}

Site sampleSite() {
    Site site;
    site.login = sampleLogin();
    site.settings = sampleSettings();
    site.schedules = {timed(1, Weekdays, "07:30"), timed(2, EveryDay, "23:15"),
                      every(3, Weekdays, Every15Min, "08:00", "17:00", 5),
                      every(5, Weekends, Every2Hours, "09:00", "21:00", 0),
                      every(9, Friday, Every30Min, "12:00", "16:30", 10)};
    site.hosts = sampleHosts();
    site.spool_directories = names({"malmo", "gbglager", "sthlm", "are", "vaxjo"});
    site.outbox = {mail("order@malmo.corvale.example", "malmo", "D.corv0A17", 3),
                   mail("åke.öberg@malmo.corvale.example", "malmo", "D.corv0A18", 2),
                   mail("lager@lager.corvale.example", "gbglager", "D.corv0A19", 12),
                   mail("info@sthlm.corvale.example", "sthlm", "D.corv0A1A", 40),
                   mail("britt@malmo.corvale.example", "malmo", "D.corv0A1B", 6),
                   mail("frakt@lager.corvale.example", "gbglager", "D.corv0A1C", 1),
                   mail("redaktion@tryckeri.example", "vaxjo", "D.corv0A1D", 58),
                   mail("vd@sthlm.corvale.example", "sthlm", "D.corv0A1E", 5),
                   mail("faktura@malmo.corvale.example", "malmo", "D.corv0A1F", 9),
                   mail("inköp@lager.corvale.example", "gbglager", "D.corv0A20", 4),
                   mail("korrektur@tryckeri.example", "vaxjo", "D.corv0A21", 2),
                   mail("postmaster@malmo.corvale.example", "malmo", "D.corv0A22", 1)};
    site.scripts = {script("malmo.scp", "# Växeln i Malmö\r\n"
                                        "waitfor \"login:\"\r\n"
                                        "transmit $USERID \"^M\"\r\n"
                                        "waitfor \"assword:\"\r\n"
                                        "transmit $PASSWORD \"^M\"\r\n"),
                    script("fjall.scp", "# Satellitlänken svarar långsamt\r\n"
                                        "set timeout 90\r\n"
                                        "waitfor \"Anslut:\"\r\n"
                                        "transmit \"uucp^M\"\r\n"),
                    script("standard.scp", "waitfor \"login:\"\r\n"
                                           "transmit $USERID \"^M\"\r\n")};
    site.tapi_locations = names({"Kontoret i Lund", "Hemma", "Hotell Örnsköldsvik"});
    site.tapi_devices = names({"Standard 33600 bps Modem", "Standard 56000 bps Modem",
                               "ISDN-adapter kanal 1", "Seriell kabel på COM2"});
    site.ras_entries = names({"Stockholm modempool", "Göteborg ISDN", "Reservförbindelse"});
    return site;
}

} // namespace tollwick::simulator
