// The sub-records that travel in the data block of a Comrecord. Each is a plain struct and one list
// of its fields in the order of the wire; packing, unpacking, sizes and the stand-in service's site
// file all walk that list (record_packing.h).
//
// A field named `unnamed...` has no meaning to the console: it is carried through byte for byte.
#pragma once

#include "wire/wire_types.h"

#include <string_view>
#include <tuple>

namespace tollwick {

// One field of a record: its name in the site file of the stand-in service, and where it is kept.
template <class Record, class Type>
struct Field {
    std::string_view name;
    Type Record::*member;
};

template <class Record, class Type>
Field(std::string_view, Type Record::*) -> Field<Record, Type>;

// One transport schedule.
struct ScheduleRecord {
    // 0 in a blank record that has not been sent, -1 when it is sent as a new one; the service's
    // reply tells the value that is kept.
    Integer identity{};
    Integer day{};      // position in the list of days, 0 Monday to 6 Sunday, 7 to 9 groups of days
    Integer timed{};    // 1 timed, 0 interval; 1 and not -1 is wanted
    Integer interval{}; // position in the table of intervals, 0 to 10
    Integer unnamed_8{};
    FixedText<5> at_time; // "hh:mm"
    Integer unnamed_15{};
    FixedText<5> between_first;
    FixedText<5> between_second;
    Integer delay{}; // minutes
    Integer unnamed_29{};
    Long record_number{};
    FixedText<42> unnamed_35;

    bool operator==(const ScheduleRecord&) const = default;

    static constexpr auto fields() {
        using R = ScheduleRecord;
        return std::tuple{Field{"identity", &R::identity},
                          Field{"day", &R::day},
                          Field{"timed", &R::timed},
                          Field{"interval", &R::interval},
                          Field{"unnamed_8", &R::unnamed_8},
                          Field{"at_time", &R::at_time},
                          Field{"unnamed_15", &R::unnamed_15},
                          Field{"between_first", &R::between_first},
                          Field{"between_second", &R::between_second},
                          Field{"delay", &R::delay},
                          Field{"unnamed_29", &R::unnamed_29},
                          Field{"record_number", &R::record_number},
                          Field{"unnamed_35", &R::unnamed_35}};
    }
};

// One UUCP neighbour. The three passwords hold scrambled text only.
struct HostRecord {
    Integer state{}; // 0 for a host that the service does not store yet
    Long record_number{};
    FixedText<512> spool_directory;
    FixedText<60> display_name;
    FixedText<60> mail_domain;
    Integer active{};
    Integer connect_using{}; // 0 modem, 1 TCP/IP via RAS, 2 clean TCP/IP
    FixedText<30> local_uucp_name;
    FixedText<30> unnamed_672;
    FixedText<30> remote_uucp_name;
    FixedText<30> unnamed_732;
    FixedText<60> login_name;
    FixedText<60> password;
    FixedText<60> uucp_login_name;
    FixedText<60> uucp_password;
    Integer uucp_protocol{}; // 0 "g", 1 "t", 2 "G"
    Integer uucp_timeout{};  // seconds
    FixedText<100> tapi_device;
    FixedText<153> unnamed_1106;
    Integer retry_time{};   // between two calls, in the unit of the service
    Integer call_retries{}; // calls after the first
    FixedText<255> script_file_name;
    Integer do_not_use_tapi{};
    FixedText<60> phone_number;
    Integer modem_make_position{};  // from 0
    Integer modem_model_position{}; // from 0, among those of the make
    FixedText<30> modem_make;
    FixedText<30> modem_model;
    FixedText<30> modem_reset;
    FixedText<60> modem_init;
    FixedText<30> modem_attention;
    FixedText<30> modem_busy;
    FixedText<30> modem_connect;
    FixedText<30> modem_dial;
    FixedText<30> modem_hang_up;
    FixedText<30> modem_answer;
    // From com_port to parity but for the maximum: positions in the host dialog's lists, from 0.
    Integer com_port{};
    Long modem_max_speed{}; // bits per second
    Integer connect_speed{};
    Integer data_bits{};
    Integer stop_bits{};
    Integer parity{};
    FixedText<30> tapi_location;
    Integer unnamed_1958{};
    FixedText<30> unnamed_1960;
    Integer unnamed_1990{};
    Long dial_timeout{}; // seconds
    Integer default_domain{};
    Integer window_size{}; // position, counted from 1
    Integer packet_size{}; // position, counted from 1
    FixedText<60> ras_host;
    Integer uucp_tcp_port{};
    Integer ras_entry_position{}; // from 0
    FixedText<30> ras_user_name;
    FixedText<50> ras_password;
    FixedText<30> ras_entry;
    Integer do_not_use_active_connection{};
    Integer host_lookup_timeout{};     // seconds, at most 30
    Integer transport_when_in_queue{}; // 0 only scheduled, -1 also when mail is in queue
    Integer mail_limit{};              // mails in queue that start a transport
    FixedText<108> unnamed_2184;

    bool operator==(const HostRecord&) const = default;

