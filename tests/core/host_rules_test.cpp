#include "tests/support/code_page.h"
#include "ui/hostsetup/connection_lists.h"
#include "ui/hostsetup/host_rules.h"

#include <gtest/gtest.h>

namespace tollwick {
namespace {

using Lines = std::vector<std::string>;

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

HostEntry goodEntry() {
    HostEntry entry;
    entry.display_name = "New";
    entry.mail_domain = "new.example";
    entry.remote_uucp_name = "new";
    entry.uucp_timeout.text = "2";
    return entry;
}

TEST(HostRules, ProblemsAreFoundInTheirOrder) {
    std::vector<HostRecord> hosts = kHosts;
    HostRecord self = host(0, "", "", "");
    HostEntry entry;
    entry.display_name = "  ";
    entry.default_domain = true;
    entry.uucp_timeout.text = "1.5";
    const auto next = [&](Text text, BoxIcon icon, HostField field, HostPage page) {
        const auto problem = checkHost(entry, self, hosts);
        ASSERT_TRUE(problem);
        EXPECT_EQ(problem->text, text);
        EXPECT_EQ(problem->icon, icon);
        EXPECT_EQ(problem->field, field);
        EXPECT_EQ(pageOf(field), page);
    };
    hosts[2].default_domain = 1;
    next(Text::HostNameMissing, BoxIcon::Critical, HostField::DisplayName, HostPage::General);
    entry.display_name = "lUND";
    next(Text::HostNameTaken, BoxIcon::Critical, HostField::DisplayName, HostPage::General);
    entry.display_name = "New";
    entry.mail_domain = " ";
    next(Text::MailDomainMissing, BoxIcon::Critical, HostField::MailDomain, HostPage::General);
    entry.mail_domain = "new.example";
    entry.remote_uucp_name = "  ";
    next(Text::RemoteHostMissing, BoxIcon::Critical, HostField::RemoteUucpName, HostPage::Login);
    entry.remote_uucp_name = "new";
    next(Text::DefaultDomainTaken, BoxIcon::Exclamation, HostField::DefaultDomain,
         HostPage::General);
    self.record_number = 3; // the primary domain itself
    for (const char* timeout : {"1.5", "1.99", "abc", "", "-12"}) {
        entry.uucp_timeout.text = timeout;
        next(Text::UucpTimeoutTooShort, BoxIcon::Exclamation, HostField::UucpTimeout,
             HostPage::Login);
    }
    entry.uucp_timeout.text = " 2 s";
    EXPECT_FALSE(checkHost(entry, self, hosts));
}

TEST(HostRules, ADisplayNameIsComparedWithoutCaseAndBlanksWithAllOthers) {
    for (const char* name : {"Lund", " LUND", "lund  ", "växjö", "VÄXJÖ", "åre"})
        EXPECT_TRUE(CheckHostExists(name, host(0, "", "", ""), kHosts)) << name;
    for (const char* name : {"Lun", "Vaxjo", "are", "Lund 2"})
        EXPECT_FALSE(CheckHostExists(name, host(0, "", "", ""), kHosts)) << name;
    EXPECT_FALSE(CheckHostExists("LUND", kHosts[0], kHosts)) << "it never collides with itself";
    EXPECT_TRUE(CheckHostExists("LUND", kHosts[1], kHosts));
}

TEST(HostRules, ALocalNodeNameIsComparedExactly) {
    const HostRecord self = host(0, "", "", "");
    EXPECT_TRUE(CheckLocalHostExists(" shared ", self, kHosts));
    EXPECT_FALSE(CheckLocalHostExists("SHARED", self, kHosts));
    EXPECT_FALSE(CheckLocalHostExists("vaxjo", self, kHosts)) << "remote names do not count";
    EXPECT_FALSE(CheckLocalHostExists("shared", kHosts[1], kHosts));
}

TEST(HostRules, ScriptNames) {
    struct {
        const char* name;
        std::optional<Text> problem;
        const char* completed;
    } const cases[] = {
        {"", {}, ""},
        {"   ", {}, ""},
        {"login", {}, "login.scp"},
        {"login.", {}, "login.scp"},
        {" login.SCP ", {}, "login.SCP"},
        {"x.Scp", {}, "x.Scp"},
        {"a", {}, "a.scp"},
        {".scp", {}, ".scp"},
        {"scp", {}, "scp.scp"},
        {".", {}, ".scp"},
        {"login.txt", {}, "login.txt.scp"},
        {"två ord", {}, "två ord.scp"},
        {"c:login.scp", Text::ScriptNameHasPath, nullptr},
        {"sub\\login.scp", Text::ScriptNameHasPath, nullptr},
        {"a/b:c", Text::ScriptNameHasPath, nullptr},
        {"a/b.scp", Text::ScriptNameIllegal, nullptr},
        {"\"a\".scp", Text::ScriptNameIllegal, nullptr},
        {"a?", Text::ScriptNameIllegal, nullptr},
        {"*", Text::ScriptNameIllegal, nullptr},
        {"<a", Text::ScriptNameIllegal, nullptr},
        {"a>", Text::ScriptNameIllegal, nullptr},
        {"a|b", Text::ScriptNameIllegal, nullptr},
        // A character that the service would get as "?".
        {"\xF0\x9F\x90\x9F.scp", Text::ScriptNameIllegal, nullptr},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const auto problem = checkScriptName(trimmed(c.name));
        EXPECT_EQ(problem ? std::optional(problem->text) : std::nullopt, c.problem);
        if (problem) {
            EXPECT_EQ(problem->icon, BoxIcon::Critical);
            EXPECT_EQ(pageOf(problem->field), HostPage::LoginScript);
        } else {
            EXPECT_EQ(completedScriptName(c.name), c.completed);
        }
    }
}

TEST(HostRules, AScriptHasToFitTheDataBlock) {
    const std::string name = "login.scp";
    const std::size_t room = 4096 - 2 - name.size() - 2;
    EXPECT_TRUE(scriptFits(name, std::string(room, 'x')));
    EXPECT_FALSE(scriptFits(name, std::string(room + 1, 'x')));
    EXPECT_FALSE(scriptFits(name, std::string(100'000, 'x')));
    if (ansiIsWindows1252()) { // a byte each
        std::string text;
        for (std::size_t i = 0; i < room; ++i)
            text += "å";
        EXPECT_TRUE(scriptFits(name, text));
    }
}

// What the rule of the spool directory asks and does, line by line, and what comes of it.
Lines decided(const char* remote, const HostRecord& self, std::vector<Answer> answers,
              bool removed = true, const std::vector<HostRecord>& hosts = kHosts) {
    HostEntry entry = goodEntry();
    entry.display_name = " New host ";
    entry.mail_domain = " new.example ";
    entry.remote_uucp_name = remote;
    Lines lines;
    std::size_t asked = 0;
    const SpoolSteps steps{[&](Text question, Answer default_button) {
                               lines.push_back(
                                   std::string(question == Text::ShareSpoolDirectory ? "share?"
                                               : question == Text::RemoteHostChanged ? "rename?"
                                                                                     : "what?") +
                                   (default_button == Answer::Yes ? " [Yes]" : " [No]"));
                               return answers.at(asked++);
                           },
                           [&](const std::string& directory) {
                               lines.push_back("remove " + directory);
                               return removed;
                           }};
    std::string directory = "(none)";
    switch (decideSpoolDirectory(entry, self, hosts, steps, directory)) {
    case SpoolOutcome::Decided:
        lines.push_back("use " + directory);
        break;
    case SpoolOutcome::Stopped:
        lines.emplace_back("stopped");
        break;
    case SpoolOutcome::Failed:
        lines.emplace_back("failed");
        break;
    }
    EXPECT_EQ(asked, answers.size());
    return lines;
}

TEST(HostRules, TheSpoolDirectoryOfANewHost) {
    const HostRecord self = host(0, "", "", "");
    EXPECT_EQ(decided(" new ", self, {}), (Lines{"use new"}));
    EXPECT_EQ(decided("lund", self, {}), (Lines{"use lund"}));
    EXPECT_EQ(decided("shared", self, {Answer::Yes}), (Lines{"share? [No]", "use shared"}));
    EXPECT_EQ(decided("shared", self, {Answer::No}),
              (Lines{"share? [No]", "use new.example-shared"}));
}

TEST(HostRules, TheSpoolDirectoryOfARenamedHost) {
    using enum Answer;
    HostRecord lund = kHosts[0];
    lund.spool_directory = "lund dir";
    EXPECT_EQ(decided("lund", lund, {}), (Lines{"use lund dir"}));
    EXPECT_EQ(decided(" lund ", lund, {}), (Lines{"use lund dir"}));
    EXPECT_EQ(decided("new", lund, {No}), (Lines{"rename? [No]", "stopped"}));
    EXPECT_EQ(decided("new", lund, {Yes}), (Lines{"rename? [No]", "remove lund dir", "use new"}));
    EXPECT_EQ(decided("Lund", lund, {Yes}), (Lines{"rename? [No]", "remove lund dir", "use Lund"}));
    EXPECT_EQ(decided("new", lund, {Yes}, false),
              (Lines{"rename? [No]", "remove lund dir", "failed"}));
    EXPECT_EQ(decided("shared", lund, {Yes, Yes}),
              (Lines{"rename? [No]", "remove lund dir", "share? [Yes]", "use shared"}));
    EXPECT_EQ(decided("shared", lund, {Yes, No}),
              (Lines{"rename? [No]", "remove lund dir", "share? [Yes]", "use  New host -shared"}));

    // The directory of a node name that another host has is not removed.
    const HostRecord& are = kHosts[2];
    EXPECT_EQ(decided("new", are, {}), (Lines{"use new"}));
    EXPECT_EQ(decided("here", are, {Yes}), (Lines{"share? [Yes]", "use here"}));
    EXPECT_EQ(decided("here", are, {No}), (Lines{"share? [Yes]", "use  New host -here"}));

    // A host that never had a node name keeps what it has.
    HostRecord nameless = host(4, "Nameless", "here", "");
    nameless.spool_directory = " old";
    EXPECT_EQ(decided("shared", nameless, {}), (Lines{"use  old"}));
}

TEST(HostRules, FramesOfTheConnectionPage) {
    struct {
        int connect_using;
        bool box;
        Single version;
        const char* shown;
    } const cases[] = {
        {0, false, 3.99F, "modem"}, {0, true, 3.99F, "modem"},    {0, false, 4, "modem"},
        {0, true, 4, "telephony"},  {0, true, 5.5F, "telephony"}, {1, true, 4, "ras+only"},
        {1, false, 3, "ras+only"},  {2, true, 4, "ras"},          {2, false, 3, "ras"},
        {3, true, 4, ""},           {-1, false, 4, ""},
    };
    for (const auto& c : cases) {
        const ConnectFrames frames = connectFrames(c.connect_using, c.box, c.version);
        std::string shown;
        for (const auto& [is_shown, name] : {std::pair{frames.telephony, "telephony"},
                                             {frames.modem, "modem"},
                                             {frames.ras, "ras"},
                                             {frames.ras_only == true, "+only"},
                                             {frames.ras_only == false, "-only"}})
            if (is_shown)
                shown += name;
        EXPECT_EQ(shown, c.shown) << c.connect_using << c.box << c.version;
        EXPECT_EQ(rasOnlyShownOnPageChange(c.connect_using), c.connect_using != 2);
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
    EXPECT_EQ(lists.com_ports.size(), 16U);
    EXPECT_EQ(lists.com_ports.front(), "COM1:");
    EXPECT_EQ(lists.com_ports.back(), "COM16:");
    EXPECT_EQ(lists.speeds,
              (Lines{"1200", "2400", "4800", "9600", "19200", "38400", "57600", "115200"}));
    EXPECT_EQ(lists.protocols, (Lines{"g", "t", "G"}));
    EXPECT_EQ(lists.protocols[kProtocolT], "t");
    EXPECT_EQ(lists.packet_sizes, (Lines{"32", "64", "128", "256", "512", "1024", "2048", "4096"}));
    EXPECT_EQ(lists.window_sizes, (Lines{"1", "2", "3", "4", "5", "6", "7"}));
    EXPECT_EQ(lists.data_bits, (Lines{"8", "7"}));
    EXPECT_EQ(lists.stop_bits, (Lines{"1", "2"}));
    EXPECT_EQ(lists.parities, (Lines{"Ingen", "Jämn", "Udda"}));

    const std::pair<Long, std::size_t> usable[] = {{0, 8},     {300, 0},    {1200, 1},
                                                   {33600, 5}, {38400, 6},  {56000, 6},
                                                   {57600, 7}, {115199, 7}, {230400, 8}};
    for (const auto& [max_speed, count] : usable)
        EXPECT_EQ(usableSpeeds(lists.speeds, max_speed), count) << max_speed;
}

} // namespace
} // namespace tollwick
