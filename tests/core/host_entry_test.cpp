#include "link/record_packing.h"
#include "link/scramble.h"
#include "tests/support/code_page.h"
#include "tests/support/error_of.h"
#include "tests/support/hex.h"
#include "ui/hostsetup/host_entry.h"

#include <gtest/gtest.h>

#include <functional>

namespace tollwick {
namespace {

using E = HostEntry;
using H = HostRecord;

std::string bytesOf(const HostRecord& record) {
    Comrecord comrecord;
    packRecord(record, comrecord);
    return {comrecord.ComrecordData.data(), wireSize<HostRecord>()};
}

// A host whose every text field holds these bytes, filled up, and whose every number is another
// one. Nothing in it is replaced by a default.
HostRecord filledHost(const std::string& text, char padding) {
    HostRecord record;
    int count = 2;
    forEachField<HostRecord>([&](const auto& field) {
        auto& value = record.*field.member;
        if constexpr (std::is_arithmetic_v<std::decay_t<decltype(value)>>) {
            value = static_cast<std::decay_t<decltype(value)>>(count++);
        } else {
            std::string bytes = text;
            bytes.resize(value.bytes().size(), padding);
            bytes.copy(value.data(), bytes.size());
        }
    });
    record.host_lookup_timeout = 30;
    return record;
}
const HostRecord kHost = filledHost("abc", ' ');

// The record after the dialog has shown it and `change` has been made there.
HostRecord changed(const HostRecord& before, const std::function<void(E&)>& change,
                   bool has_telephony = true) {
    HostEntry entry = entryOf(before);
    change(entry);
    HostRecord after = before;
    storeEntry(entry, has_telephony, after);
    return after;
}

TEST(HostEntry, AHostThatIsNotChangedKeepsEveryByte) {
    std::string all_bytes = "x";
    for (int byte = 1; byte < 256; ++byte)
        all_bytes += static_cast<char>(byte);
    for (const std::string& text : {std::string("  abc"), std::string(1000, 'x'), all_bytes,
                                    fromHex("61 00 62 20 20 00 20"), fromHex("00 61")})
        for (const char padding : {' ', '\0'}) {
            const HostRecord host = filledHost(text, padding);
            EXPECT_EQ(toHex(bytesOf(changed(host, [](E&) {}))), toHex(bytesOf(host)));
        }
}

// What each kind of control is changed to, and the bytes that this comes to, low byte first.
template <class Shown>
using Change = std::pair<Shown, std::string_view>;
const std::tuple kChanges{Change<std::string>{" New!", " New!"},
                          Change<NumberField>{{" 17 "}, "\x11"}, Change<ListPosition>{{1}, "\1"},
                          Change<ListPositionFrom1>{{1}, "\2"}, Change<bool>{false, {"\0\0", 2}}};

// Where in the record a control stands, and its change, which tells the bytes.
struct Control {
    std::size_t offset;
    std::function<std::string_view(E&)> change;
};
template <class Shown>
std::string_view alter(Shown& shown) {
    const auto& [value, bytes] = std::get<Change<Shown>>(kChanges);
    shown = value;
    return bytes;
}
template <class Shown>
Control at(std::size_t offset, Shown E::*field) {
    return {offset, [field](E& entry) { return alter(entry.*field); }};
}
Control at(std::size_t offset, std::string CurrentModem::*field) {
    return {offset, [field](E& entry) { return alter(entry.modem.*field); }};
}

TEST(HostEntry, EachControlChangesItsOwnFieldOnly) {
    using M = CurrentModem;
    // clang-format off
    const Control controls[] = {
        at(518, &E::display_name), at(578, &E::mail_domain), at(638, &E::active),
        at(640, &E::connect_using), at(642, &E::local_uucp_name), at(702, &E::remote_uucp_name),
        at(762, &E::login_name), at(882, &E::uucp_login_name), at(1002, &E::uucp_protocol),
        at(1004, &E::uucp_timeout), at(1006, &E::tapi_device), at(1259, &E::retry_time),
        at(1261, &E::call_retries), at(1263, &E::script_file_name), at(1518, &E::do_not_use_tapi),
        at(1520, &E::phone_number), at(1584, &M::make), at(1614, &M::model), at(1644, &M::reset),
        at(1674, &E::modem_init), at(1734, &M::attention), at(1764, &M::busy),
        at(1794, &M::connect), at(1824, &M::dial), at(1854, &M::hang_up), at(1884, &M::answer),
        at(1914, &E::com_port), at(1920, &E::connect_speed), at(1922, &E::data_bits),
        at(1924, &E::stop_bits), at(1926, &E::parity), at(1928, &E::tapi_location),
        at(1992, &E::dial_timeout), at(1996, &E::default_domain), at(1998, &E::window_size),
        at(2000, &E::packet_size), at(2002, &E::ras_host), at(2062, &E::uucp_tcp_port),
        at(2066, &E::ras_user_name), at(2176, &E::do_not_use_active_connection),
        at(2178, &E::host_lookup_timeout), at(2180, &E::transport_when_in_queue),
        at(2182, &E::mail_limit),
        {1580, [](E& e) { e.modem.make_position = -1; return "\xFF\xFF"; }},
        {1582, [](E& e) { e.modem.model_position = 258; return "\2\1"; }},
        {1916, [](E& e) { e.modem.max_speed = 115200; return std::string_view("\0\xC2\1\0", 4); }},
        {2146, [](E& e) { return alter(e.ras_entry.name); }},
        {2064, [](E& e) { e.ras_entry.position = 9; return "\x9"; }}};
    // clang-format on
    for (const Control& control : controls) {
        SCOPED_TRACE(control.offset);
        std::string_view bytes;
        const HostRecord after = changed(kHost, [&](E& entry) { bytes = control.change(entry); });
        std::string expected = bytesOf(kHost);
        expected.replace(control.offset, bytes.size(), bytes);
        EXPECT_NE(expected, bytesOf(kHost));
        EXPECT_EQ(toHex(bytesOf(after)), toHex(expected));
        EXPECT_EQ(changed(after, [](E&) {}), after); // and the dialog shows it from there
    }
    // Telephony names belong to services that offer it.
    const auto move = [](E& entry) { entry.tapi_device = entry.tapi_location = "Lund"; };
    EXPECT_EQ(changed(kHost, move, false), kHost);
}

TEST(HostEntry, PositionsAndNumbersThatNoListHoldsAreKept) {
    HostRecord host = kHost;
    for (Integer H::*field : {&H::connect_using, &H::ras_entry_position, &H::call_retries})
        host.*field = -32768;
    host.packet_size = -32767; // the position below it is the lowest one
    host.window_size = 32767;
    host.active = 256; // ticked for any number, and stored as -1 when it is changed
    host.default_domain = 0;
    EXPECT_TRUE(entryOf(host).active);
    EXPECT_EQ(changed(host, [](E&) {}), host);
    EXPECT_EQ(changed(host, [](E& e) { e.default_domain = true; }).default_domain, kTrue);
}

TEST(HostEntry, PasswordsAreScrambledInTheRecord) {
    if (!ansiIsWindows1252())
        GTEST_SKIP();
    const std::tuple<std::string E::*, std::size_t, std::size_t> passwords[] = {
        {&E::password, 822, 60}, {&E::uucp_password, 942, 60}, {&E::ras_password, 2096, 50}};
    for (const auto& [field, offset, width] : passwords) {
        const std::string plain = "räksmörgås" + std::string(width / 2 - 12, 'p') + ' ';
        const HostRecord after = changed(kHost, [&](E& entry) { entry.*field = plain; });
        const std::string stored = bytesOf(after).substr(offset, width);
        EXPECT_EQ(fromAnsi(unscramble(HostPasswordKey, stored)), plain);
        EXPECT_EQ(entryOf(after).*field, plain);
        EXPECT_EQ(toHex(bytesOf(after)), toHex(bytesOf(kHost).replace(offset, width, stored)));
    }
}

TEST(HostEntry, DefaultsStandInForMissingNumbersAndBlankModemCommands) {
    HostRecord record = filledHost("  ", '\0');
    record.modem_max_speed = record.retry_time = 0;
    record.dial_timeout = 0;
    record.uucp_timeout = 1;
    storeEntry(entryOf(record), true, record);
    EXPECT_EQ(record.modem_max_speed, 115200);
    EXPECT_EQ(record.retry_time, 5);
    EXPECT_EQ(record.dial_timeout, 60);
    EXPECT_EQ(record.uucp_timeout, 12);
    EXPECT_EQ(entryOf(kHost).uucp_timeout.text, std::to_string(kHost.uucp_timeout));
    std::string commands;
    for (auto H::*field :
         {&H::modem_make, &H::modem_model, &H::modem_reset, &H::modem_attention, &H::modem_busy,
          &H::modem_connect, &H::modem_dial, &H::modem_hang_up, &H::modem_answer})
        commands += (record.*field).text() + ' ';
    EXPECT_EQ(commands, "None  ATZ^M AT BUSY CONNECT ATDT ATH^M ATA^M ");
}

TEST(HostEntry, ADialUpEntryIsStoredByPositionAndName) {
    const std::string name = "A name that is longer than its field";
    HostRecord host = changed(kHost, [&](E& e) { e.ras_entry = {0, name}; });
    EXPECT_EQ(host.ras_entry_position, 0);
    EXPECT_EQ(host.ras_entry.text(), name.substr(0, 30));
    EXPECT_EQ(asStored("  " + name, &H::ras_entry), name.substr(0, 28));
    const auto clear = [](E& e) { e.ras_entry = {}; };
    host = changed(host, clear);
    EXPECT_EQ(host.ras_entry_position, -1);
    EXPECT_EQ(host.ras_entry.text(), "");
    host.ras_entry_position = 4; // without an entry, whatever position it has is kept
    EXPECT_EQ(changed(host, clear), host);
}

TEST(HostEntry, NumbersBeyondTheirRangeAreRefusedAndAHostLookupIsCapped) {
    HostRecord host = kHost;
    HostEntry entry = entryOf(host);
    const auto store = [&] { return storeEntry(entry, true, host), 0; };
    entry.display_name = "New";
    entry.mail_limit.text = "-32769";
    EXPECT_EQ(errorOf(store), error_number::Overflow);
    entry.mail_limit.text = "0";
    entry.dial_timeout.text = "2147483648";
    EXPECT_EQ(errorOf(store), error_number::Overflow);
    EXPECT_EQ(host, kHost);
    entry.dial_timeout.text = "1";
    for (const auto& [text, stored] : {std::pair{"30.1", 30}, {"1e30", 30}, {"30", 30}, {"", 0}}) {
        entry.host_lookup_timeout.text = text;
        EXPECT_EQ(exceedsHostLookupTimeout(entry), *text != '\0' && text != std::string("30"));
        store();
        EXPECT_EQ(host.host_lookup_timeout, stored) << text;
    }
}

} // namespace
} // namespace tollwick
