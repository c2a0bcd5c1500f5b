// What a save of a host tells, asks, shows, sends and leaves behind: one table, whole outcomes.
#include "link/host_saver.h"
#include "tests/link/support/console.h"
#include "tests/support/hex.h"
#include "wire/comrecord_moves.h"

#include <gtest/gtest.h>

namespace tollwick {
namespace {

using enum HostSaveOutcome;
using script::Acts;
using script::answer;

// Keeps the boxes and answers the questions.
struct AnsweringPrompter : Prompter {
    void beep() override { shown.emplace_back("beep"); }
    void tell(BoxIcon icon, std::string_view text) override { keep(icon, text); }
    Answer ask(BoxIcon icon, std::string_view text, Answer default_button) override {
        keep(icon, text);
        shown.back() += default_button == Answer::Yes ? " [Yes]" : " [No]";
        return answers.at(std::min(asked++, answers.size() - 1));
    }
    void keep(BoxIcon icon, std::string_view text) {
        shown.push_back((icon == BoxIcon::Critical ? "critical: " : "exclamation: ") +
                        std::string(text));
    }
    std::vector<Answer> answers; // the last for all that follow
    std::size_t asked = 0;
    Strings shown;
};

constexpr const char* kShare =
    "critical: The selected 'RemoteHostname' is used by another host/domain setup! Do you want "
    "them to share the same spool directory?";
const std::string kChanged =
    "critical: You have changed the 'Remote hostname'. This will\r\n\\                  \n"
    "result in that the previous directory with its spoolfiles\r\nwill be removed. Do you wish to "
    "continue? [No]";
constexpr const char* kLookup =
    "exclamation: Host lookup timeout cannot handle larger values then\r\n\\               \n"
    "30 seconds. Setting will be changed to 30 sec!";

std::string failed(const char* what) {
    return std::string("critical: Unable to ") + what +
           " the Tollwick Service!\r\nThe connection is terminated!";
}
const std::string kNotTransmitted = failed("transmit data to");

// The host before the save: new with the state 0, stored, or stored without a node name with 2.
HostRecord loaded(Integer state) {
    HostRecord record;
    record.state = state;
    record.record_number = state == 0 ? 0 : 7;
    record.display_name = "Uppsala";
    record.mail_domain = "u.se";
    record.remote_uucp_name = state == 2 ? "" : "ups";
    record.spool_directory = "updir";
    record.uucp_timeout = 12;
    record.unnamed_1958 = 4711;
    return record;
}
// Another one, which shares `name` as its local node name and `directory`.
HostRecord other(const char* name, const char* directory) {
    HostRecord record;
    record.state = 1;
    record.record_number = 8;
    record.display_name = "Lund";
    record.local_uucp_name = name;
    record.spool_directory = directory;
    return record;
}

using Change = void (*)(HostEntry&);
struct SaveCase {
    const char* name;
    Integer state; // of the host before
    Change change;
    HostRecord neighbour;
    std::vector<Answer> answers;
    std::optional<std::string> script_text;
    std::vector<int> results; // of the service, in order

