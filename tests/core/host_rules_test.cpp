// The dialog of a host: its record shown and stored, and what it refuses.
#include "app/ansi.h"
#include "link/record_packing.h"
#include "link/scramble.h"
#include "tests/support/code_page.h"
#include "tests/support/error_of.h"
#include "tests/support/hex.h"
#include "ui/hostsetup/connection_lists.h"
#include "ui/hostsetup/host_entry.h"
#include "ui/hostsetup/host_rules.h"

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
        for (const auto& [padding, first_number] : {std::pair{' ', -32768}, {'\0', 32000}}) {
            const HostRecord host = filledHost(text, padding, first_number);
            EXPECT_EQ(toHex(bytesOf(changed(host, [](E&) {}))), toHex(bytesOf(host)));
        }
}

TEST(HostEntry, TheEmptyTextsOfANewHostAreBlanksAndItsPasswordsScrambled) {
    const HostRecord host = changed(HostRecord(), [](E&) {});
    EXPECT_EQ(host.phone_number.bytes(), std::string(host.phone_number.width, ' '));
    EXPECT_EQ(host.ras_password.text().size(), 2U) << "the start value";
    EXPECT_EQ(unscramble(HostPasswordKey, host.ras_password.text()), "");
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

TEST(HostEntry, ABoxIsTickedForAnyNumberAndStoredAsMinusOne) {
    HostRecord host = kHost;
    host.active = 256;
    host.default_domain = 0;
    EXPECT_TRUE(entryOf(host).active);
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
    host = changed(host, [](E& e) { e.ras_entry = {}; });
    EXPECT_EQ(host.ras_entry_position, -1);
    host.ras_entry_position = 4; // without an entry, whatever position it has is kept
    EXPECT_EQ(changed(host, [](E& e) { e.ras_entry = {}; }), host);
}

TEST(HostEntry, NumbersBeyondTheirRangeAreRefusedAndAHostLookupIsCapped) {
    HostRecord host = kHost;
    HostEntry entry = entryOf(host);
    const auto store = [&] { return storeEntry(entry, true, host), 0; };
    entry.display_name = "New";
    entry.mail_limit.text = "-32769";
    EXPECT_EQ(errorOf(store), error_number::Overflow);
    EXPECT_EQ(host, kHost);
    entry.mail_limit.text = "0";
    const std::tuple<const char*, Integer, bool> lookups[] = {
        {"30.1", 30, true}, {"1e30", 30, true}, {"30", 30, false}, {"", 0, false}};
    for (const auto& [text, stored, exceeds] : lookups) {
        entry.host_lookup_timeout.text = text;
        EXPECT_EQ(exceedsHostLookupTimeout(entry), exceeds) << text;
        store();
        EXPECT_EQ(host.host_lookup_timeout, stored) << text;
    }
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
    const auto next = [&](Text text, BoxIcon icon, HostField field, HostPage page) {
        const auto problem = checkHost(entry, self, hosts);
        ASSERT_TRUE(problem);
        EXPECT_EQ(problem->text, text);
        EXPECT_EQ(problem->icon, icon);
        EXPECT_EQ(problem->field, field);
        EXPECT_EQ(pageOf(field), page);
    };
    using enum HostPage;
    next(Text::HostNameMissing, BoxIcon::Critical, HostField::DisplayName, General);
    entry.display_name = "lUND";
    next(Text::HostNameTaken, BoxIcon::Critical, HostField::DisplayName, General);
    entry.display_name = "New";
    entry.mail_domain = " ";
    next(Text::MailDomainMissing, BoxIcon::Critical, HostField::MailDomain, General);
    entry.mail_domain = "new.example";
    entry.remote_uucp_name = "  ";
    next(Text::RemoteHostMissing, BoxIcon::Critical, HostField::RemoteUucpName, Login);
    entry.remote_uucp_name = "new";
    next(Text::DefaultDomainTaken, BoxIcon::Exclamation, HostField::DefaultDomain, General);
    self.record_number = 3; // the primary domain itself
    next(Text::UucpTimeoutTooShort, BoxIcon::Exclamation, HostField::UucpTimeout, Login);
    entry.uucp_timeout.text = " 2 s";
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

TEST(HostRules, AScriptHasToFitTheDataBlock) {
    const std::size_t room = 4096 - 2 - 9 - 2;
    EXPECT_TRUE(scriptFits("login.scp", std::string(room, 'x')));
    EXPECT_FALSE(scriptFits("login.scp", std::string(room + 1, 'x')));
    if (ansiIsWindows1252()) { // a byte each
        EXPECT_TRUE(scriptFits("login.scp", fromAnsi(std::string(room, '\xE5'))));
    }
}

// What the rule of the spool directory asks and does, step by step, and what comes of it.
std::string decided(const char* remote, const HostRecord& self, std::vector<Answer> answers = {},
                    bool removed = true) {
    HostEntry entry;
    entry.display_name = " New host ";
    entry.mail_domain = " new.example ";
    entry.remote_uucp_name = remote;
    std::string told;
    std::size_t asked = 0;
    const auto ask = [&](Text question, Answer default_button) {
        told += question == Text::ShareSpoolDirectory ? "share?" : "rename?";
        told += default_button == Answer::Yes ? " [Yes], " : " [No], ";
        return answers.at(asked++);
    };
    const auto remove = [&](const std::string& directory) {
        told += "remove " + directory + ", ";
        return removed;
    };
    std::string directory;
    const auto outcome = decideSpoolDirectory(entry, self, kHosts, {ask, remove}, directory);
    return told + (outcome == SpoolOutcome::Decided   ? "use " + directory
                   : outcome == SpoolOutcome::Stopped ? "stopped"
                                                      : "failed");
}

TEST(HostRules, TheSpoolDirectory) {
    using enum Answer;
    EXPECT_EQ(decided(" new ", kNewHost), "use new");
    EXPECT_EQ(decided("shared", kNewHost, {Yes}), "share? [No], use shared");
    EXPECT_EQ(decided("shared", kNewHost, {No}), "share? [No], use new.example-shared");

    HostRecord lund = kHosts[0];
    lund.spool_directory = "old";
    EXPECT_EQ(decided(" lund ", lund), "use old");
    EXPECT_EQ(decided("new", lund, {No}), "rename? [No], stopped");
    EXPECT_EQ(decided("Lund", lund, {Yes}), "rename? [No], remove old, use Lund");
    EXPECT_EQ(decided("new", lund, {Yes}, false), "rename? [No], remove old, failed");
    EXPECT_EQ(decided("shared", lund, {Yes, No}),
              "rename? [No], remove old, share? [Yes], use  New host -shared");
    // The directory of a node name that another host has is not removed.
    EXPECT_EQ(decided("here", kHosts[2], {Yes}), "share? [Yes], use here");
    // A host that never had a node name keeps what it has.
    HostRecord nameless = host(4, "Nameless", "here", "");
    nameless.spool_directory = " old";
    EXPECT_EQ(decided("shared", nameless), "use  old");
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

TEST(HostRules, CharactersOfANodeName) {
    std::string accepted;
    for (char32_t character = 1; character < 0x2100; ++character)
        if (isNodeNameCharacter(character))
            accepted += static_cast<char>(character);
    EXPECT_EQ(accepted, "-.0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz");
}

// The order of a list is what its positions in the record mean.
TEST(HostRules, ChoiceLists) {
    const ConnectionLists lists{StringTable(kSwedish)};
    const auto joined = [](const auto& list) {
        std::string line;
        for (const auto& entry : list)
            line += std::string(entry) + ' ';
        return line;
    };
    EXPECT_EQ(lists.com_ports[15], "COM16:");
    EXPECT_EQ(joined(lists.speeds), "1200 2400 4800 9600 19200 38400 57600 115200 ");
    EXPECT_EQ(joined(lists.protocols), "g t G ");
    EXPECT_EQ(joined(lists.packet_sizes), "32 64 128 256 512 1024 2048 4096 ");
    EXPECT_EQ(joined(lists.data_bits) + joined(lists.stop_bits), "8 7 1 2 ");
    EXPECT_EQ(joined(lists.parities), "Ingen Jämn Udda ");
    for (const auto& [max_speed, count] : {std::pair{0, 8U}, {300, 0U}, {57599, 6U}, {57600, 7U}})
        EXPECT_EQ(usableSpeeds(lists.speeds, max_speed), count) << max_speed;
}

} // namespace
} // namespace tollwick
