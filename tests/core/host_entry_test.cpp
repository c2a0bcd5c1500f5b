#include "app/run_time_error.h"
#include "link/record_packing.h"
#include "link/scramble.h"
#include "tests/support/code_page.h"
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
HostRecord ordinaryHost() {
    return filledHost("abc", ' ');
}

TEST(HostEntry, AHostThatIsNotChangedKeepsEveryByte) {
    const std::string all_bytes = [] {
        std::string bytes = "x";
        for (int byte = 1; byte < 256; ++byte)
            bytes += static_cast<char>(byte);
        return bytes;
    }();
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

TEST(HostEntry, PositionsAndNumbersThatNoListHoldsAreKept) {
    HostRecord before = ordinaryHost();
    for (Integer HostRecord::*field :
         {&HostRecord::connect_using, &HostRecord::uucp_protocol, &HostRecord::com_port,
          &HostRecord::connect_speed, &HostRecord::data_bits, &HostRecord::stop_bits,
          &HostRecord::parity, &HostRecord::window_size, &HostRecord::packet_size,
          &HostRecord::ras_entry_position, &HostRecord::modem_make_position,
          &HostRecord::call_retries, &HostRecord::uucp_tcp_port, &HostRecord::mail_limit,
          &HostRecord::host_lookup_timeout})
        before.*field = -32768;
    before.dial_timeout = -2147483647 - 1;
    before.packet_size = -32767; // the position below it is the lowest one
    before.window_size = 32767;
    HostRecord after = before;
    storeEntry(entryOf(before), true, after);
    EXPECT_EQ(after, before);
}

// What a control is changed to, and the bytes that this comes to.
struct Change {
    const char* name;
    std::function<void(HostEntry&)> change;
    std::size_t offset;
    std::size_t width; // of a text, which is padded with blanks
    std::string bytes;
};

std::string padded(const Change& change) {
    std::string bytes = change.bytes;
    bytes.resize(change.width, ' ');
    return bytes;
}

#define TEXT_FIELD(member, offset, width)                                                          \
    Change {                                                                                       \
#member, [](HostEntry & e) { e.member = " New!"; }, offset, width, " New!"                 \
    }
#define NUMBER_FIELD(member, offset, width)                                                        \
    Change {                                                                                       \
#member,                                                                                   \
            [](HostEntry & e) { e.member.text = " 17 "; }, offset, width,                          \
                                                        fromHex(width == 4 ? "11 00*3" : "11 00")  \
    }
#define POSITION_FIELD(member, offset, stored)                                                     \
    Change {                                                                                       \
#member, [](HostEntry & e) { e.member.index = 1; }, offset, 2, fromHex(stored)             \
    }
#define BOX_FIELD(member, offset)                                                                  \
    Change {                                                                                       \
#member, [](HostEntry & e) { e.member = !e.member; }, offset, 2, fromHex("00 00")          \
    }

// clang-format off
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

TEST(HostEntry, EachControlChangesItsOwnFieldOnly) {
    const HostRecord before = ordinaryHost();
    for (const Change& change : kChanges) {
        SCOPED_TRACE(change.name);
        HostEntry entry = entryOf(before);
        change.change(entry);
        HostRecord after = before;
        storeEntry(entry, true, after);
        std::string expected = bytesOf(before);
        expected.replace(change.offset, change.width, padded(change));
        EXPECT_NE(expected, bytesOf(before));
        EXPECT_EQ(toHex(bytesOf(after)), toHex(expected));
        // And the dialog shows it from there.
        HostEntry shown = entryOf(after);
        HostRecord again = after;
        storeEntry(shown, true, again);
        EXPECT_EQ(again, after);
    }
}

TEST(HostEntry, ABoxIsTickedForAnyNumberAndStoredAsMinusOne) {
    HostRecord record = ordinaryHost();
    record.active = 256;
    record.default_domain = 0;
    HostEntry entry = entryOf(record);
    EXPECT_TRUE(entry.active);
    EXPECT_FALSE(entry.default_domain);
    entry.default_domain = true;
    storeEntry(entry, true, record);
    EXPECT_EQ(record.active, 256);
    EXPECT_EQ(record.default_domain, kTrue);
}

TEST(HostEntry, PasswordsAreScrambledInTheRecord) {
    if (!ansiIsWindows1252())
        GTEST_SKIP();
    struct {
        std::string HostEntry::*entry;
        std::size_t offset;
        std::size_t width;
        std::string longest;
    } const passwords[] = {
        {&HostEntry::password, 822, 60, std::string(29, 'p')},
        {&HostEntry::uucp_password, 942, 60, std::string(29, 'u')},
        {&HostEntry::ras_password, 2096, 50, std::string(24, 'r')},
    };
    const HostRecord before = ordinaryHost();
    for (const auto& password : passwords)
        for (const std::string& plain :
             {std::string("räksmörgås"), std::string(" a b "), std::string(), password.longest}) {
            SCOPED_TRACE(plain);
            HostEntry entry = entryOf(before);
            entry.*password.entry = plain;
            HostRecord after = before;
            storeEntry(entry, true, after);
            const std::string bytes = bytesOf(after);
            const std::string stored = bytes.substr(password.offset, password.width);
            EXPECT_EQ(fromAnsi(unscramble(HostPasswordKey, withoutTrailingBlanks(stored))), plain);
            if (!plain.empty()) {
                EXPECT_EQ(bytes.find(toAnsi(plain)), std::string::npos);
            }
            std::string expected = bytesOf(before);
            expected.replace(password.offset, password.width, stored);
            EXPECT_EQ(toHex(bytes), toHex(expected));
            EXPECT_EQ(entryOf(after).*password.entry, plain);
        }
}

TEST(HostEntry, DefaultsStandInForMissingNumbers) {
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
    const HostEntry entry = entryOf(ordinaryHost());
    EXPECT_NE(entry.retry_time.text, "5");
    EXPECT_NE(entry.dial_timeout.text, "60");
}

TEST(HostEntry, BlankModemCommandsGetTheirDefaults) {
    HostRecord record = filledHost("  ", '\0');
    record.modem_max_speed = 0;
    storeEntry(entryOf(record), true, record);
    EXPECT_EQ(record.modem_make.text(), "None");
    EXPECT_EQ(toHex(record.modem_model.bytes()), "2020" + toHex(std::string(28, '\0')));
    EXPECT_EQ(record.modem_max_speed, 115200);
    EXPECT_EQ(record.modem_connect.text(), "CONNECT");
    EXPECT_EQ(record.modem_attention.text(), "AT");
    EXPECT_EQ(record.modem_hang_up.text(), "ATH^M");
    EXPECT_EQ(record.modem_reset.text(), "ATZ^M");
    EXPECT_EQ(record.modem_answer.text(), "ATA^M");
    EXPECT_EQ(record.modem_dial.text(), "ATDT");
    EXPECT_EQ(record.modem_busy.text(), "BUSY");
    EXPECT_EQ(record.modem_init.text(), "");
}

TEST(HostEntry, TelephonyNamesBelongToServicesThatOfferIt) {
    const HostRecord before = ordinaryHost();
    HostEntry entry = entryOf(before);
    entry.tapi_device.clear();
    entry.tapi_location = "Lund";
    HostRecord record = before;
    storeEntry(entry, false, record);
    EXPECT_EQ(record, before);
    storeEntry(entry, true, record);
    EXPECT_EQ(record.tapi_device.bytes(), std::string(100, ' '));
    EXPECT_EQ(record.tapi_location.text(), "Lund");
}

TEST(HostEntry, ADialUpEntryIsStoredByPositionAndName) {
    HostRecord record = ordinaryHost();
    HostEntry entry = entryOf(record);
    entry.ras_entry = RasChoice();
    storeEntry(entry, true, record);
    EXPECT_EQ(record.ras_entry_position, -1);
    EXPECT_EQ(record.ras_entry.text(), "");

    // A host without an entry keeps whatever position it has.
    record.ras_entry_position = 4;
    storeEntry(entry, true, record);
    EXPECT_EQ(record.ras_entry_position, 4);

    const std::string name = "A name that is longer than its field";
    entry.ras_entry = {0, name};
    storeEntry(entry, true, record);
    EXPECT_EQ(record.ras_entry_position, 0);
    EXPECT_EQ(record.ras_entry.text(), name.substr(0, 30));
    EXPECT_EQ(asStored("  " + name, &HostRecord::ras_entry), name.substr(0, 28));
}

TEST(HostEntry, NumbersAreReadFromTheHeadOfTheText) {
    HostRecord record = ordinaryHost();
    HostEntry entry = entryOf(record);
    entry.uucp_timeout.text = "2.5"; // to the even neighbour
    entry.retry_time.text = "abc";
    entry.call_retries.text = "-3x";
    entry.dial_timeout.text = "2147483647";
    entry.uucp_tcp_port.text = "32767";
    entry.mail_limit.text = "";
    storeEntry(entry, true, record);
    EXPECT_EQ(record.uucp_timeout, 2);
    EXPECT_EQ(record.retry_time, 0);
    EXPECT_EQ(record.call_retries, -3);
    EXPECT_EQ(record.dial_timeout, 2147483647);
    EXPECT_EQ(record.uucp_tcp_port, 32767);
    EXPECT_EQ(record.mail_limit, 0);
}

TEST(HostEntry, AHostLookupIsCapped) {
    HostRecord record = ordinaryHost();
    HostEntry entry = entryOf(record);
    for (const char* text : {"31", "30.1", "99999", "1e30"}) {
        entry.host_lookup_timeout.text = text;
        EXPECT_TRUE(exceedsHostLookupTimeout(entry)) << text;
        storeEntry(entry, true, record);
        EXPECT_EQ(record.host_lookup_timeout, 30) << text;
    }
    for (const char* text : {"30", "0", "", "-1"}) {
        entry.host_lookup_timeout.text = text;
        EXPECT_FALSE(exceedsHostLookupTimeout(entry)) << text;
    }
}

TEST(HostEntry, ANumberThatDoesNotFitLeavesTheRecordAlone) {
    const HostRecord before = ordinaryHost();
    for (NumberField HostEntry::*field :
         {&HostEntry::mail_limit, &HostEntry::call_retries, &HostEntry::retry_time,
          &HostEntry::dial_timeout, &HostEntry::uucp_timeout, &HostEntry::uucp_tcp_port,
          &HostEntry::host_lookup_timeout}) {
        HostEntry entry = entryOf(before);
        entry.display_name = "New";
        (entry.*field).text = field == &HostEntry::dial_timeout ? "2147483648" : "-32769";
        HostRecord record = before;
        try {
            storeEntry(entry, true, record);
            ADD_FAILURE() << "it fits";
        } catch (const RunTimeError& error) {
            EXPECT_EQ(error.number(), error_number::Overflow);
        }
        EXPECT_EQ(record, before);
    }
}

} // namespace
} // namespace tollwick
