#include "tests/support/hex.h"
#include "wire/comrecord.h"
#include "wire/record_packing.h"
#include "wire/records.h"

#include <gtest/gtest.h>

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

// The fields of a record with the bytes that each takes, in their order, which is also that of its
// members. Of a text of any length these are the two of its length.
template <class Record>
std::string layoutOf() {
    const Record record;
    const void* previous = nullptr;
    std::string layout;
    forEachField<Record>([&](const auto& field) {
        const void* const place = &(record.*field.member);
        EXPECT_TRUE(std::less<>()(previous, place)) << field.name;
        previous = place;
        const std::string_view name = field.name;
        layout.append(name.starts_with("unnamed") ? "-" : name);
        layout.append(" " + std::to_string(detail::fieldSize(field))).append("|");
    });
    return layout;
}

TEST(Records, HaveTheirLayout) {
    EXPECT_EQ(layoutOf<ScheduleRecord>(),
              "identity 2|day 2|timed 2|interval 2|- 2|at_time 5|- 2|between_first 5|"
              "between_second 5|delay 2|- 2|record_number 4|- 42|");
    EXPECT_EQ(layoutOf<HostRecord>(),
              "state 2|record_number 4|spool_directory 512|display_name 60|mail_domain 60|active 2|"
              "connect_using 2|local_uucp_name 30|- 30|remote_uucp_name 30|- 30|login_name 60|"
              "password 60|uucp_login_name 60|uucp_password 60|uucp_protocol 2|uucp_timeout 2|"
              "tapi_device 100|- 153|retry_time 2|call_retries 2|script_file_name 255|"
              "do_not_use_tapi 2|phone_number 60|modem_make_position 2|modem_model_position 2|"
              "modem_make 30|modem_model 30|modem_reset 30|modem_init 60|modem_attention 30|"
              "modem_busy 30|modem_connect 30|modem_dial 30|modem_hang_up 30|modem_answer 30|"
              "com_port 2|modem_max_speed 4|connect_speed 2|data_bits 2|stop_bits 2|parity 2|"
              "tapi_location 30|- 2|- 30|- 2|dial_timeout 4|default_domain 2|window_size 2|"
              "packet_size 2|ras_host 60|uucp_tcp_port 2|ras_entry_position 2|ras_user_name 30|"
              "ras_password 50|ras_entry 30|do_not_use_active_connection 2|host_lookup_timeout 2|"
              "transport_when_in_queue 2|mail_limit 2|- 108|");
    EXPECT_EQ(
        layoutOf<SettingsRecord>(),
        "- 2|service_version 4|- 2|- 2|smtp_service_ip 2|smtp_service_port 4|smtp_forward_ip 2|"
        "smtp_forward_port 4|admin_ip 2|admin_port 4|schedule_activated 2|doc_viewer 2|"
        "allow_priority 2|uucp_prior_command 2|uucp_after_command 2|remote_debugging_level 2|"
        "force_send_params 2|discharge_cr 2|mail_logging 2|uucp_transfer_logging 2|"
        "smtp_logging 2|script_logging 2|uucp_advanced_logging 2|uucp_command_logging 2|"
        "com_logging 2|mail_log_period 2|uucp_transfer_log_period 2|smtp_log_period 2|"
        "script_log_period 2|uucp_advanced_log_period 2|uucp_command_log_period 2|"
        "com_log_period 2|- 2|- 8|- 2|- 2|");
    EXPECT_EQ(layoutOf<OutboxRecord>(), "recipient 2|node 2|file_name 2|- 2|size 4|");
    EXPECT_EQ(layoutOf<UucpStatusRecord>(),
              "queued_files 4|file_number 4|file_size 4|- 4|percent 2|average_speed 4|state 2|"
              "file_name 2|");
    EXPECT_EQ(layoutOf<LoginRecord>(), "user_id 2|password 2|");
    EXPECT_EQ(layoutOf<ScriptRecord>(), "file_name 2|text 2|");
    EXPECT_EQ(layoutOf<NameListRecord>(), "name 2|");
    EXPECT_EQ(layoutOf<UucpCommandRecord>(), "transport_now 2|cancel_transport 2|");
}

TEST(Records, HaveTheKnownBytes) {
    ScheduleRecord schedule;
    schedule.identity = -1;
    schedule.day = -7886;
    schedule.at_time = "18-";
    schedule.record_number = 1155635617;
    EXPECT_EQ(packed(schedule),
              "ffff32e1" + std::string(12, '0') + "31382d2020" + std::string(32, '0') + "a199e144");
    HostRecord host;
    host.state = -23987;
    host.record_number = -2062695028;
    host.spool_directory.setBytes("c\xE4_");
    host.display_name.setBytes("11\xD6");
    host.connect_using = 256;
    const std::string bytes = fromHex("4da2 8cc50d85 63e45f 20*509 3131d6 20*57 00*60 0000 0001");
    EXPECT_EQ(packed(host), toHex(withoutTrailingNuls(bytes)));
    EXPECT_EQ(unpacked<HostRecord>(bytes), host);
    const std::string settings = fromHex("0000 000080c0 00*68 0102030405060708");
    EXPECT_EQ(unpacked<SettingsRecord>(settings).service_version, -4.0F);
    EXPECT_EQ(packed(unpacked<SettingsRecord>(settings)), toHex(settings));
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

    record = {50, 30, 8192, 0, {}, 0}; // no number loses a byte that looks like a blank
    record.ComrecordData.fill(' ');
    EXPECT_EQ(toHex(toBytes(record)), "32001e000020");
    ScheduleRecord schedule;
    schedule.record_number = 32;
    packRecord(schedule, record);
    const std::string bytes = toBytes(record);
    EXPECT_EQ(bytes.size(), 10 + 31 + 1U);
    ScheduleRecord arrived;
    fromBytes(bytes, record);
    EXPECT_TRUE(unpackRecord(record, arrived));
    EXPECT_EQ(arrived, schedule);
    EXPECT_TRUE(reachesField(record, &ScheduleRecord::record_number));
    fromBytes(bytes.substr(0, 10 + 31), record);
    EXPECT_FALSE(reachesField(record, &ScheduleRecord::record_number));
    fromBytes("", record);
    EXPECT_EQ(record, EmptyComrecord);
}

} // namespace
} // namespace tollwick
