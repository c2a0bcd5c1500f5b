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

// The names of a record's fields in their order, which is also that of its members.
template <class Record>
std::string namesOf() {
    const Record record;
    const void* previous = nullptr;
    std::string names;
    forEachField<Record>([&](const auto& field) {
        const void* const place = &(record.*field.member);
        EXPECT_TRUE(std::less<>()(previous, place)) << field.name;
        previous = place;
        const std::string_view name = field.name;
        names.append(name.starts_with("unnamed") ? "-" : name).append(" ");
    });
    return names;
}

// The samples know no names: here each is tied to its place.
TEST(Records, FieldsStandInTheirOrder) {
    EXPECT_EQ(namesOf<ScheduleRecord>(), "identity day timed interval - at_time - between_first "
                                         "between_second delay - record_number - ");
    // Where its other fields stand, the test of the host's dialog knows.
    EXPECT_TRUE(namesOf<HostRecord>().starts_with("state record_number spool_directory "));
    EXPECT_EQ(namesOf<SettingsRecord>(),
              "- service_version - - smtp_service_ip smtp_service_port smtp_forward_ip "
              "smtp_forward_port admin_ip admin_port schedule_activated doc_viewer allow_priority "
              "uucp_prior_command uucp_after_command remote_debugging_level force_send_params "
              "discharge_cr mail_logging uucp_transfer_logging smtp_logging script_logging "
              "uucp_advanced_logging uucp_command_logging com_logging mail_log_period "
              "uucp_transfer_log_period smtp_log_period script_log_period "
              "uucp_advanced_log_period uucp_command_log_period com_log_period - - - - ");
    EXPECT_EQ(namesOf<OutboxRecord>(), "recipient node file_name - size ");
    EXPECT_EQ(namesOf<UucpStatusRecord>(),
              "queued_files file_number file_size - percent average_speed state file_name ");
    EXPECT_EQ(namesOf<LoginRecord>(), "user_id password ");
    EXPECT_EQ(namesOf<ScriptRecord>(), "file_name text ");
    EXPECT_EQ(namesOf<UucpCommandRecord>(), "transport_now cancel_transport ");
}

TEST(Records, FixedTextIsCutAndPadded) {
    FixedText<5> text;
    EXPECT_EQ(toHex(text.bytes()), "0000000000");
    text = "";
    EXPECT_EQ(text.bytes(), "     ");
    text.setBytes(std::string_view("a b \0", 5));
    EXPECT_EQ(text.text(), "a b");
    text = "ääääää"; // a letter is one byte
    EXPECT_EQ(text.bytes(), toAnsi("äääää"));
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
