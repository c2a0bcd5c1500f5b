#include "link/comrecord.h"
#include "link/record_packing.h"
#include "link/records.h"
#include "tests/core/record_vectors.h"
#include "tests/support/code_page.h"
#include "tests/support/hex.h"
#include "tests/support/wire_value.h"

#include <gtest/gtest.h>

#include <random>

namespace tollwick {
namespace {

std::string_view blockOf(const Comrecord& comrecord) {
    return {comrecord.ComrecordData.data(), comrecord.ComrecordData.size()};
}

// The first `size` bytes of the block that the record packs to, in hex; the rest must be NULs.
template <class Record>
std::string packedHex(const Record& record, std::size_t size) {
    Comrecord comrecord;
    comrecord.ComrecordData.fill('x');
    packRecord(record, comrecord);
    EXPECT_EQ(withoutTrailingNuls(blockOf(comrecord).substr(size)), "");
    return toHex(blockOf(comrecord).substr(0, size));
}

template <class Record>
Record unpacked(std::string_view bytes) {
    Comrecord comrecord;
    bytes.copy(comrecord.ComrecordData.data(), kDataBlockSize);
    Record record;
    unpackRecord(comrecord, record);
    return record;
}

template <class Type>
void expectField(const Type& field, const WireValue& value) {
    Type expected{};
    assignField(expected, value);
    EXPECT_EQ(field, expected);
}
// The bytes are compared by packing again; here it is the text that must be the one that was
// packed.
template <std::size_t N>
void expectField(const FixedText<N>& field, const WireValue& value) {
    EXPECT_EQ(field.text(), withoutTrailingBlanks(std::get<std::string_view>(value)));
}
void expectField(const VarText& field, const WireValue& value) {
    EXPECT_EQ(fromAnsi(field.bytes()), std::get<std::string_view>(value));
}

template <class Record>
void checkSample(vectors::RecordSample sample) {
    ASSERT_EQ(sample.size(), std::tuple_size_v<decltype(Record::fields())>);
    std::string bytes;
    for (const vectors::FieldSample& field : sample)
        bytes += fromHex(field.bytes);

    const Record read = unpacked<Record>(bytes);
    EXPECT_EQ(packedSize(read), bytes.size());
    EXPECT_EQ(packedHex(read, bytes.size()), toHex(bytes));
    if (!ansiIsWindows1252())
        return;

    Record written;
    std::size_t index = 0;
    forEachField<Record>([&](const auto& field) {
        SCOPED_TRACE(field.name);
        assignField(written.*field.member, sample[index].value);
        expectField(read.*field.member, sample[index].value);
        ++index;
    });
    EXPECT_EQ(written, read);
    EXPECT_EQ(packedHex(written, bytes.size()), toHex(bytes));
}

template <class Record>
void checkSamples(std::span<const vectors::RecordSample> samples) {
    for (std::size_t i = 0; i < samples.size(); ++i) {
        SCOPED_TRACE("sample " + std::to_string(i + 1));
        checkSample<Record>(samples[i]);
    }
}

TEST(Records, ScheduleHasTheKnownBytes) {
    checkSamples<ScheduleRecord>(vectors::kScheduleSamples);
}
TEST(Records, HostHasTheKnownBytes) {
    checkSamples<HostRecord>(vectors::kHostSamples);
}
TEST(Records, SettingsHaveTheKnownBytes) {
    checkSamples<SettingsRecord>(vectors::kSettingsSamples);
}
TEST(Records, SmallRecordsHaveTheKnownBytes) {
    checkSamples<OutboxRecord>(vectors::kOutboxSamples);
    checkSamples<UucpStatusRecord>(vectors::kUucpStatusSamples);
    checkSamples<LoginRecord>(vectors::kLoginSamples);
    checkSamples<ScriptRecord>(vectors::kScriptSamples);
    checkSamples<NameListRecord>(vectors::kNameListSamples);
    checkSamples<UucpCommandRecord>(vectors::kUucpCommandSamples);
}

// Where a member stands among the fields of its record, counted from 1, and at which byte when all
// variable texts before it are empty.
struct Place {
    std::size_t ordinal;
    std::size_t offset;
};
template <class Record, class Type>
Place placeOf(Type Record::*member) {
    Place place{0, 0};
    std::size_t ordinal = 0;
    std::size_t offset = 0;
    forEachField<Record>([&](const auto& field) {
        ++ordinal;
        if constexpr (std::is_same_v<std::decay_t<decltype(field)>, Field<Record, Type>>) {
            if (field.member == member)
                place = {ordinal, offset};
        }
        offset += detail::fieldSize(field);
    });
    return place;
}

// Takes members, each with its offset behind it.
void expectOffsets() {}
template <class Member, class... Rest>
void expectOffsets(Member member, std::size_t offset, Rest... rest) {
    EXPECT_EQ(placeOf(member).offset, offset);
    expectOffsets(rest...);
}

// Takes members that follow one another from the field `ordinal` on.
template <class... Members>
void expectOrder(std::size_t ordinal, Members... members) {
    (..., [&](auto member) { EXPECT_EQ(placeOf(member).ordinal, ordinal++); }(members));
}

// The samples know no names: here each member is tied to its place.
TEST(Records, MembersStandAtTheirOffsets) {
    using S = ScheduleRecord;
    expectOffsets(&S::identity, 0, &S::day, 2, &S::timed, 4, &S::interval, 6, &S::at_time, 10,
                  &S::between_first, 17, &S::between_second, 22, &S::delay, 27, &S::record_number,
                  31);
    using H = HostRecord;
    expectOffsets(
        &H::state, 0, &H::record_number, 2, &H::spool_directory, 6, &H::display_name, 518,
        &H::mail_domain, 578, &H::active, 638, &H::connect_using, 640, &H::local_uucp_name, 642,
        &H::remote_uucp_name, 702, &H::login_name, 762, &H::password, 822, &H::uucp_login_name, 882,
        &H::uucp_password, 942, &H::uucp_protocol, 1002, &H::uucp_timeout, 1004, &H::tapi_device,
        1006, &H::retry_time, 1259, &H::call_retries, 1261, &H::script_file_name, 1263,
        &H::do_not_use_tapi, 1518, &H::phone_number, 1520, &H::modem_make_position, 1580,
        &H::modem_model_position, 1582, &H::modem_make, 1584, &H::modem_model, 1614,
        &H::modem_reset, 1644, &H::modem_init, 1674, &H::modem_attention, 1734, &H::modem_busy,
        1764, &H::modem_connect, 1794, &H::modem_dial, 1824, &H::modem_hang_up, 1854,
        &H::modem_answer, 1884, &H::com_port, 1914, &H::modem_max_speed, 1916, &H::connect_speed,
        1920, &H::data_bits, 1922, &H::stop_bits, 1924, &H::parity, 1926, &H::tapi_location, 1928,
        &H::dial_timeout, 1992, &H::default_domain, 1996, &H::window_size, 1998, &H::packet_size,
        2000, &H::ras_host, 2002, &H::uucp_tcp_port, 2062, &H::ras_entry_position, 2064,
        &H::ras_user_name, 2066, &H::ras_password, 2096, &H::ras_entry, 2146,
        &H::do_not_use_active_connection, 2176, &H::host_lookup_timeout, 2178,
        &H::transport_when_in_queue, 2180, &H::mail_limit, 2182);
}

TEST(Records, MembersStandInTheirOrder) {
    using S = SettingsRecord;
    expectOrder(2, &S::service_version);
    expectOrder(5, &S::smtp_service_ip, &S::smtp_service_port, &S::smtp_forward_ip,
                &S::smtp_forward_port, &S::admin_ip, &S::admin_port, &S::schedule_activated,
                &S::doc_viewer, &S::allow_priority, &S::uucp_prior_command, &S::uucp_after_command,
                &S::remote_debugging_level, &S::force_send_params, &S::discharge_cr,
                &S::mail_logging, &S::uucp_transfer_logging, &S::smtp_logging, &S::script_logging,
                &S::uucp_advanced_logging, &S::uucp_command_logging, &S::com_logging,
                &S::mail_log_period, &S::uucp_transfer_log_period, &S::smtp_log_period,
                &S::script_log_period, &S::uucp_advanced_log_period, &S::uucp_command_log_period,
                &S::com_log_period);
    using O = OutboxRecord;
    expectOrder(1, &O::recipient, &O::node, &O::file_name);
    using U = UucpStatusRecord;
    expectOrder(1, &U::queued_files, &U::file_number, &U::file_size);
    expectOrder(5, &U::percent, &U::average_speed, &U::state, &U::file_name);
    expectOrder(1, &LoginRecord::user_id, &LoginRecord::password);
    expectOrder(1, &ScriptRecord::file_name, &ScriptRecord::text);
    expectOrder(1, &UucpCommandRecord::transport_now, &UucpCommandRecord::cancel_transport);
}

TEST(Records, SingleIsFourBytes) {
    SettingsRecord record;
    record.service_version = 4.5F;
    EXPECT_EQ(packedHex(record, 86).substr(0, 16), "0000000090400000");
    EXPECT_EQ(unpacked<SettingsRecord>(fromHex("0000 000080c0")).service_version, -4.0F);
}

TEST(Records, PackingLeavesTheHeaderAlone) {
    Comrecord comrecord;
    comrecord.Operation = 20;
    comrecord.RecordNumber = -5;
    comrecord.RecordLength = 77;
    packRecord(ScheduleRecord{}, comrecord);
    EXPECT_EQ(comrecord.Operation, 20);
    EXPECT_EQ(comrecord.RecordNumber, -5);
    EXPECT_EQ(comrecord.RecordLength, 77);
}

// What the console has no meaning for must come through whatever it is, padding included.
TEST(Records, AnyBytesComeBackAsTheyWere) {
    std::mt19937 random(1);
    for (int round = 0; round < 50; ++round) {
        std::string bytes(2292, '\0');
        for (char& byte : bytes)
            byte = static_cast<char>(random() % 3 == 0 ? random() % 256 : random() % 2 * ' ');
        EXPECT_EQ(packedHex(unpacked<HostRecord>(bytes), 2292), toHex(bytes));
        bytes.resize(77);
        EXPECT_EQ(packedHex(unpacked<ScheduleRecord>(bytes), 77), toHex(bytes));
    }
}

TEST(Records, FixedTextIsCutAndPadded) {
    FixedText<5> text;
    EXPECT_EQ(toHex(text.bytes()), "0000000000");
    EXPECT_EQ(text.text(), "");
    text = "12:30:59";
    EXPECT_EQ(text.bytes(), "12:30");
    text = "a";
    EXPECT_EQ(text.bytes(), "a    ");
    text = "";
    EXPECT_EQ(text.bytes(), "     ");
    text.setBytes(std::string_view("a b \0", 5));
    EXPECT_EQ(text.text(), "a b");
    text = "ääääää";
    if (ansiIsWindows1252()) {
        EXPECT_EQ(toHex(text.bytes()), "e4e4e4e4e4"); // a letter is one byte
    }
}

TEST(Records, AShortReplyReadsAsNuls) {
    const auto schedule = unpacked<ScheduleRecord>(fromHex("0100 0200 0100 0000 0000 31323a33"));
    EXPECT_EQ(schedule.day, 2);
    EXPECT_EQ(schedule.at_time.text(), "12:3");
    EXPECT_EQ(toHex(schedule.at_time.bytes()), "31323a3300");
    EXPECT_EQ(schedule.record_number, 0);
    EXPECT_EQ(schedule.unnamed_35.text(), "");
    // The sender has cut the blanks off that the length counts.
    const auto list = unpacked<NameListRecord>(fromHex("0800 4f6666696365"));
    EXPECT_EQ(list.name.text(), "Office");
    EXPECT_EQ(toHex(list.name.bytes()), "4f66666963650000");
    // A record that is used again keeps nothing of what it held.
    LoginRecord login = recordOf<LoginRecord>(std::vector<WireValue>{"admin", "secret"});
    unpackRecord(EmptyComrecord, login);
    EXPECT_EQ(login, LoginRecord{});
}

TEST(Records, AScriptKeepsItsTrailingBlanks) {
    const auto script = unpacked<ScriptRecord>(fromHex("0100 61 0500 6220200000"));
    EXPECT_EQ(script.text.scriptText(), "b  ");
    EXPECT_EQ(script.text.text(), "b");
}

TEST(Records, VariableTextIsCutWithTheBlock) {
    ScriptRecord script;
    script.file_name = "s";
    for (const std::size_t length : {4091U, 4092U, 5000U, 65535U, 70000U}) {
        SCOPED_TRACE(length);
        script.text.setBytes(std::string(length, 'x'));
        Comrecord comrecord;
        packRecord(script, comrecord);
        const std::string_view block = blockOf(comrecord);
        char counted[2];
        storeLittleEndian(static_cast<Integer>(std::min<std::size_t>(length, 65535)), counted);
        EXPECT_EQ(block.substr(3, 2), std::string_view(counted, 2));
        ScriptRecord read;
        unpackRecord(comrecord, read);
        EXPECT_EQ(read.text.bytes(), std::string(std::min<std::size_t>(length, 4091), 'x'));
    }
    // A length that lies: the text ends with the block, and what would follow is blank.
    const auto outbox = unpacked<OutboxRecord>(fromHex("0100 61 ffff 62*4093"));
    EXPECT_EQ(outbox.recipient.text(), "a");
    EXPECT_EQ(outbox.node.bytes(), std::string(4091, 'b'));
    EXPECT_EQ(outbox.file_name.bytes(), "");
    EXPECT_EQ(outbox.size, 0);
}

TEST(Comrecord, HeaderStandsBeforeTheBlock) {
    Comrecord record;
    record.Operation = 70;
    record.ObjectClass = 120;
    record.RecordNumber = -2;
    record.RecordLength = 0x1234;
    record.ComrecordData[0] = 'a';
    record.ComrecordData[2] = 'c';
    EXPECT_EQ(toHex(toBytes(record)), "46007800feffffff3412610063");
    Comrecord read;
    read.ComrecordData.fill('x');
    fromBytes(toBytes(record), read);
    EXPECT_EQ(read, record);

    record.ComrecordData.back() = 'z';
    const std::string whole = toBytes(record);
    EXPECT_EQ(whole.size(), kComrecordSize);
    fromBytes(whole + "more", read);
    EXPECT_EQ(read, record);
}

TEST(Comrecord, TrailingNulsAndBlanksAreNotSent) {
    Comrecord record;
    EXPECT_EQ(toBytes(record), "");
    record.ComrecordData.fill(' ');
    EXPECT_EQ(toBytes(record), "");
    record.RecordLength = 0x2020; // blanks of the header count as blanks, too
    record.Operation = 3;
    EXPECT_EQ(toHex(toBytes(record)), "03");
    fromBytes("", record);
    EXPECT_EQ(record, EmptyComrecord);
}

} // namespace
} // namespace tollwick
