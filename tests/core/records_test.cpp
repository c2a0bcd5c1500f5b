#include "link/comrecord.h"
#include "link/record_packing.h"
#include "link/records.h"
#include "tests/core/record_vectors.h"
#include "tests/support/code_page.h"

#include <gtest/gtest.h>

#include <span>

namespace tollwick {
namespace {

std::string_view blockOf(const Comrecord& comrecord) {
    return {comrecord.ComrecordData.data(), comrecord.ComrecordData.size()};
}

// The block that the record packs to, in hex without the NULs at its end.
template <class Record>
std::string packed(const Record& record) {
    Comrecord comrecord;
    comrecord.ComrecordData.fill('x');
    packRecord(record, comrecord);
    return toHex(withoutTrailingNuls(blockOf(comrecord)));
}

template <class Record>
Record unpacked(std::string_view bytes) {
    Comrecord comrecord;
    bytes.copy(comrecord.ComrecordData.data(), kDataBlockSize);
    Record record;
    unpackRecord(comrecord, record);
    return record;
}

template <class Record>
void checkSample(std::span<const vectors::FieldSample> sample) {
    ASSERT_EQ(sample.size(), std::tuple_size_v<decltype(Record::fields())>);
    std::string bytes;
    for (const vectors::FieldSample& field : sample)
        bytes += fromHex(field.bytes);
    const Record read = unpacked<Record>(bytes);
    EXPECT_EQ(packedSize(read), bytes.size());
    EXPECT_EQ(packed(read), toHex(withoutTrailingNuls(bytes)));
    Record written;
    std::size_t index = 0;
    forEachField<Record>(
        [&](const auto& field) { sample[index++].assignTo(written.*field.member); });
    if (ansiIsWindows1252()) {
        EXPECT_EQ(written, read);
    }
}

TEST(Records, HaveTheKnownBytes) {
    checkSample<ScheduleRecord>(vectors::kSchedule);
    checkSample<HostRecord>(vectors::kHost);
    checkSample<SettingsRecord>(vectors::kSettings);
    checkSample<OutboxRecord>(vectors::kOutbox);
    checkSample<UucpStatusRecord>(vectors::kUucpStatus);
    checkSample<LoginRecord>(vectors::kLogin);
    checkSample<ScriptRecord>(vectors::kScript);
    checkSample<NameListRecord>(vectors::kNameList);
    checkSample<UucpCommandRecord>(vectors::kUucpCommand);
    EXPECT_EQ(unpacked<SettingsRecord>(fromHex("0000 000080c0")).service_version, -4.0F);
}

// Where a member stands among the fields of its record, counted from 1.
template <class Record, class Type>
std::size_t ordinalOf(Type Record::*member) {
    std::size_t ordinal = 0;
    std::size_t found = 0;
    forEachField<Record>([&](const auto& field) {
        ++ordinal;
        if constexpr (std::is_same_v<std::decay_t<decltype(field)>, Field<Record, Type>>)
            found = field.member == member ? ordinal : found;
    });
    return found;
}

// Takes members that follow one another from the field `ordinal` on.
template <class... Members>
void expectOrder(std::size_t ordinal, Members... members) {
    (..., [&](auto member) { EXPECT_EQ(ordinalOf(member), ordinal++); }(members));
}

// The samples know no names: here each member is tied to its place.
TEST(Records, MembersStandInTheirOrder) {
    using S = ScheduleRecord;
    expectOrder(1, &S::identity, &S::day, &S::timed, &S::interval);
    expectOrder(6, &S::at_time);
    expectOrder(8, &S::between_first, &S::between_second, &S::delay);
    expectOrder(12, &S::record_number);
    using H = HostRecord; // where its other members stand, the test of the host's dialog knows
    expectOrder(1, &H::state, &H::record_number, &H::spool_directory);
    using T = SettingsRecord;
    expectOrder(2, &T::service_version);
    expectOrder(5, &T::smtp_service_ip, &T::smtp_service_port, &T::smtp_forward_ip,
                &T::smtp_forward_port, &T::admin_ip, &T::admin_port, &T::schedule_activated,
                &T::doc_viewer, &T::allow_priority, &T::uucp_prior_command, &T::uucp_after_command,
                &T::remote_debugging_level, &T::force_send_params, &T::discharge_cr,
                &T::mail_logging, &T::uucp_transfer_logging, &T::smtp_logging, &T::script_logging,
                &T::uucp_advanced_logging, &T::uucp_command_logging, &T::com_logging,
                &T::mail_log_period, &T::uucp_transfer_log_period, &T::smtp_log_period,
                &T::script_log_period, &T::uucp_advanced_log_period, &T::uucp_command_log_period,
                &T::com_log_period);
    using O = OutboxRecord;
    expectOrder(1, &O::recipient, &O::node, &O::file_name);
    using U = UucpStatusRecord;
    expectOrder(1, &U::queued_files, &U::file_number, &U::file_size);
    expectOrder(5, &U::percent, &U::average_speed, &U::state, &U::file_name);
    expectOrder(1, &LoginRecord::user_id, &LoginRecord::password);
    expectOrder(1, &ScriptRecord::file_name, &ScriptRecord::text);
    expectOrder(1, &UucpCommandRecord::transport_now, &UucpCommandRecord::cancel_transport);
}

TEST(Records, FixedTextIsCutAndPadded) {
    FixedText<5> text;
    EXPECT_EQ(toHex(text.bytes()), "0000000000");
    for (const auto& [assigned, bytes] :
         {std::pair{"12:30:59", "12:30"}, {"a", "a    "}, {"", "     "}}) {
        text = assigned;
        EXPECT_EQ(text.bytes(), bytes);
    }
    text.setBytes(std::string_view("a b \0", 5));
    EXPECT_EQ(text.text(), "a b");
    if (ansiIsWindows1252()) {
        text = "ääääää"; // a letter is one byte
        EXPECT_EQ(toHex(text.bytes()), "e4e4e4e4e4");
    }
}

TEST(Records, AShortReplyReadsAsNuls) {
    const auto schedule = unpacked<ScheduleRecord>(fromHex("0100 0200 0100 0000 0000 31323a33"));
    EXPECT_EQ(schedule.day, 2);
    EXPECT_EQ(toHex(schedule.at_time.bytes()), "31323a3300");
    // The sender has cut the blanks off that the length counts.
    const auto list = unpacked<NameListRecord>(fromHex("0800 4f6666696365"));
    EXPECT_EQ(list.name.text(), "Office");
    EXPECT_EQ(toHex(list.name.bytes()), "4f66666963650000");
    const auto script = unpacked<ScriptRecord>(fromHex("0100 61 0500 6220200000"));
    EXPECT_EQ(script.text.scriptText(), "b  "); // a script keeps its trailing blanks
    EXPECT_EQ(script.text.text(), "b");
    // A record that is used again keeps nothing of what it held.
    LoginRecord login{VarText("admin"), VarText("secret")};
    unpackRecord(EmptyComrecord, login);
    EXPECT_EQ(login, LoginRecord{});
}

TEST(Records, VariableTextIsCutWithTheBlock) {
    ScriptRecord script;
    script.file_name = "s";
    for (const std::size_t length : {4091U, 4092U, 70000U}) {
        script.text.setBytes(std::string(length, 'x'));
        Comrecord comrecord;
        packRecord(script, comrecord);
        char counted[2];
        storeLittleEndian(static_cast<Integer>(std::min<std::size_t>(length, 65535)), counted);
        EXPECT_EQ(blockOf(comrecord).substr(3, 2), std::string_view(counted, 2)) << length;
        ScriptRecord read;
        unpackRecord(comrecord, read);
        EXPECT_EQ(read.text.bytes(), std::string(4091, 'x'));
    }
    // A length that lies: the text ends with the block, and what would follow is blank.
    const auto outbox = unpacked<OutboxRecord>(fromHex("0100 61 ffff 62*4093"));
    EXPECT_EQ(outbox.node.bytes(), std::string(4091, 'b'));
    EXPECT_EQ(outbox.file_name.bytes(), "");
}

TEST(Comrecord, HeaderStandsBeforeTheBlockAndTrailingNulsAndBlanksAreNotSent) {
    Comrecord record{70, 120, -2, 0x1234, {'a', '\0', 'c'}};
    EXPECT_EQ(toHex(toBytes(record)), "46007800feffffff3412610063");
    packRecord(ScriptRecord{}, record); // leaves the header alone
    EXPECT_EQ(toHex(toBytes(record)), "46007800feffffff3412");
    record.ComrecordData.back() = 'z';
    const std::string whole = toBytes(record);
    EXPECT_EQ(whole.size(), kComrecordSize);
    Comrecord read;
    fromBytes(whole + "more", read);
    EXPECT_EQ(read, record);

    record = {3, 0, 0, 0x2020, {}}; // blanks of the header count as blanks, too
    record.ComrecordData.fill(' ');
    EXPECT_EQ(toHex(toBytes(record)), "03");
    fromBytes("", record);
    EXPECT_EQ(record, EmptyComrecord);
}

} // namespace
} // namespace tollwick
