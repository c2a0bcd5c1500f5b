#include "rules/host_entry.h"

#include "base/modem_catalogue.h"
#include "base/numeric.h"
#include "wire/scramble.h"

#include <tuple>

namespace tollwick {
namespace {

constexpr std::string_view kDefaultRetryTime = "5";
constexpr std::string_view kDefaultDialTimeout = "60";
constexpr std::string_view kDefaultUucpTimeout = "12";
constexpr Integer kShortestUucpTimeout = 2;
constexpr Long kDefaultMaxSpeed = 115200;

// One field of the dialog and the field of the record that it is kept in.
template <class EntryType, class RecordType>
struct Binding {
    EntryType HostEntry::*entry;
    RecordType HostRecord::*record;
};
template <class EntryType, class RecordType>
Binding(EntryType HostEntry::*, RecordType HostRecord::*) -> Binding<EntryType, RecordType>;

using E = HostEntry;
using R = HostRecord;
static_assert(decltype(R::modem_init)::width == kHostInitWidth);

constexpr auto kBindings = std::tuple{
    Binding{&E::display_name, &R::display_name},
    Binding{&E::mail_domain, &R::mail_domain},
    Binding{&E::active, &R::active},
    Binding{&E::connect_using, &R::connect_using},
    Binding{&E::local_uucp_name, &R::local_uucp_name},
    Binding{&E::remote_uucp_name, &R::remote_uucp_name},
    Binding{&E::login_name, &R::login_name},
    Binding{&E::uucp_login_name, &R::uucp_login_name},
    Binding{&E::uucp_protocol, &R::uucp_protocol},
    Binding{&E::uucp_timeout, &R::uucp_timeout},
    Binding{&E::retry_time, &R::retry_time},
    Binding{&E::call_retries, &R::call_retries},
    Binding{&E::script_file_name, &R::script_file_name},
    Binding{&E::do_not_use_tapi, &R::do_not_use_tapi},
    Binding{&E::phone_number, &R::phone_number},
    Binding{&E::modem_init, &R::modem_init},
    Binding{&E::com_port, &R::com_port},
    Binding{&E::connect_speed, &R::connect_speed},
    Binding{&E::data_bits, &R::data_bits},
    Binding{&E::stop_bits, &R::stop_bits},
    Binding{&E::parity, &R::parity},
    Binding{&E::dial_timeout, &R::dial_timeout},
    Binding{&E::default_domain, &R::default_domain},
    Binding{&E::window_size, &R::window_size},
    Binding{&E::packet_size, &R::packet_size},
    Binding{&E::ras_host, &R::ras_host},
    Binding{&E::uucp_tcp_port, &R::uucp_tcp_port},
    Binding{&E::ras_user_name, &R::ras_user_name},
    Binding{&E::do_not_use_active_connection, &R::do_not_use_active_connection},
    Binding{&E::host_lookup_timeout, &R::host_lookup_timeout},
    Binding{&E::transport_when_in_queue, &R::transport_when_in_queue},
    Binding{&E::mail_limit, &R::mail_limit},
};

template <class Bound>
constexpr bool kIsNumber = false;
template <class RecordType>
constexpr bool kIsNumber<const Binding<NumberField, RecordType>&> = true;

constexpr auto kTelephonyBindings = std::tuple{
    Binding{&E::tapi_device, &R::tapi_device},
    Binding{&E::tapi_location, &R::tapi_location},
};

template <class RecordType>
struct ModemBinding {
    std::string CurrentModem::*modem;
    RecordType HostRecord::*record;
    std::string_view default_value;
};
template <class RecordType>
ModemBinding(std::string CurrentModem::*, RecordType HostRecord::*, std::string_view)
    -> ModemBinding<RecordType>;

// "^M" stands for a carriage return; the service reads the two characters so.
constexpr auto kModemBindings = std::tuple{
    ModemBinding{&CurrentModem::make, &R::modem_make, std::string_view("None")},
    ModemBinding{&CurrentModem::model, &R::modem_model, std::string_view()},
    ModemBinding{&CurrentModem::reset, &R::modem_reset, usual_command::Reset},
    ModemBinding{&CurrentModem::attention, &R::modem_attention, usual_command::Attention},
    ModemBinding{&CurrentModem::busy, &R::modem_busy, usual_command::Busy},
    ModemBinding{&CurrentModem::connect, &R::modem_connect, usual_command::Connect},
    ModemBinding{&CurrentModem::dial, &R::modem_dial, usual_command::Dial},
    ModemBinding{&CurrentModem::hang_up, &R::modem_hang_up, usual_command::HangUp},
    ModemBinding{&CurrentModem::answer, &R::modem_answer, usual_command::Answer},
};

template <class Bindings, class Visit>
void forEach(const Bindings& bindings, Visit&& visit) {
    std::apply([&](const auto&... binding) { (visit(binding), ...); }, bindings);
}

// From a field of the record to what the dialog shows.
template <std::size_t N>
void load(std::string& shown, const FixedText<N>& field) {
    shown = trimmed(field.text());
}
void load(bool& shown, Integer field) {
    shown = field != kFalse;
}
void load(ListPosition& shown, Integer field) {
    shown.index = field;
}
void load(ListPositionFrom1& shown, Integer field) {
    shown.index = field - 1;
}
template <class Number>
void load(NumberField& shown, Number field) {
    shown.text = std::to_string(field);
}

template <std::size_t N>
std::string plainPassword(const FixedText<N>& field) {
    return fromAnsi(ScrambleField("D", HostPasswordKey, withoutTrailingBlanks(field.bytes())));
}

// And back.
template <std::size_t N>
void store(const std::string& shown, FixedText<N>& field) {
    field = shown;
}
void store(bool shown, Integer& field) {
    field = shown ? kTrue : kFalse;
}
void store(ListPosition shown, Integer& field) {
    field = static_cast<Integer>(shown.index);
}
void store(ListPositionFrom1 shown, Integer& field) {
    field = static_cast<Integer>(shown.index + 1);
}
void store(const NumberField& shown, Integer& field) {
    field = toInteger(numericValue(shown.text));
}
void store(const NumberField& shown, Long& field) {
    field = toLong(numericValue(shown.text));
}
template <std::size_t N>
void storePassword(const std::string& plain, FixedText<N>& field) {
    field.setBytes(scrambledPassword(plain));
}

} // namespace

std::string scrambledPassword(std::string_view plain) {
    return ScrambleField("E", HostPasswordKey, toAnsi(plain));
}

HostEntry entryAsStored(const HostRecord& record) {
    HostEntry entry;
    const auto loadBinding = [&](const auto& binding) {
        load(entry.*binding.entry, record.*binding.record);
    };
    forEach(kBindings, loadBinding);
    forEach(kTelephonyBindings, loadBinding);
    forEach(kModemBindings, [&](const auto& binding) {
        entry.modem.*binding.modem = trimmed((record.*binding.record).text());
    });
    entry.modem.max_speed = record.modem_max_speed;
    entry.modem.make_position = record.modem_make_position;
    entry.modem.model_position = record.modem_model_position;
    entry.ras_entry = {record.ras_entry_position, trimmed(record.ras_entry.text())};

    entry.password = plainPassword(record.password);
    entry.uucp_password = plainPassword(record.uucp_password);
    entry.ras_password = plainPassword(record.ras_password);
    return entry;
}

HostEntry entryOf(const HostRecord& record) {
    HostEntry entry = entryAsStored(record);
    if (record.retry_time == 0)
        entry.retry_time.text = kDefaultRetryTime;
    if (record.dial_timeout == 0)
        entry.dial_timeout.text = kDefaultDialTimeout;
    if (record.uucp_timeout < kShortestUucpTimeout)
        entry.uucp_timeout.text = kDefaultUucpTimeout;
    return entry;
}

CurrentModem withStoredDefaults(CurrentModem modem) {
    forEach(kModemBindings, [&](const auto& binding) {
        std::string& value = modem.*binding.modem;
        if (trimmed(value).empty())
            value = binding.default_value;
    });
    if (modem.max_speed == 0)
        modem.max_speed = kDefaultMaxSpeed;
    return modem;
}

std::optional<HostTextExcess> excessOf(const HostEntry& entry) {
    std::optional<HostTextExcess> excess;
    const auto check = [&](const std::string& text, std::size_t most, HostField field) {
        if (!excess && toAnsi(text).size() > most)
            excess = {field, most};
    };
    const auto checkBinding =
        [&]<class RecordType>(const Binding<std::string, RecordType>& binding) {
            if (binding.entry != &E::script_file_name)
                check(entry.*binding.entry, RecordType::width, {binding.entry});
        };
    forEach(kBindings, [&](const auto& binding) {
        if constexpr (requires { checkBinding(binding); })
            checkBinding(binding);
    });
    // Scrambled, a password takes twice its length and two characters more.
    const auto checkPassword = [&](std::string HostEntry::*password, std::size_t width) {
        check(entry.*password, (width - 2) / 2, {password});
    };
    checkPassword(&E::password, decltype(R::password)::width);
    checkPassword(&E::uucp_password, decltype(R::uucp_password)::width);
    checkPassword(&E::ras_password, decltype(R::ras_password)::width);
    forEach(kModemBindings, [&]<class RecordType>(const ModemBinding<RecordType>& binding) {
        check(entry.modem.*binding.modem, RecordType::width, HostField::Modem);
    });
    return excess;
}

bool exceedsHostLookupTimeout(const HostEntry& entry) {
    return numericValue(entry.host_lookup_timeout.text) > kMaxHostLookupTimeout;
}

void storeEntry(const HostEntry& entered, bool has_telephony, HostRecord& record) {
    HostEntry entry = entered;
    if (exceedsHostLookupTimeout(entry))
        entry.host_lookup_timeout.text = std::to_string(kMaxHostLookupTimeout);
    HostRecord changed = record;
    const auto storeBinding = [&](const auto& binding) {
        if constexpr (kIsNumber<decltype(binding)>) {
            try {
                store(entry.*binding.entry, changed.*binding.record);
            } catch (const RunTimeError& error) {
                throw HostNumberError(error.number(), {binding.entry});
            }
        } else {
            store(entry.*binding.entry, changed.*binding.record);
        }
    };
    forEach(kBindings, storeBinding);
    if (has_telephony)
        forEach(kTelephonyBindings, storeBinding);
    const CurrentModem modem = withStoredDefaults(entry.modem);
    forEach(kModemBindings,
            [&](const auto& binding) { store(modem.*binding.modem, changed.*binding.record); });
    changed.modem_max_speed = modem.max_speed;
    changed.modem_make_position = modem.make_position;
    changed.modem_model_position = modem.model_position;
    changed.ras_entry_position = static_cast<Integer>(entry.ras_entry.position);
    changed.ras_entry = entry.ras_entry.name;

    storePassword(entry.password, changed.password);
    storePassword(entry.uucp_password, changed.uucp_password);
    storePassword(entry.ras_password, changed.ras_password);

    record = changed;
}

} // namespace tollwick
