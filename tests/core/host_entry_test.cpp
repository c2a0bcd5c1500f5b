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

std::string bytesOf(const HostRecord& record) {
    Comrecord comrecord;
    packRecord(record, comrecord);
    return {comrecord.ComrecordData.data(), wireSize<HostRecord>()};
}

template <std::size_t N>
void setBytes(FixedText<N>& field, std::string bytes, char padding) {
    bytes.resize(N, padding);
    bytes.copy(field.data(), N);
}

// A host whose every text field holds these bytes, filled up, and whose every number is another
// one. Nothing in it is replaced by a default.
HostRecord filledHost(const std::string& text, char padding) {
    HostRecord record;
    int count = 2;
    forEachField<HostRecord>([&](const auto& field) {
        auto& value = record.*field.member;
        if constexpr (std::is_arithmetic_v<std::decay_t<decltype(value)>>)
            value = static_cast<std::decay_t<decltype(value)>>(count++);
        else
            setBytes(value, text, padding);
    });
    setBytes(record.password, scramble(HostPasswordKey, toAnsi("smörgås"), 0x5A), padding);
    setBytes(record.uucp_password, scramble(HostPasswordKey, "", 1), padding);
    setBytes(record.ras_password, scramble(HostPasswordKey, " x ", 255), padding);
    record.host_lookup_timeout = 30;
    return record;
}

TEST(HostEntry, AHostThatIsNotChangedKeepsEveryByte) {
    std::string all_bytes = "x";
    for (int byte = 1; byte < 256; ++byte)
        all_bytes += static_cast<char>(byte);
    for (const std::string& text :
         {std::string("abc"), std::string("  abc"), std::string(1000, 'x'), all_bytes,
          fromHex("61 00 62 20 20 00 20"), fromHex("00 61"), fromHex("E5 E4 F6 80 8D FF")})
        for (const char padding : {' ', '\0'})
            for (const bool has_telephony : {true, false}) {
                SCOPED_TRACE(toHex(text) + (padding ? " blanks" : " NULs"));
                const HostRecord before = filledHost(text, padding);
                HostRecord after = before;
                storeEntry(entryOf(before), has_telephony, after);
                EXPECT_EQ(toHex(bytesOf(after)), toHex(bytesOf(before)));
            }
}

// What a control is changed to, and the bytes that this comes to.
struct Change {
    const char* name;
    std::function<void(HostEntry&)> change;
    std::size_t offset;
    std::size_t width; // of a text, which is padded with blanks
    std::string bytes;
};

