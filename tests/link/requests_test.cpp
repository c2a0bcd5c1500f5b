// What every request sends, shows and returns: one table and one walk over it.
#include "tests/link/support/console.h"
#include "tests/support/hex.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <optional>

namespace tollwick {
namespace {

using script::Acts;
using script::answer;

constexpr int kReplyItself = 1001; // what a failed request returns is the result code

// What is returned for the results 3, 8, 9 and one that nobody knows; the request fails at those
// that are missing. 1 always gives 0, and 2, -1 and no reply always fail.
using Returns = std::map<int, int>;
const Returns kLenient = {{3, 0}, {8, 0}, {9, 0}, {77, 0}};
const Returns kStrict = {};
const Returns kList = {{3, 0}};
const Returns kSavedSettings = {{3, 0}, {8, 2}, {9, 1}, {77, 0}};

struct RequestCase {
    std::string sent; // the first request, with the data in hex
    const char* status;
    const char* failure; // what stands between "Unable to " and " the Tollwick Service!"
    Returns returns;
    int failed; // what is returned then
    std::function<int(Requests&)> call;

    // The monitor's poll leaves the windows usable.
    [[nodiscard]] bool isPoll() const { return sent.starts_with("50/140"); }
};

int pollStatus(Requests& requests) {
    std::vector<int> reports;
    requests.txGetUucpStatus([&reports](int value) { reports.push_back(value); });
    EXPECT_TRUE(waitUntil([&] { return !reports.empty(); }));
    EXPECT_EQ(reports.size(), 1U);
    return reports[0];
}
int deleteMail(Requests& requests) {
    bool removed = false;
    return requests.txDeleteOutboxMail({VarText("a"), VarText(), VarText("D."), VarText(), 5},
                                       removed);
}
int getScript(Requests& requests) {
    Requests::Script received{};
    return requests.txGetScript("a.scp", received);
}
template <Integer (Requests::*request)(std::vector<std::string>&)>
int names(Requests& requests) {
    Strings list;
    return (requests.*request)(list);
}

std::string sent(const char* header, std::string_view data = {}) {
    return data.empty() ? header : std::string(header) + " data " + toHex(fromHex(data));
}
const std::string kLogin = "0300e573610600736563726574"; // "åsa", "secret"
const std::string kSettings = "0000 00008040 0000 0000 0100 61 19000000 00*68 0201"; // 4.0, "a", 25
const std::string kSchedule = "0100 00*6 30373a3330 00*16 09";    // 07:30 on Tuesdays, number 9
const std::string kHost = "0100 07000000 7572 20*510 00*1664 05"; // directory "ur", mail limit 5

using R = Requests;
// clang-format off
const RequestCase kCases[] = {
    {sent("70/120 number 0 length 8", kLogin), "", "get authentication from", kLenient, -2, &R::txAuthenticate},
    {sent("30/120 number 0 length 8", kLogin), "Saving...", "update authentication details in", kLenient, -1, &R::txNewLogin},
    {"50/40 number 0 length 106", "Retrieving settings...", "transfer new settings to", kStrict, -1, &R::txGetSettings},
    {sent("30/40 number 0 length 106", kSettings), "Saving...", "transfer new settings to", kSavedSettings, -1, &R::txSaveSettings},
    {"50/30 number 1 length 0", "Retrieving schedules...", "retrieve schedules from", kList, -1, &R::txGetAllSchedules},
    {sent("20/30 number 0 length 77", "ffff" + kSchedule), "Saving...", "transmit data to", kStrict, -1, [](R& r) { return r.txSaveSchedule(true); }},
    {sent("30/30 number 0 length 77", "0100" + kSchedule), "Saving...", "transmit data to", kStrict, -1, [](R& r) { return r.txSaveSchedule(false); }},
    {sent("40/30 number 70000 length 77", "01"), "Removing schedule...", "remove schedule from", kStrict, -1, [](R& r) { return r.txDeleteSchedule(70'000); }},
    {"50/20 number 1 length 0", "Retrieving hosts...", "retrieve hosts from", kList, -1, &R::txGetAllHosts},
    {sent("20/20 number 0 length 2292", kHost), "", "transmit data to", kStrict, -1, [](R& r) { return r.txSaveHost(true); }},
    {sent("30/20 number 0 length 2292", kHost), "", "transmit data to", kStrict, -1, [](R& r) { return r.txSaveHost(false); }},
    {"40/20 number 70000 length 2292", "Removing host...", "remove host from", kLenient, -1, [](R& r) { return r.txDeleteHost(70'000); }},
    {sent("40/100 number 0 length 0", "6df66c6e"), "", "delete hostdirectory through", kLenient, -1, [](R& r) { return r.txDeleteHostDirectory("möln"); }},
    {"50/130 number 0 length 0", "Retrieving outbox contents...", "retrieve outbox information from", kList, -1, &R::txGetAllOutbox},
    {sent("40/130 number 0 length 20", "0100 61 0000 0200 442e 0000 05"), "Removing mail...", "remove the selected mail from", kLenient, -1, deleteMail},
    // The data block keeps what was there before.
    {sent("50/140 number 0 length 0", "78*4096"), "", "get UUCP status from", kLenient, -2, pollStatus},
    {sent("20/150 number 0 length 4", "0000 ffff"), "Sending the command...", "send UUCP-command to", kStrict, kReplyItself, &R::txSendUucpCommand},
    {"50/50 number 0 length 0", "Retrieving TAPI locations...", "retrieve Tapi locations from", kList, -1, names<&R::txGetAllTapiLocations>},
    {"50/60 number 0 length 0", "Retrieving TAPI devices...", "retrieve Tapi Devices from", kList, -1, names<&R::txGetAllTapiDevices>},
    {"50/70 number 0 length 0", "Retrieving RAS settings...", "retrieve RAS-entries from", kList, -1, names<&R::txGetAllRasEntries>},
    {sent("50/80 number 0 length 0", "0500 612e736370"), "", "retrieve Script from", kStrict, -1, getScript},
    {sent("30/80 number 0 length 0", "0500 612e736370 0300 6f6b0a"), "", "save script to", kStrict, -1, [](R& r) { return r.txSaveScript("a.scp", "ok\n"); }},
    {"50/90 number 0 length 0", "Retrieving scriptfiles...", "retrieve Scriptfiles from", kList, -1, names<&R::txGetAllScriptFile>}};

// What the service answers with; nothing when there is no connection.
const std::optional<int> kResults[] = {1, 2, 3, 8, 9, 77, -1, {}};
// clang-format on

void fill(Console& console) {
    ServiceData& data = console.data;
    data.user_id = "åsa";
    data.password = "secret";
    data.settings.service_version = 4;
    data.settings.smtp_service_ip = "a";
    data.settings.smtp_service_port = 25;
    data.settings.unnamed_36 = 258;
    data.current_schedule.identity = data.current_schedule.day = 1;
    data.current_schedule.at_time = "07:30";
    data.current_schedule.record_number = 9;
    data.current_host.state = 1;
    data.current_host.record_number = 7;
    data.current_host.spool_directory = "ur";
    data.current_host.mail_limit = 5;
    data.uucp_command.cancel_transport = kTrue;
    // What an earlier exchange has left.
    console.link.comrecord = {99, 99, 99, 99, {}};
    console.link.comrecord.ComrecordData.fill('x');
}

void check(const RequestCase& request, std::optional<int> answered) {
    const int code = answered.value_or(result::NoReply);
    const ScriptedPeer peer({answer(code), answer(result::EndOfList)});
    Console console;
    fill(console);
    if (answered)
        console.connectTo(peer);

    const auto returned = request.returns.find(code);
    const bool is_done = code == result::Done;
    // A status that does not come on a closed link is nobody's failure.
    const bool fails =
        !is_done && returned == request.returns.end() && (answered || !request.isPoll());
    if (fails)
        console.expectFailure("Unable to " + std::string(request.failure) +
                              " the Tollwick Service!");
    const int failed = request.failed == kReplyItself ? code : request.failed;
    EXPECT_EQ(request.call(console.requests), is_done                             ? 0
                                              : fails                             ? failed
                                              : returned != request.returns.end() ? returned->second
                                                                                  : 0);

    EXPECT_EQ(console.link.isOpen(), !fails && answered);
    EXPECT_FALSE(console.requests.isBusy());
    EXPECT_EQ(console.lock.depth, 0);
    const char* idle = console.link.isOpen() ? "Ready" : "Connection closed.";
    EXPECT_EQ(console.progress.infos,
              *request.status ? (Strings{request.status, idle}) : Strings{});
    EXPECT_EQ(console.progress.busy, 0);
    EXPECT_EQ(console.progress.times_busy, request.isPoll() ? 0 : 1);
    if (!answered)
        return;
    EXPECT_TRUE(waitUntil([&] { return peer.ended() == (fails ? 1u : 0u); }));
    ASSERT_TRUE(waitUntil([&] { return !peer.requests().empty(); }));
    EXPECT_EQ(peer.requests()[0], request.sent);
    EXPECT_EQ(console.lock.times > 0, !request.isPoll());
}

TEST(Requests, SendShowAndReturnWhatTheCatalogueSays) {
    for (const RequestCase& request : kCases)
        for (const std::optional<int> result : kResults) {
            SCOPED_TRACE(request.sent.substr(0, 30) + ", answered with " +
                         (result ? std::to_string(*result) : "nothing"));
            check(request, result);
        }
}

TEST(Requests, TellFailuresInTheLanguageOfTheConsoleSaveForTheHostSave) {
    const std::pair<std::function<int(R&)>, const char*> cases[] = {
        {[](R& r) { return r.txSaveSchedule(true); },
         "Det går inte att skicka data till Tollwick-tjänsten!\r\nAnslutningen har brutits!"},
        {[](R& r) { return r.txSaveHost(true); },
         "Unable to transmit data to the Tollwick Service!\r\nThe connection is terminated!"}};
    for (const auto& [request, text] : cases) {
        const ScriptedPeer peer(std::vector<Acts>{answer(result::Refused)});
        Console console(peer, kSwedish);
        console.prompter.expectBeep();
        console.prompter.expectBox(BoxIcon::Critical, text);
        EXPECT_EQ(request(console.requests), kTrue);
    }
}

TEST(Requests, WithoutANameSendNothingAndCutALongOne) {
    const ScriptedPeer peer(std::vector<Acts>{answer(1)});
    Console console(peer);
    auto received = Requests::Script::Whole;
    for (const char* blank : {"", "   "}) {
        EXPECT_EQ(console.requests.txDeleteHostDirectory(blank), 0);
        EXPECT_EQ(console.requests.txGetScript(blank, received), 0);
        EXPECT_EQ(received, Requests::Script::None);
        EXPECT_EQ(console.requests.txSaveScript(blank, "text"), 0);
    }
    EXPECT_EQ(console.requests.txDeleteHostDirectory(std::string(5000, 'a')), 0);
    EXPECT_EQ(peer.requests(), Strings{sent("40/100 number 0 length 0", "61*4096")});
}

TEST(Requests, VerdictsAndCommandValuesComeFromTheRecordNumber) {
    const ScriptedPeer peer({answer(1, 4), answer(1, 0), answer(3), answer(1, -1), answer(1, -2),
                             answer(1, 65536 + 40'000)});
    Console console(peer);
    for (const bool expected : {false, true, false}) {
        bool removed = !expected;
        EXPECT_EQ(console.requests.txDeleteOutboxMail({}, removed), 0);
        EXPECT_EQ(removed, expected);
    }
    EXPECT_EQ(console.requests.txAuthenticate(), kAuthenticated);
    EXPECT_EQ(console.requests.txAuthenticate(), 0) << "-2 is given by the console alone";
    EXPECT_EQ(console.requests.txSendUucpCommand(), 40'000 - 65536);
    EXPECT_TRUE(console.link.isOpen());
}

ScheduleRecord schedule(Long number) {
    ScheduleRecord record;
    record.identity = 12;
    record.record_number = number;
    return record;
}
HostRecord host(Long number) {
    HostRecord record;
    record.record_number = number;
    record.mail_limit = 1; // the blanks before it are sent
    return record;
}
Acts name(std::string_view text) {
    return answer(script::recordWith(NameListRecord{VarText(text)}));
}

TEST(Requests, KeepWhatWasSentWhenTheReplyBringsNoRecord) {
    Comrecord too_short = script::recordWith(schedule(32));
    too_short.data_end = 31;
    const ScriptedPeer peer(
        {answer(1), answer(too_short), answer(script::recordWith(schedule(32))), answer(1)});
    Console console(peer);
    console.data.current_schedule = schedule(7);
    for (const Long number : {7, 7, 32}) {
        EXPECT_EQ(console.requests.txSaveSchedule(false), 0);
        EXPECT_EQ(console.data.current_schedule, schedule(number));
    }
    console.data.current_host = host(7);
    EXPECT_EQ(console.requests.txSaveHost(false), 0);
    EXPECT_EQ(console.data.current_host, host(7));
}

TEST(Lists, SchedulesFollowTheRecordsOwnNumberFromAClearedRecord) {
    constexpr Long kLast = 2147483647;
    const auto one = [](Long number) { return answer(script::recordWith(schedule(number), 40)); };
    const ScriptedPeer peer({one(1), one(9), one(kLast), answer(3)});
    Console console(peer);
    console.data.schedules.resize(7);
    EXPECT_EQ(console.requests.txGetAllSchedules(), 0);
    EXPECT_EQ(console.data.schedules, (std::vector{schedule(1), schedule(9), schedule(kLast)}));
    using Counts = std::vector<std::optional<WorkCount>>;
    EXPECT_EQ(console.progress.counts,
              (Counts{WorkCount{0, {}}, WorkCount{1, {}}, WorkCount{2, {}}, WorkCount{3, {}}, {}}));
    EXPECT_EQ(peer.requests(),
              (Strings{"50/30 number 1 length 0", "50/30 number 2 length 0",
                       "50/30 number 10 length 0", "50/30 number 2147483647 length 0"}));
}

TEST(Lists, HostsFollowTheHeadersNumberWithTheLastHostStillInTheRecord) {
    const auto reply = [](Long own_number, Long number, int operation) {
        Comrecord record = script::recordWith(host(own_number), number);
        record.Operation = static_cast<Integer>(operation);
        record.ObjectClass = 20;
        record.RecordLength = 2292; // as a service sends it
        return record;
    };
    const ScriptedPeer peer({answer(reply(40, 1, 1)), answer(reply(41, 5, 1)), answer(3)});
    Console console(peer);
    console.data.hosts.resize(7);
    EXPECT_EQ(console.requests.txGetAllHosts(), 0);
    EXPECT_EQ(console.data.hosts, (std::vector{host(40), host(41)}));
    EXPECT_EQ(peer.requests(), (Strings{"50/20 number 1 length 0", describe(reply(40, 2, 50)),
                                        describe(reply(41, 6, 50))}));
}

TEST(Lists, ThatComeBackToAnEarlierRecordEndThere) {
    const auto hostReply = [](Long number) {
        return answer(script::recordWith(host(number), number));
    };
    const auto scheduleReply = [](Long number) {
        return answer(script::recordWith(schedule(number)));
    };
    const ScriptedPeer peer(
        {scheduleReply(5), scheduleReply(31), scheduleReply(5), hostReply(3), hostReply(3)});
    Console console(peer);
    EXPECT_EQ(console.requests.txGetAllSchedules(), 0);
    EXPECT_EQ(console.data.schedules, (std::vector{schedule(5), schedule(31)}));
    EXPECT_EQ(console.requests.txGetAllHosts(), 0);
    EXPECT_EQ(console.data.hosts, std::vector{host(3)});
}

TEST(Lists, ExactlyTheMostSchedulesAreCompleteAndOneMoreFails) {
    for (const bool fails : {false, true}) {
        std::vector<Acts> answers;
        for (Long number = 1; number <= 10'000 + (fails ? 1 : 0); ++number)
            answers.push_back(answer(script::recordWith(schedule(number))));
        answers.push_back(answer(result::EndOfList));
        const ScriptedPeer peer(answers);
        Console console(peer);
        console.lock.meanwhile = [&peer] { peer.answerAtOnce(); };
        if (fails)
            console.expectFailure("Unable to retrieve schedules from the Tollwick Service!");
        EXPECT_EQ(console.requests.txGetAllSchedules(), fails ? kTrue : 0);
        EXPECT_EQ(console.data.schedules.size(), 10'000U);
    }
}

TEST(Lists, TakeTenThousandNamesAndKeepThemWhenMoreFail) {
    std::vector<Acts> answers(10'001, name("a  "));
    for (const bool fails : {true, false}) {
        const ScriptedPeer peer(answers);
        Console console(peer);
        console.lock.meanwhile = [&peer] { peer.answerAtOnce(); };
        if (fails)
            console.expectFailure("Unable to retrieve RAS-entries from the Tollwick Service!");
        Strings names;
        EXPECT_EQ(console.requests.txGetAllRasEntries(names), fails ? kTrue : 0);
        EXPECT_EQ(names, Strings(10'000, "a"));
        EXPECT_EQ(peer.requests().size(), 10'001U);
        EXPECT_EQ(peer.requests()[1], "60/70 number 0 length 0");
        EXPECT_EQ(console.link.isOpen(), !fails);
        answers.back() = answer(result::EndOfList);
    }
}

} // namespace
} // namespace tollwick
