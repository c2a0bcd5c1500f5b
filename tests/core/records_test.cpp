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
        if constexpr (std::is_same_v<decltype(field.member), decltype(member)>) {
            if (field.member == member)
                place = {ordinal, offset};
        }
        offset += detail::fieldSize(field);
    });
    return place;
}

// The samples know no names: here each member is tied to what it means on the wire.
TEST(Records, MembersStandAtTheirOffsets) {
    using H = HostRecord;
    using S = ScheduleRecord;
    struct {
        Place place;
        std::size_t offset;
    } const members[] = {
        {placeOf(&S::identity), 0},
        {placeOf(&S::day), 2},
        {placeOf(&S::timed), 4},
        {placeOf(&S::interval), 6},
        {placeOf(&S::at_time), 10},
        {placeOf(&S::between_first), 17},
        {placeOf(&S::between_second), 22},
        {placeOf(&S::delay), 27},
        {placeOf(&S::record_number), 31},
        {placeOf(&H::state), 0},
        {placeOf(&H::record_number), 2},
        {placeOf(&H::spool_directory), 6},
        {placeOf(&H::display_name), 518},
        {placeOf(&H::mail_domain), 578},
        {placeOf(&H::active), 638},
        {placeOf(&H::connect_using), 640},
        {placeOf(&H::local_uucp_name), 642},
        {placeOf(&H::remote_uucp_name), 702},
        {placeOf(&H::login_name), 762},
        {placeOf(&H::password), 822},
        {placeOf(&H::uucp_login_name), 882},
        {placeOf(&H::uucp_password), 942},
        {placeOf(&H::uucp_protocol), 1002},
        {placeOf(&H::uucp_timeout), 1004},
        {placeOf(&H::tapi_device), 1006},
        {placeOf(&H::retry_time), 1259},
        {placeOf(&H::call_retries), 1261},
        {placeOf(&H::script_file_name), 1263},
        {placeOf(&H::do_not_use_tapi), 1518},
        {placeOf(&H::phone_number), 1520},
        {placeOf(&H::modem_make_position), 1580},
        {placeOf(&H::modem_model_position), 1582},
        {placeOf(&H::modem_make), 1584},
        {placeOf(&H::modem_model), 1614},
        {placeOf(&H::modem_reset), 1644},
        {placeOf(&H::modem_init), 1674},
        {placeOf(&H::modem_attention), 1734},
        {placeOf(&H::modem_busy), 1764},
        {placeOf(&H::modem_connect), 1794},
        {placeOf(&H::modem_dial), 1824},
        {placeOf(&H::modem_hang_up), 1854},
        {placeOf(&H::modem_answer), 1884},
        {placeOf(&H::com_port), 1914},
        {placeOf(&H::modem_max_speed), 1916},
        {placeOf(&H::connect_speed), 1920},
        {placeOf(&H::data_bits), 1922},
        {placeOf(&H::stop_bits), 1924},
        {placeOf(&H::parity), 1926},
        {placeOf(&H::tapi_location), 1928},
        {placeOf(&H::dial_timeout), 1992},
        {placeOf(&H::default_domain), 1996},
        {placeOf(&H::window_size), 1998},
        {placeOf(&H::packet_size), 2000},
        {placeOf(&H::ras_host), 2002},
        {placeOf(&H::uucp_tcp_port), 2062},
        {placeOf(&H::ras_entry_position), 2064},
        {placeOf(&H::ras_user_name), 2066},
        {placeOf(&H::ras_password), 2096},
        {placeOf(&H::ras_entry), 2146},
        {placeOf(&H::do_not_use_active_connection), 2176},
        {placeOf(&H::host_lookup_timeout), 2178},
        {placeOf(&H::transport_when_in_queue), 2180},
        {placeOf(&H::mail_limit), 2182},
    };
    for (const auto& member : members)
        EXPECT_EQ(member.place.offset, member.offset);
}

TEST(Records, MembersStandInTheirOrder) {
    using S = SettingsRecord;
    using O = OutboxRecord;
    using U = UucpStatusRecord;
    struct {
        Place place;
        std::size_t ordinal;
    } const members[] = {
        {placeOf(&S::service_version), 2},
        {placeOf(&S::smtp_service_ip), 5},
        {placeOf(&S::smtp_service_port), 6},
        {placeOf(&S::smtp_forward_ip), 7},
        {placeOf(&S::smtp_forward_port), 8},
        {placeOf(&S::admin_ip), 9},
        {placeOf(&S::admin_port), 10},
        {placeOf(&S::schedule_activated), 11},
        {placeOf(&S::doc_viewer), 12},
        {placeOf(&S::allow_priority), 13},
        {placeOf(&S::uucp_prior_command), 14},
        {placeOf(&S::uucp_after_command), 15},
        {placeOf(&S::remote_debugging_level), 16},
        {placeOf(&S::force_send_params), 17},
        {placeOf(&S::discharge_cr), 18},
        {placeOf(&S::mail_logging), 19},
        {placeOf(&S::uucp_transfer_logging), 20},
        {placeOf(&S::smtp_logging), 21},
        {placeOf(&S::script_logging), 22},
        {placeOf(&S::uucp_advanced_logging), 23},
        {placeOf(&S::uucp_command_logging), 24},
        {placeOf(&S::com_logging), 25},
        {placeOf(&S::mail_log_period), 26},
        {placeOf(&S::uucp_transfer_log_period), 27},
        {placeOf(&S::smtp_log_period), 28},
        {placeOf(&S::script_log_period), 29},
        {placeOf(&S::uucp_advanced_log_period), 30},
        {placeOf(&S::uucp_command_log_period), 31},
        {placeOf(&S::com_log_period), 32},
        {placeOf(&O::recipient), 1},
        {placeOf(&O::node), 2},
        {placeOf(&O::file_name), 3},
        {placeOf(&O::size), 5},
        {placeOf(&U::queued_files), 1},
        {placeOf(&U::file_number), 2},
        {placeOf(&U::file_size), 3},
        {placeOf(&U::percent), 5},
        {placeOf(&U::average_speed), 6},
        {placeOf(&U::state), 7},
        {placeOf(&U::file_name), 8},
        {placeOf(&LoginRecord::user_id), 1},
        {placeOf(&LoginRecord::password), 2},
        {placeOf(&ScriptRecord::file_name), 1},
        {placeOf(&ScriptRecord::text), 2},
        {placeOf(&UucpCommandRecord::transport_now), 1},
        {placeOf(&UucpCommandRecord::cancel_transport), 2},
    };
    for (const auto& member : members)
        EXPECT_EQ(member.place.ordinal, member.ordinal);
}

TEST(Records, SingleIsFourBytes) {
    SettingsRecord record;
    record.service_version = 4.5F;
    EXPECT_EQ(packedHex(record, 86).substr(0, 16), "0000"
                                                   "00009040"
                                                   "0000");
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