// clang-format off
#define TEXT_FIELD(member, offset, width) \
    {#member, [](HostEntry& e) { e.member = " New!"; }, offset, width, " New!"}
#define NUMBER_FIELD(member, offset, width) \
    {#member, [](HostEntry& e) { e.member.text = " 17 "; }, offset, width, \
     fromHex(width == 4 ? "11 00*3" : "11 00")}
#define POSITION_FIELD(member, offset, stored) \
    {#member, [](HostEntry& e) { e.member.index = 1; }, offset, 2, fromHex(stored)}
#define BOX_FIELD(member, offset) \
    {#member, [](HostEntry& e) { e.member = !e.member; }, offset, 2, fromHex("00 00")}
const Change kChanges[] = {
    TEXT_FIELD(display_name, 518, 60), TEXT_FIELD(mail_domain, 578, 60), BOX_FIELD(active, 638),
    POSITION_FIELD(connect_using, 640, "01 00"), TEXT_FIELD(local_uucp_name, 642, 30),
    TEXT_FIELD(remote_uucp_name, 702, 30), TEXT_FIELD(login_name, 762, 60),
    TEXT_FIELD(uucp_login_name, 882, 60), POSITION_FIELD(uucp_protocol, 1002, "01 00"),
    NUMBER_FIELD(uucp_timeout, 1004, 2), TEXT_FIELD(tapi_device, 1006, 100),
    NUMBER_FIELD(retry_time, 1259, 2), NUMBER_FIELD(call_retries, 1261, 2),
    TEXT_FIELD(script_file_name, 1263, 255), BOX_FIELD(do_not_use_tapi, 1518),
    TEXT_FIELD(phone_number, 1520, 60), TEXT_FIELD(modem.make, 1584, 30),
    TEXT_FIELD(modem.model, 1614, 30), TEXT_FIELD(modem.reset, 1644, 30),
    TEXT_FIELD(modem_init, 1674, 60), TEXT_FIELD(modem.attention, 1734, 30),
    TEXT_FIELD(modem.busy, 1764, 30), TEXT_FIELD(modem.connect, 1794, 30),
    TEXT_FIELD(modem.dial, 1824, 30), TEXT_FIELD(modem.hang_up, 1854, 30),
    TEXT_FIELD(modem.answer, 1884, 30), POSITION_FIELD(com_port, 1914, "01 00"),
    POSITION_FIELD(connect_speed, 1920, "01 00"), POSITION_FIELD(data_bits, 1922, "01 00"),
    POSITION_FIELD(stop_bits, 1924, "01 00"), POSITION_FIELD(parity, 1926, "01 00"),
    TEXT_FIELD(tapi_location, 1928, 30), NUMBER_FIELD(dial_timeout, 1992, 4),
    BOX_FIELD(default_domain, 1996), POSITION_FIELD(window_size, 1998, "02 00"),
    POSITION_FIELD(packet_size, 2000, "02 00"), TEXT_FIELD(ras_host, 2002, 60),
    NUMBER_FIELD(uucp_tcp_port, 2062, 2), TEXT_FIELD(ras_user_name, 2066, 30),
    BOX_FIELD(do_not_use_active_connection, 2176), NUMBER_FIELD(host_lookup_timeout, 2178, 2),
    BOX_FIELD(transport_when_in_queue, 2180), NUMBER_FIELD(mail_limit, 2182, 2),
    {"modem.make_position", [](HostEntry& e) { e.modem.make_position = -1; }, 1580, 2, "\xFF\xFF"},
    {"modem.model_position", [](HostEntry& e) { e.modem.model_position = 258; }, 1582, 2, "\2\1"},
    {"modem.max_speed", [](HostEntry& e) { e.modem.max_speed = 115200; }, 1916, 4,
     fromHex("00 C2 01 00")},
    {"ras_entry", [](HostEntry& e) { e.ras_entry.name = "New!"; }, 2146, 30, "New!"},
    {"ras_entry_position", [](HostEntry& e) { e.ras_entry.position = 9; }, 2064, 2,
     fromHex("09 00")},
};
// clang-format on

class HostEntryTest : public testing::Test {
protected:
    // The record after `change` of the dialog.
    HostRecord changed(const std::function<void(HostEntry&)>& change, bool has_telephony = true) {
        HostEntry entry = entryOf(before);
        change(entry);
        HostRecord after = before;
        storeEntry(entry, has_telephony, after);
        return after;
    }

    HostRecord before = filledHost("abc", ' ');
};

TEST_F(HostEntryTest, EachControlChangesItsOwnFieldOnly) {
    for (const Change& change : kChanges) {
        SCOPED_TRACE(change.name);
        const HostRecord after = changed(change.change);
        std::string expected = bytesOf(before);
        std::string bytes = change.bytes;
        bytes.resize(change.width, ' ');
        expected.replace(change.offset, change.width, bytes);
        EXPECT_NE(expected, bytesOf(before));
        EXPECT_EQ(toHex(bytesOf(after)), toHex(expected));
        HostRecord again = after; // and the dialog shows it from there
        storeEntry(entryOf(after), true, again);
        EXPECT_EQ(again, after);
    }
}

TEST_F(HostEntryTest, PositionsAndNumbersThatNoListHoldsAreKept) {
    using H = HostRecord;
    for (Integer H::*field :
         {&H::connect_using, &H::uucp_protocol, &H::com_port, &H::connect_speed, &H::data_bits,
          &H::stop_bits, &H::parity, &H::ras_entry_position, &H::modem_make_position,
          &H::call_retries, &H::uucp_tcp_port, &H::mail_limit, &H::host_lookup_timeout})
        before.*field = -32768;
    before.dial_timeout = -2147483647 - 1;
    before.packet_size = -32767; // the position below it is the lowest one
    before.window_size = 32767;
    before.active = 256; // ticked for any number, and stored as -1 when it is changed
    before.default_domain = 0;
    EXPECT_TRUE(entryOf(before).active);
    EXPECT_FALSE(entryOf(before).default_domain);
    EXPECT_EQ(changed([](HostEntry&) {}), before);
    EXPECT_EQ(changed([](HostEntry& e) { e.default_domain = true; }).default_domain, kTrue);
}

TEST_F(HostEntryTest, PasswordsAreScrambledInTheRecord) {
    if (!ansiIsWindows1252())
        GTEST_SKIP();
    const struct {
        std::string HostEntry::*entry;
        std::size_t offset, width;
    } passwords[] = {{&HostEntry::password, 822, 60},
                     {&HostEntry::uucp_password, 942, 60},
                     {&HostEntry::ras_password, 2096, 50}};
    for (const auto& password : passwords)
        for (const std::string& plain : {std::string("räksmörgås"), std::string(" a b "),
                                         std::string(), std::string(password.width / 2 - 1, 'p')}) {
            SCOPED_TRACE(plain);
            const HostRecord after = changed([&](HostEntry& e) { e.*password.entry = plain; });
            const std::string bytes = bytesOf(after);
            const std::string stored = bytes.substr(password.offset, password.width);
            EXPECT_EQ(fromAnsi(unscramble(HostPasswordKey, withoutTrailingBlanks(stored))), plain);
            std::string expected = bytesOf(before);
            expected.replace(password.offset, password.width, stored);
            EXPECT_EQ(toHex(bytes), toHex(expected));
            EXPECT_EQ(entryOf(after).*password.entry, plain);
        }
}

TEST_F(HostEntryTest, DefaultsStandInForMissingNumbersAndBlankModemCommands) {
    for (const Integer timeout : std::initializer_list<Integer>{-5, 0, 1, 2}) {
        HostRecord record;
        record.uucp_timeout = timeout;
        const HostEntry entry = entryOf(record);
        EXPECT_EQ(entry.uucp_timeout.text, timeout < 2 ? "12" : "2");
        EXPECT_EQ(entry.retry_time.text, "5");
        EXPECT_EQ(entry.dial_timeout.text, "60");
        EXPECT_EQ(entry.call_retries.text, "0");
        EXPECT_EQ(entry.packet_size.index, -1);
    }
    HostRecord record = filledHost("  ", '\0');
    record.modem_max_speed = 0;
    storeEntry(entryOf(record), true, record);
    EXPECT_EQ(record.modem_make.text(), "None");
    EXPECT_EQ(toHex(record.modem_model.bytes()), "2020" + toHex(std::string(28, '\0')));
    EXPECT_EQ(record.modem_max_speed, 115200);
    EXPECT_EQ(record.modem_connect.text() + record.modem_attention.text(), "CONNECTAT");
    EXPECT_EQ(record.modem_hang_up.text() + record.modem_reset.text(), "ATH^MATZ^M");
    EXPECT_EQ(record.modem_answer.text() + record.modem_dial.text(), "ATA^MATDT");
    EXPECT_EQ(record.modem_busy.text(), "BUSY");
    EXPECT_EQ(record.modem_init.text(), "");
}

TEST_F(HostEntryTest, TelephonyNamesBelongToServicesThatOfferIt) {
    const auto change = [](HostEntry& entry) {
        entry.tapi_device.clear();
        entry.tapi_location = "Lund";
    };
    EXPECT_EQ(changed(change, false), before);
    EXPECT_EQ(changed(change).tapi_device.bytes(), std::string(100, ' '));
    EXPECT_EQ(changed(change).tapi_location.text(), "Lund");
}

TEST_F(HostEntryTest, ADialUpEntryIsStoredByPositionAndName) {
    const std::string name = "A name that is longer than its field";
    const auto choose = [this](const RasChoice& choice) {
        return changed([&choice](HostEntry& e) { e.ras_entry = choice; });
    };
    EXPECT_EQ(choose({0, name}).ras_entry_position, 0);
    EXPECT_EQ(choose({0, name}).ras_entry.text(), name.substr(0, 30));
    EXPECT_EQ(asStored("  " + name, &HostRecord::ras_entry), name.substr(0, 28));
    before = choose({});
    EXPECT_EQ(before.ras_entry_position, -1);
    EXPECT_EQ(before.ras_entry.text(), "");
    before.ras_entry_position = 4; // without an entry, whatever position it has is kept
    EXPECT_EQ(choose({}).ras_entry_position, 4);
}

TEST_F(HostEntryTest, NumbersAreReadFromTheHeadOfTheTextAndRefusedBeyondTheirRange) {
    const HostRecord record = changed([](HostEntry& entry) {
        entry.uucp_timeout.text = "2.5"; // to the even neighbour
        entry.retry_time.text = "abc";
        entry.call_retries.text = "-3x";
        entry.dial_timeout.text = "2147483647";
        entry.uucp_tcp_port.text = "32767";
        entry.mail_limit.text = "";
    });
    EXPECT_EQ(record.uucp_timeout, 2);
    EXPECT_EQ(record.retry_time, 0);
    EXPECT_EQ(record.call_retries, -3);
    EXPECT_EQ(record.dial_timeout, 2147483647);
    EXPECT_EQ(record.uucp_tcp_port, 32767);
    EXPECT_EQ(record.mail_limit, 0);
    using E = HostEntry;
    for (NumberField E::*field :
         {&E::mail_limit, &E::call_retries, &E::retry_time, &E::dial_timeout, &E::uucp_timeout,
          &E::uucp_tcp_port, &E::host_lookup_timeout}) {
        HostEntry entry = entryOf(before);
        entry.display_name = "New";
        (entry.*field).text = field == &E::dial_timeout ? "2147483648" : "-32769";
        HostRecord after = before;
        const auto store = [&] { return storeEntry(entry, true, after), 0; };
        EXPECT_EQ(errorOf(store), error_number::Overflow);
        EXPECT_EQ(after, before);
    }
}

TEST_F(HostEntryTest, AHostLookupIsCapped) {
    const std::tuple<const char*, Integer, bool> cases[] = {{"31", 30, true},   {"30.1", 30, true},
                                                            {"1e30", 30, true}, {"30", 30, false},
                                                            {"", 0, false},     {"-1", -1, false}};
    for (const auto& [text, stored, exceeds] : cases) {
        HostEntry entry = entryOf(before);
        HostRecord after = before;
        entry.host_lookup_timeout.text = text;
        EXPECT_EQ(exceedsHostLookupTimeout(entry), exceeds) << text;
        storeEntry(entry, true, after);
        EXPECT_EQ(after.host_lookup_timeout, stored) << text;
    }
}

} // namespace
} // namespace tollwick