    HostSaveOutcome outcome;
    std::optional<HostField> field;
    Strings shown;
    Strings infos;
    Strings sent;          // without the host itself
    const char* directory; // of the host that is sent last; null: none is
};

void rename(HostEntry& entry) {
    entry.remote_uucp_name = " new ";
}
void nothing(HostEntry&) {}
void script(HostEntry& entry) {
    entry.script_file_name = " a ";
}

const std::string kScriptSent = "30/80 number 0 length 0 data 0500612e73637003006f6b0a";
const std::string kRemoved = "40/100 number 0 length 0 data 7570646972";
const HostRecord kStranger = other("x", "x");
const std::vector<Answer> kYes = {Answer::Yes};
const std::vector<Answer> kNo = {Answer::No};
const std::vector<Answer> kYesNo = {Answer::Yes, Answer::No};

// clang-format off
const SaveCase kCases[] = {
    {"new", 0, nothing, kStranger, kYes, {}, {1}, Saved, {}, {}, {"Saving new host...", "Ready"}, {}, "ups"},
    {"new, shared", 0, nothing, other("ups", "x"), kYes, {}, {1}, Saved, {}, {std::string(kShare) + " [No]"}, {"Saving new host...", "Ready"}, {}, "ups"},
    {"new, not shared", 0, nothing, other("ups", "x"), kNo, {}, {1}, Saved, {}, {std::string(kShare) + " [No]"}, {"Saving new host...", "Ready"}, {}, "u.se-ups"},
    {"new, failed", 0, nothing, kStranger, kYes, {}, {3}, LinkFailed, {}, {"beep", kNotTransmitted}, {"Saving new host..."}, {}, "ups"},
    {"stored", 1, nothing, kStranger, kYes, {}, {1}, Saved, {}, {}, {"Updating host...", "Ready"}, {}, "updir"},
    {"stored, failed", 1, nothing, kStranger, kYes, {}, {2}, LinkFailed, {}, {"beep", kNotTransmitted}, {"Updating host..."}, {}, "updir"},
    {"lookup too long", 1, [](HostEntry& e) { e.host_lookup_timeout.text = "31"; }, kStranger, kYes, {}, {1}, Saved, {}, {"beep", kLookup}, {"Updating host...", "Ready"}, {}, "updir"},

    {"script", 1, script, kStranger, kYes, "ok\n", {1, 1}, Saved, {}, {}, {"Saving script...", "Updating host...", "Ready"}, {kScriptSent}, "updir"},
    {"script kept", 1, script, kStranger, kYes, {}, {1}, Saved, {}, {}, {"Updating host...", "Ready"}, {}, "updir"},
    {"script failed", 1, script, kStranger, kYes, "ok\n", {2}, LinkFailed, {}, {"beep", failed("save script to")}, {"Saving script..."}, {kScriptSent}, nullptr},
    {"script without a name", 1, nothing, kStranger, kYes, "ok\n", {1}, Saved, {}, {}, {"Updating host...", "Ready"}, {}, "updir"},
    {"script too large", 1, script, kStranger, kYes, std::string(4090, 'x'), {}, Refused, HostField::ScriptText, {"beep", "critical: The login script is too large to be sent to the service.\r\nShorten it and try again."}, {}, {}, nullptr},
    {"script with a path", 1, [](HostEntry& e) { e.script_file_name = "c:a"; }, kStranger, kYes, {}, {}, Refused, HostField::ScriptFileName, {"beep", "critical: Script filename may not contain directory or drive information!"}, {}, {}, nullptr},
    {"no name", 1, [](HostEntry& e) { e.display_name = " "; }, kStranger, kYes, "ok\n", {}, Refused, HostField::DisplayName, {"beep", "critical: You must enter a 'setup' name for this host!"}, {}, {}, nullptr},
    {"text too long", 1, [](HostEntry& e) { e.mail_domain = std::string(61, 'x'); }, kStranger, kYes, {}, {}, Refused, HostField::MailDomain, {"beep", "critical: This text is longer than the service takes, which is 60 characters.\r\nShorten it and try again."}, {}, {}, nullptr},

    {"renamed", 1, rename, kStranger, kYes, {}, {1, 1}, Saved, {}, {kChanged}, {"Removing old hostdirectory...", "Updating host...", "Ready"}, {kRemoved}, "new"},
    {"renamed, stopped", 1, rename, kStranger, kNo, {}, {}, Stopped, {}, {kChanged}, {"Ready"}, {}, nullptr},
    {"renamed, not removed", 1, rename, kStranger, kYes, {}, {3}, Stopped, {}, {kChanged, "beep", "critical: The service did not remove the old directory. The host has not been saved."}, {"Removing old hostdirectory...", "Ready"}, {kRemoved}, nullptr},
    {"renamed, link failed", 1, rename, kStranger, kYes, {}, {2}, LinkFailed, {}, {kChanged, "beep", failed("delete hostdirectory through")}, {"Removing old hostdirectory..."}, {kRemoved}, nullptr},
    {"renamed, directory of two", 1, rename, other("x", " UPDIR "), kYes, {}, {1}, Saved, {}, {kChanged}, {"Updating host...", "Ready"}, {}, "new"},
    {"renamed, not shared", 1, [](HostEntry& e) { e.display_name = " New ", e.remote_uucp_name = "new"; }, other("new", "x"), kYesNo, {}, {1, 1}, Saved, {}, {kChanged, std::string(kShare) + " [Yes]"}, {"Removing old hostdirectory...", "Updating host...", "Ready"}, {kRemoved}, " New -new"},
    {"renamed, nameless before", 2, rename, other("new", "x"), kNo, {}, {1}, Saved, {}, {}, {"Updating host...", "Ready"}, {}, "updir"},
    {"renamed, old name of two", 1, rename, other("ups", "x"), kNo, {}, {1}, Saved, {}, {}, {"Updating host...", "Ready"}, {}, "new"},
};
// clang-format on

constexpr std::string_view kData = " data ";

// The fields with their names, passwords plain: each save scrambles them anew.
Strings described(HostRecord record) {
    const HostEntry entry = entryOf(record);
    record.password = entry.password;
    record.uucp_password = entry.uucp_password;
    record.ras_password = entry.ras_password;
    Strings lines;
    const auto describeField = [&](const auto& field) {
        const auto& value = record.*field.member;
        if constexpr (requires { value.text(); })
            lines.push_back(std::string(field.name) + ": " + value.text());
        else
            lines.push_back(std::string(field.name) + ": " + std::to_string(value));
    };
    std::apply([&](const auto&... fields) { (describeField(fields), ...); }, HostRecord::fields());
    return lines;
}
Strings described(const std::vector<HostRecord>& hosts) {
    Strings lines;
    for (const HostRecord& host : hosts)
        std::ranges::copy(described(host), std::back_inserter(lines));
    return lines;
}
// The host in a request to save it.
HostRecord sentHost(const std::string& request) {
    Comrecord record;
    fromHex(request.substr(request.find(kData) + kData.size()))
        .copy(record.ComrecordData.data(), record.ComrecordData.size());
    HostRecord host;
    unpackRecord(record, host);
    return host;
}

void check(const SaveCase& test) {
    // What the service makes of a new host.
    HostRecord stored;
    stored.state = 1;
    stored.record_number = 9;
    stored.display_name = "As stored";
    std::vector<Acts> answers;
    for (const int result : test.results)
        answers.push_back(test.state == 0 && result == 1 ? answer(script::recordWith(stored))
                                                         : answer(result));
    const ScriptedPeer peer(answers);
    Console console(peer);
    AnsweringPrompter prompter;
    prompter.answers = test.answers;
    Requests requests{console.link, console.data, console.texts, prompter, console.progress};
    ServiceContext context{console.texts, prompter,     console.progress,
                           console.link,  console.data, requests};
    const HostRecord before = loaded(test.state);
    console.data.current_host = before;
    console.data.hosts = {test.neighbour};
    if (test.state != 0)
        console.data.hosts.push_back(before);
    const std::vector<HostRecord> hosts_before = console.data.hosts;
    HostEntry entry = entryOf(before);
    test.change(entry);

    const HostSaveResult result = HostSaver(context).save(entry, test.script_text);

    HostRecord saved = before;
    Strings sent = peer.requests();
    if (test.directory) {
        if (!entry.script_file_name.empty())
            entry.script_file_name = "a.scp";
        storeEntry(entry, false, saved);
        saved.spool_directory = test.directory;
        ASSERT_FALSE(sent.empty());
        EXPECT_EQ(described(sentHost(sent.back())), described(saved));
        EXPECT_EQ(sent.back().substr(0, sent.back().find(kData)),
                  test.state == 0 ? "20/20 number 0 length 2292" : "30/20 number 0 length 2292");
        sent.pop_back();
    }
    std::vector<HostRecord> hosts_after = hosts_before;
    if (test.state == 0 && test.outcome == Saved)
        hosts_after.push_back(saved = stored);
    EXPECT_EQ(result.outcome, test.outcome);
    EXPECT_TRUE(result.field == test.field);
    EXPECT_EQ(prompter.shown, test.shown);
    EXPECT_EQ(console.progress.infos, test.infos);
    EXPECT_EQ(sent, test.sent);
    EXPECT_EQ(described(console.data.current_host),
              described(test.outcome == Saved ? saved : before));
    EXPECT_EQ(described(console.data.hosts), described(hosts_after));
}

TEST(HostSaver, TellsAsksSendsAndStoresInItsOrder) {
    for (const SaveCase& test : kCases) {
        SCOPED_TRACE(test.name);
        check(test);
    }
}

TEST(HostSaver, ANumberThatDoesNotFitIsFoundBeforeAnythingIsSent) {
    const ScriptedPeer peer(std::vector<Acts>{answer(1)});
    Console console(peer);
    console.data.current_host = loaded(1);
    HostEntry entry = entryOf(console.data.current_host);
    entry.script_file_name = "a";
    entry.call_retries.text = "32768";
    EXPECT_THROW(HostSaver(console.context).save(entry, "ok\n"), HostNumberError);
    EXPECT_EQ(peer.requests(), Strings());
    EXPECT_EQ(described(console.data.current_host), described(loaded(1)));
}

} // namespace
} // namespace tollwick