    static constexpr auto fields() {
        using R = HostRecord;
        return std::tuple{Field{"state", &R::state},
                          Field{"record_number", &R::record_number},
                          Field{"spool_directory", &R::spool_directory},
                          Field{"display_name", &R::display_name},
                          Field{"mail_domain", &R::mail_domain},
                          Field{"active", &R::active},
                          Field{"connect_using", &R::connect_using},
                          Field{"local_uucp_name", &R::local_uucp_name},
                          Field{"unnamed_672", &R::unnamed_672},
                          Field{"remote_uucp_name", &R::remote_uucp_name},
                          Field{"unnamed_732", &R::unnamed_732},
                          Field{"login_name", &R::login_name},
                          Field{"password", &R::password},
                          Field{"uucp_login_name", &R::uucp_login_name},
                          Field{"uucp_password", &R::uucp_password},
                          Field{"uucp_protocol", &R::uucp_protocol},
                          Field{"uucp_timeout", &R::uucp_timeout},
                          Field{"tapi_device", &R::tapi_device},
                          Field{"unnamed_1106", &R::unnamed_1106},
                          Field{"retry_time", &R::retry_time},
                          Field{"call_retries", &R::call_retries},
                          Field{"script_file_name", &R::script_file_name},
                          Field{"do_not_use_tapi", &R::do_not_use_tapi},
                          Field{"phone_number", &R::phone_number},
                          Field{"modem_make_position", &R::modem_make_position},
                          Field{"modem_model_position", &R::modem_model_position},
                          Field{"modem_make", &R::modem_make},
                          Field{"modem_model", &R::modem_model},
                          Field{"modem_reset", &R::modem_reset},
                          Field{"modem_init", &R::modem_init},
                          Field{"modem_attention", &R::modem_attention},
                          Field{"modem_busy", &R::modem_busy},
                          Field{"modem_connect", &R::modem_connect},
                          Field{"modem_dial", &R::modem_dial},
                          Field{"modem_hang_up", &R::modem_hang_up},
                          Field{"modem_answer", &R::modem_answer},
                          Field{"com_port", &R::com_port},
                          Field{"modem_max_speed", &R::modem_max_speed},
                          Field{"connect_speed", &R::connect_speed},
                          Field{"data_bits", &R::data_bits},
                          Field{"stop_bits", &R::stop_bits},
                          Field{"parity", &R::parity},
                          Field{"tapi_location", &R::tapi_location},
                          Field{"unnamed_1958", &R::unnamed_1958},
                          Field{"unnamed_1960", &R::unnamed_1960},
                          Field{"unnamed_1990", &R::unnamed_1990},
                          Field{"dial_timeout", &R::dial_timeout},
                          Field{"default_domain", &R::default_domain},
                          Field{"window_size", &R::window_size},
                          Field{"packet_size", &R::packet_size},
                          Field{"ras_host", &R::ras_host},
                          Field{"uucp_tcp_port", &R::uucp_tcp_port},
                          Field{"ras_entry_position", &R::ras_entry_position},
                          Field{"ras_user_name", &R::ras_user_name},
                          Field{"ras_password", &R::ras_password},
                          Field{"ras_entry", &R::ras_entry},
                          Field{"do_not_use_active_connection", &R::do_not_use_active_connection},
                          Field{"host_lookup_timeout", &R::host_lookup_timeout},
                          Field{"transport_when_in_queue", &R::transport_when_in_queue},
                          Field{"mail_limit", &R::mail_limit},
                          Field{"unnamed_2184", &R::unnamed_2184}};
    }
};

// The settings of the service. Log switches are yes/no, log periods are days.
struct SettingsRecord {
    Integer unnamed_1{};
    Single service_version{}; // telephony is offered from 4 on
    Integer unnamed_3{};
    VarText unnamed_4;
    VarText smtp_service_ip;
    Long smtp_service_port{};
    VarText smtp_forward_ip;
    Long smtp_forward_port{};
    VarText admin_ip;
    Long admin_port{};
    Integer schedule_activated{};
    VarText doc_viewer;
    Integer allow_priority{};
    VarText uucp_prior_command;
    VarText uucp_after_command;
    VarText remote_debugging_level;
    Integer force_send_params{};
    Integer discharge_cr{};
    Integer mail_logging{};
    Integer uucp_transfer_logging{};
    Integer smtp_logging{};
    Integer script_logging{};
    Integer uucp_advanced_logging{};
    Integer uucp_command_logging{};
    Integer com_logging{};
    Integer mail_log_period{};
    Integer uucp_transfer_log_period{};
    Integer smtp_log_period{};
    Integer script_log_period{};
    Integer uucp_advanced_log_period{};
    Integer uucp_command_log_period{};
    Integer com_log_period{};
    VarText unnamed_33;
    RawBytes<8> unnamed_34{};
    VarText unnamed_35;
    Integer unnamed_36{};

    bool operator==(const SettingsRecord&) const = default;

