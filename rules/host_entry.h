// What the controls of the host dialog hold, and its exchange with the host record. One table of
// bindings serves both directions.
#pragma once

#include "base/run_time_error.h"
#include "base/text.h"
#include "wire/records.h"

#include <optional>
#include <string>
#include <variant>

namespace tollwick {

// A position in a list of the dialog, counted from 0; -1 when nothing is selected.
struct ListPosition {
    int index = -1;
    bool operator==(const ListPosition&) const = default;
};
// The same, but stored counted from 1.
struct ListPositionFrom1 {
    int index = -1;
    bool operator==(const ListPositionFrom1&) const = default;
};

// A number as it is typed.
struct NumberField {
    std::string text;
    bool operator==(const NumberField&) const = default;
};

// The modem that the host uses, as chosen from the catalogue.
struct CurrentModem {
    std::string make;
    std::string model;
    std::string reset;
    std::string attention;
    std::string busy;
    std::string connect;
    std::string dial;
    std::string hang_up;
    std::string answer;
    Long max_speed = 0; // bits per second
    Integer make_position = 0;
    Integer model_position = 0;
};

// A dial-up entry. Position -1: none.
struct RasChoice {
    int position = -1;
    std::string name;
    bool operator==(const RasChoice&) const = default;
};

// All texts are UTF-8. The passwords are plain here and scrambled in the record.
struct HostEntry {
    std::string display_name;
    std::string mail_domain;
    bool active = false;
    bool default_domain = false;

    bool transport_when_in_queue = false;
    NumberField mail_limit;
    ListPosition connect_using;
    bool do_not_use_tapi = false;
    std::string phone_number;
    NumberField call_retries;
    NumberField retry_time;
    NumberField dial_timeout;

    std::string login_name;
    std::string password;
    std::string uucp_login_name;
    std::string uucp_password;
    std::string local_uucp_name;
    std::string remote_uucp_name;
    ListPosition uucp_protocol;
    NumberField uucp_timeout;
    ListPositionFrom1 packet_size;
    ListPositionFrom1 window_size;

    std::string script_file_name;

    std::string tapi_location;
    std::string tapi_device;
    CurrentModem modem;
    std::string modem_init;
    ListPosition com_port;
    ListPosition connect_speed;
    ListPosition parity;
    ListPosition data_bits;
    ListPosition stop_bits;

    std::string ras_host;
    NumberField uucp_tcp_port;
    NumberField host_lookup_timeout;
    std::string ras_user_name;
    std::string ras_password;
    bool do_not_use_active_connection = false;
    RasChoice ras_entry;
};

// A field of the dialog; nothing stands for the text of the login script.
struct HostField {
    std::variant<std::monostate, std::string HostEntry::*, bool HostEntry::*,
                 NumberField HostEntry::*, CurrentModem HostEntry::*>
        member;
    bool operator==(const HostField&) const = default;

    static const HostField DisplayName, MailDomain, DefaultDomain, RemoteUucpName, UucpTimeout,
        ScriptFileName, ScriptText, Modem;
};
inline constexpr HostField HostField::DisplayName{&HostEntry::display_name};
inline constexpr HostField HostField::MailDomain{&HostEntry::mail_domain};
inline constexpr HostField HostField::DefaultDomain{&HostEntry::default_domain};
inline constexpr HostField HostField::RemoteUucpName{&HostEntry::remote_uucp_name};
inline constexpr HostField HostField::UucpTimeout{&HostEntry::uucp_timeout};
inline constexpr HostField HostField::ScriptFileName{&HostEntry::script_file_name};
inline constexpr HostField HostField::ScriptText{};
inline constexpr HostField HostField::Modem{&HostEntry::modem};

// A number of the dialog that its field of the record cannot hold.
class HostNumberError : public RunTimeError {
public:
    HostNumberError(std::int32_t number, HostField field) : RunTimeError(number), field_(field) {}
    [[nodiscard]] const HostField& field() const { return field_; }

private:
    HostField field_;
};

// A text that is longer than its field of the record, and how many characters that takes.
struct HostTextExcess {
    HostField field;
    std::size_t most;
};
// The first such text, if any. The name of the login script has a rule of its own, and names that
// the service has offered are stored as far as the record takes them.
std::optional<HostTextExcess> excessOf(const HostEntry& entry);

// Seconds; a longer host lookup is capped at it.
inline constexpr int kMaxHostLookupTimeout = 30;
bool exceedsHostLookupTimeout(const HostEntry& entry);

// What the dialog shows for the record: trimmed texts, unscrambled passwords, and the defaults that
// stand in place of a retry time and a dial timeout of 0 and a UUCP timeout below 2.
HostEntry entryOf(const HostRecord& record);
// The same without the defaults: what was put there on purpose.
HostEntry entryAsStored(const HostRecord& record);

// A plain password (UTF-8) as its field of the record holds it.
std::string scrambledPassword(std::string_view plain);

// Writes the entry into the record as it is shown; unnamed fields stay as they are. Telephony names
// are written only for a service that offers them. Passwords are scrambled anew, a host lookup
// timeout above the cap is stored as the cap, and blank modem commands get their defaults. Throws a
// HostNumberError 6 when a number does not fit, and leaves the record untouched then.
void storeEntry(const HostEntry& entered, bool has_telephony, HostRecord& record);

// The modem as a host stores it: what is blank, make and speed included, has a default. That make
// and speed differ from those of the catalogue's usual values is wanted.
CurrentModem withStoredDefaults(CurrentModem modem);

// The text as the dialog shows it once this field has stored it: what does not fit is cut.
template <std::size_t N>
std::string asStored(std::string_view text, FixedText<N> HostRecord::*) {
    FixedText<N> field;
    field = text;
    return trimmed(field.text());
}

} // namespace tollwick
