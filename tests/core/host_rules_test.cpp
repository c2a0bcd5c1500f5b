#include "app/ansi.h"
#include "tests/support/code_page.h"
#include "ui/hostsetup/connection_lists.h"
#include "ui/hostsetup/host_rules.h"

#include <gtest/gtest.h>

namespace tollwick {
namespace {

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
        {"   ", ""}, {"login", "login.scp"}, {"login.", "login.scp"}, {" login.SCP ", "login.SCP"},
        {".scp", ".scp"}, {"scp", "scp.scp"}, {".", ".scp"}, {"login.txt", "login.txt.scp"},
        {"två ord", "två ord.scp"}};
    // clang-format on
    for (const auto& [name, completed] : good) {
        EXPECT_FALSE(checkScriptName(trimmed(name))) << name;
        EXPECT_EQ(completedScriptName(name), completed);
    }
    const auto refused = [](Text text, std::initializer_list<const char*> names) {
        for (const char* name : names) {
            const auto problem = checkScriptName(name);
            ASSERT_TRUE(problem) << name;
            EXPECT_EQ(problem->text, text) << name;
            EXPECT_EQ(pageOf(problem->field), HostPage::LoginScript);
        }
    };
    refused(Text::ScriptNameHasPath, {"c:login.scp", "sub\\login.scp", "a/b:c"});
    refused(Text::ScriptNameIllegal, {"a/b.scp", "\"a\".scp", "a?", "*", "<a", "a>", "a|b",
                                      // A character that the service would get as "?".
                                      "\xF0\x9F\x90\x9F.scp"});
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
    // clang-format off
    const std::tuple<int, bool, Single, const char*> cases[] = {
        {0, true, 3.99F, "modem"}, {0, false, 4, "modem"}, {0, true, 4, "telephony"},
        {1, true, 4, "ras+only"}, {2, true, 4, "ras"}, {3, true, 4, ""}, {-1, false, 4, ""}};
    // clang-format on
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
    EXPECT_EQ(joined(lists.protocols) + lists.protocols[kProtocolT].data(), "g t G t");
    EXPECT_EQ(joined(lists.packet_sizes), "32 64 128 256 512 1024 2048 4096 ");
    EXPECT_EQ(joined(lists.window_sizes), "1 2 3 4 5 6 7 ");
    EXPECT_EQ(joined(lists.data_bits) + joined(lists.stop_bits), "8 7 1 2 ");
    EXPECT_EQ(joined(lists.parities), "Ingen Jämn Udda ");
    EXPECT_EQ(usableSpeeds(lists.speeds, 0), 8U);
    EXPECT_EQ(usableSpeeds(lists.speeds, 300), 0U);
    EXPECT_EQ(usableSpeeds(lists.speeds, 57599), 6U);
    EXPECT_EQ(usableSpeeds(lists.speeds, 57600), 7U);
}

} // namespace
} // namespace tollwick