    static constexpr auto fields() {
        using R = SettingsRecord;
        return std::tuple{Field{"unnamed_1", &R::unnamed_1},
                          Field{"service_version", &R::service_version},
                          Field{"unnamed_3", &R::unnamed_3},
                          Field{"unnamed_4", &R::unnamed_4},
                          Field{"smtp_service_ip", &R::smtp_service_ip},
                          Field{"smtp_service_port", &R::smtp_service_port},
                          Field{"smtp_forward_ip", &R::smtp_forward_ip},
                          Field{"smtp_forward_port", &R::smtp_forward_port},
                          Field{"admin_ip", &R::admin_ip},
                          Field{"admin_port", &R::admin_port},
                          Field{"schedule_activated", &R::schedule_activated},
                          Field{"doc_viewer", &R::doc_viewer},
                          Field{"allow_priority", &R::allow_priority},
                          Field{"uucp_prior_command", &R::uucp_prior_command},
                          Field{"uucp_after_command", &R::uucp_after_command},
                          Field{"remote_debugging_level", &R::remote_debugging_level},
                          Field{"force_send_params", &R::force_send_params},
                          Field{"discharge_cr", &R::discharge_cr},
                          Field{"mail_logging", &R::mail_logging},
                          Field{"uucp_transfer_logging", &R::uucp_transfer_logging},
                          Field{"smtp_logging", &R::smtp_logging},
                          Field{"script_logging", &R::script_logging},
                          Field{"uucp_advanced_logging", &R::uucp_advanced_logging},
                          Field{"uucp_command_logging", &R::uucp_command_logging},
                          Field{"com_logging", &R::com_logging},
                          Field{"mail_log_period", &R::mail_log_period},
                          Field{"uucp_transfer_log_period", &R::uucp_transfer_log_period},
                          Field{"smtp_log_period", &R::smtp_log_period},
                          Field{"script_log_period", &R::script_log_period},
                          Field{"uucp_advanced_log_period", &R::uucp_advanced_log_period},
                          Field{"uucp_command_log_period", &R::uucp_command_log_period},
                          Field{"com_log_period", &R::com_log_period},
                          Field{"unnamed_33", &R::unnamed_33},
                          Field{"unnamed_34", &R::unnamed_34},
                          Field{"unnamed_35", &R::unnamed_35},
                          Field{"unnamed_36", &R::unnamed_36}};
    }
};

// One mail that waits in the outbox.
struct OutboxRecord {
    VarText recipient;
    VarText node; // the node that it is routed through
    VarText file_name;
    VarText unnamed_4;
    Long size{}; // kB

    bool operator==(const OutboxRecord&) const = default;

    static constexpr auto fields() {
        using R = OutboxRecord;
        return std::tuple{Field{"recipient", &R::recipient}, Field{"node", &R::node},
                          Field{"file_name", &R::file_name}, Field{"unnamed_4", &R::unnamed_4},
                          Field{"size", &R::size}};
    }
};

// What the UUCP daemon is doing.
struct UucpStatusRecord {
    Long queued_files{};
    Long file_number{};
    Long file_size{}; // bytes
    Long unnamed_4{};
    Integer percent{};    // of the file, 0 to 100
    Long average_speed{}; // bits per second
    VarText state;
    VarText file_name;

    bool operator==(const UucpStatusRecord&) const = default;

    static constexpr auto fields() {
        using R = UucpStatusRecord;
        return std::tuple{Field{"queued_files", &R::queued_files},
                          Field{"file_number", &R::file_number},
                          Field{"file_size", &R::file_size},
                          Field{"unnamed_4", &R::unnamed_4},
                          Field{"percent", &R::percent},
                          Field{"average_speed", &R::average_speed},
                          Field{"state", &R::state},
                          Field{"file_name", &R::file_name}};
    }
};

struct LoginRecord {
    VarText user_id;
    VarText password;

    bool operator==(const LoginRecord&) const = default;

    static constexpr auto fields() {
        using R = LoginRecord;
        return std::tuple{Field{"user_id", &R::user_id}, Field{"password", &R::password}};
    }
};

struct ScriptRecord {
    VarText file_name;
    VarText text; // read with scriptText(): blanks at its end belong to it

    bool operator==(const ScriptRecord&) const = default;

    static constexpr auto fields() {
        using R = ScriptRecord;
        return std::tuple{Field{"file_name", &R::file_name}, Field{"text", &R::text}};
    }
};

// One name of a list: a telephony location or device, a dial-up entry or a script file.
struct NameListRecord {
    VarText name;

    bool operator==(const NameListRecord&) const = default;

    static constexpr auto fields() {
        using R = NameListRecord;
        return std::tuple{Field{"name", &R::name}};
    }
};

// A command starts from a blank record and sets its own flag to kTrue.
struct UucpCommandRecord {
    Integer transport_now{};
    Integer cancel_transport{};

    bool operator==(const UucpCommandRecord&) const = default;

    static constexpr auto fields() {
        using R = UucpCommandRecord;
        return std::tuple{Field{"transport_now", &R::transport_now},
                          Field{"cancel_transport", &R::cancel_transport}};
    }
};

} // namespace tollwick
