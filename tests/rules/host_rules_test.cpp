// The dialog of a host: its record shown and stored, and what it refuses.
#include "rules/connection_lists.h"
#include "rules/host_entry.h"
#include "rules/host_rules.h"
#include "tests/support/hex.h"
#include "wire/record_packing.h"
#include "wire/scramble.h"

#include <gtest/gtest.h>

#include <functional>

namespace tollwick {
namespace {

using E = HostEntry;

// A host whose every text field holds these bytes, filled up, and whose every number is another
// one, from `count` on. Nothing in it is replaced by a default.
HostRecord filledHost(const std::string& text, char padding, int count = 2) {
    HostRecord record;
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
    record.uucp_timeout = 12;
    record.host_lookup_timeout = 30;
    return record;
}

// The record after the dialog has shown it and `change` has been made there.
HostRecord changed(const HostRecord& before, const std::function<void(E&)>& change) {
    HostEntry entry = entryOf(before);
    change(entry);
    HostRecord after = before;
    storeEntry(entry, true, after);
    return after;
}

TEST(HostEntry, EveryFieldIsStoredAsItIsShownAndUnnamedOnesStay) {
    const HostRecord host = filledHost("  abc", ' ');
    const HostRecord stored = changed(host, [](E&) {});
    std::string kept;
    std::string trimmed_texts;
    forEachField<HostRecord>([&](const auto& field) {
        if (stored.*field.member == host.*field.member)
            kept.append(field.name).append(" ");
        else if constexpr (requires { (stored.*field.member).text(); })
            if ((stored.*field.member).text() == "abc")
                trimmed_texts.append(field.name).append(" ");
    });
    EXPECT_EQ(kept, "state record_number spool_directory connect_using unnamed_672 unnamed_732 "
                    "uucp_protocol uucp_timeout unnamed_1106 retry_time call_retries "
                    "modem_make_position modem_model_position com_port modem_max_speed "
                    "connect_speed data_bits stop_bits parity unnamed_1958 unnamed_1960 "
                    "unnamed_1990 dial_timeout window_size packet_size uucp_tcp_port "
                    "ras_entry_position host_lookup_timeout mail_limit unnamed_2184 ");
    EXPECT_EQ(trimmed_texts,
              "display_name mail_domain local_uucp_name remote_uucp_name login_name "
              "uucp_login_name tapi_device script_file_name phone_number modem_make modem_model "
              "modem_reset modem_init modem_attention modem_busy modem_connect modem_dial "
              "modem_hang_up modem_answer tapi_location ras_host ras_user_name ras_entry ");
    for (const auto password : {&E::password, &E::uucp_password, &E::ras_password})
        EXPECT_EQ(entryOf(stored).*password, entryOf(host).*password);
}

TEST(HostEntry, ANewHostHasBlanksScrambledPasswordsAndNoDialUpEntry) {
    const HostRecord host = changed(HostRecord(), [](E& e) { e.ras_entry = {}; });
    EXPECT_EQ(host.phone_number.bytes(), std::string(host.phone_number.width, ' '));
    EXPECT_EQ(host.ras_password.text().size(), 2U) << "the start value";
    EXPECT_EQ(unscramble(HostPasswordKey, host.ras_password.text()), "");
    EXPECT_EQ(host.ras_entry_position, -1);
    HostRecord ticked; // for any number, and stored as -1
    ticked.active = 256;
    EXPECT_EQ(changed(ticked, [](E&) {}).active, kTrue);
}

HostRecord host(Long number, const char* display_name, const char* local, const char* remote) {
    HostRecord record;
    record.state = number == 0 ? kFalse : kTrue;
    record.record_number = number;
    record.display_name = display_name;
    record.local_uucp_name = local;
    record.remote_uucp_name = remote;
    record.spool_directory = remote;
    return record;
}

// Two hosts with node names of their own, and one that is reached under the name of the second.
const std::vector<HostRecord> kHosts = {host(1, "  Lund ", "here", "lund"),
                                        host(2, "Växjö", "shared", "vaxjo"),
                                        host(3, "Åre", "here", "shared")};
const HostRecord kNewHost = host(0, "", "", "");

TEST(HostRules, ProblemsAreFoundInTheirOrder) {
    std::vector<HostRecord> hosts = kHosts;
    hosts[2].default_domain = 1;
    HostRecord self = kNewHost;
    HostEntry entry;
    entry.display_name = "  ";
    entry.default_domain = true;
    entry.uucp_timeout.text = "1.99";
    // What is told, and what makes good for it. Icons, fields and pages the dialog's test knows.
    const std::pair<Text, std::function<void()>> problems[] = {
        {Text::HostNameMissing, [&] { entry.display_name = "lUND"; }},
        {Text::HostNameTaken, [&] { entry.display_name = "New", entry.mail_domain = " "; }},
        {Text::MailDomainMissing,
         [&] { entry.mail_domain = "new.example", entry.remote_uucp_name = "  "; }},
        {Text::RemoteHostMissing, [&] { entry.remote_uucp_name = "new"; }},
        {Text::DefaultDomainTaken, [&] { self.record_number = 3; }}, // the primary domain itself
        {Text::UucpTimeoutTooShort, [&] { entry.uucp_timeout.text = " 2 s"; }}};
    for (const auto& [text, mend] : problems) {
        const auto problem = checkHost(entry, self, hosts);
        ASSERT_TRUE(problem);
        EXPECT_EQ(problem->text, text);
        mend();
    }
    EXPECT_FALSE(checkHost(entry, self, hosts));
}

TEST(HostRules, NamesAreComparedWithAllOtherHosts) {
    // Display names without case and blanks, local node names exactly.
    for (const char* name : {" LUND", "växjö", "VÄXJÖ  ", "åre"})
        EXPECT_TRUE(CheckHostExists(name, kNewHost, kHosts)) << name;
    for (const char* name : {"Lun", "Vaxjo", "Lund 2"})
        EXPECT_FALSE(CheckHostExists(name, kNewHost, kHosts)) << name;
    EXPECT_FALSE(CheckHostExists("LUND", kHosts[0], kHosts)) << "it never collides with itself";
    EXPECT_TRUE(CheckLocalHostExists(" shared ", kNewHost, kHosts));
    EXPECT_FALSE(CheckLocalHostExists("SHARED", kNewHost, kHosts));
    EXPECT_FALSE(CheckLocalHostExists("vaxjo", kNewHost, kHosts)) << "remote names do not count";
    EXPECT_FALSE(CheckLocalHostExists("shared", kHosts[1], kHosts));
}

TEST(HostRules, ScriptNames) {
    // clang-format off
    const std::pair<const char*, const char*> good[] = {
        {"   ", ""}, {"login.", "login.scp"}, {" login.SCP ", "login.SCP"}, {".scp", ".scp"},
        {"scp", "scp.scp"}, {"login.txt", "login.txt.scp"}, {"två ord", "två ord.scp"}};
    // clang-format on
    for (const auto& [name, completed] : good) {
        EXPECT_FALSE(checkScriptName(trimmed(name))) << name;
        EXPECT_EQ(completedScriptName(name), completed);
    }
    const auto problemOf = [](const char* name) {
        const auto problem = checkScriptName(name);
        return problem ? std::optional(problem->text) : std::nullopt;
    };
    for (const char* name : {"c:login.scp", "sub\\login.scp", "a/b:c"})
        EXPECT_EQ(problemOf(name), Text::ScriptNameHasPath) << name;
    for (const char* name : {"a/b.scp", "\"a\".scp", "a?", "*", "<a", "a>", "a|b",
                             "\xF0\x9F\x90\x9F"}) // the service would get it as "?"
        EXPECT_EQ(problemOf(name), Text::ScriptNameIllegal) << name;
    EXPECT_EQ(problemOf(std::string(251, 'a').c_str()), std::nullopt);
    EXPECT_EQ(problemOf(std::string(252, 'a').c_str()), Text::ScriptNameIllegal) << "with .scp";
}

TEST(HostRules, FramesOfTheConnectionPage) {
    const std::tuple<int, bool, Single, const char*> cases[] = {
        {0, true, 3.99F, "modem"}, {0, false, 4, "modem"}, {0, true, 4, "telephony"},
        {1, true, 4, "ras+only"},  {2, true, 4, "ras"},    {-1, false, 4, ""}};
    for (const auto& [connect_using, box, version, expected] : cases) {
        const ConnectFrames frames = connectFrames(connect_using, box, version);
        std::string shown = frames.telephony ? "telephony" : "";
        shown += std::string(frames.modem ? "modem" : "") + (frames.ras ? "ras" : "");
        shown += frames.ras_only.value_or(false) ? "+only" : "";
        EXPECT_EQ(shown, expected) << connect_using << box << version;
        EXPECT_EQ(rasOnlyShownOnPageChange(connect_using), connect_using != 2);
    }
}

// The order of a list is what its positions in the record mean.
TEST(HostRules, ChoiceLists) {
    const ConnectionLists lists{StringTable(kSwedish)};
    std::string all(lists.com_ports[15]);
    const auto add = [&](const auto& list) {
        for (const auto& entry : list)
            all.append(" ").append(entry);
    };
    add(lists.speeds), add(lists.protocols), add(lists.packet_sizes);
    add(lists.data_bits), add(lists.stop_bits), add(lists.parities);
    EXPECT_EQ(all, "COM16: 1200 2400 4800 9600 19200 38400 57600 115200 g t G "
                   "32 64 128 256 512 1024 2048 4096 8 7 1 2 Ingen Jämn Udda");
    for (const auto& [max_speed, count] : {std::pair{0, 8U}, {300, 1U}, {57599, 6U}, {57600, 7U}})
        EXPECT_EQ(usableSpeeds(lists.speeds, max_speed), count) << max_speed;
}

} // namespace
} // namespace tollwick
