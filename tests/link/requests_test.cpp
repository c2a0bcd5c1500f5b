// What every request sends, shows and returns: one table and one walk over it.
#include "tests/link/support/console.h"
#include "tests/support/hex.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>

namespace tollwick {
namespace {

using script::answer;

constexpr int kFails = 1000;       // the rule for failures applies
constexpr int kReplyItself = 1001; // what a failed request returns is the result code

// What is returned when the result is 3, 8, 9 or one that nobody knows. 1 always gives 0, and 2, -1
// and no reply always fail.
struct Returns {
    int three = 0, eight = 0, nine = 0, unknown = 0;
};
constexpr Returns kLenient{};
constexpr Returns kStrict{kFails, kFails, kFails, kFails};
constexpr Returns kList{0, kFails, kFails, kFails};
constexpr Returns kSavedSettings{0, 2, 1, 0};

struct RequestCase {
    const char* name;
    std::string sent; // the first request, with the data in hex
    const char* status;
    const char* failure; // first line
    Returns returns;
    int failed; // what is returned then
    std::function<int(Console&)> call;
};

Integer status(Console& console) {
    std::optional<int> reported;
    console.requests.txGetUucpStatus([&](int value) {
        EXPECT_FALSE(reported) << "reported twice";
        reported = value;
    });
    EXPECT_TRUE(waitUntil([&] { return reported.has_value(); }));
    return static_cast<Integer>(reported.value_or(kFails));
}

template <Integer (Requests::*request)(std::vector<std::string>&)>
int names(Console& console) {
    std::vector<std::string> list;
    return (console.requests.*request)(list);
}

const std::string kLogin = "0300e573610600736563726574"; // "åsa", "secret"
const std::string kSettings =
    toHex(fromHex("0000 00008040 0000 0000 0100 61 19000000 00*68 0201")); // 4.0, "a", 25, 258
const std::string kSchedule = // 07:30 on Tuesdays, number 9
    "0100 0100 00*6 30373a3330 00*16 09";
const std::string kHost = "0100 07000000 7572 20*510 00*1664 05"; // directory "ur", mail limit 5

std::string sent(const char* header, std::string_view data = {}) {
    return data.empty() ? header : std::string(header) + " data " + toHex(fromHex(data));
}

// clang-format off
const RequestCase kCases[] = {
    {"txAuthenticate", sent("70/120 number 0 length 8", kLogin), "",
     "Unable to get authentication from the Tollwick Service!", kLenient, -2,
     [](Console& c) { return c.requests.txAuthenticate(); }},
    {"txNewLogin", sent("30/120 number 0 length 8", kLogin), "",
     "Unable to update authentication details in the Tollwick Service!", kLenient, -1,
     [](Console& c) { return c.requests.txNewLogin(); }},
    {"txGetSettings", sent("50/40 number 0 length 106"), "Retrieving settings...",
     "Unable to transfer new settings to the Tollwick Service!", kLenient, -1,
     [](Console& c) { return c.requests.txGetSettings(); }},
    {"txSaveSettings", sent("30/40 number 0 length 106", kSettings), "",
     "Unable to transfer new settings to the Tollwick Service!", kSavedSettings, -1,
     [](Console& c) { return c.requests.txSaveSettings(); }},
    {"txGetAllSchedules", sent("50/30 number 1 length 0"), "Retrieving schedules...",
     "Unable to retrieve schedules from the Tollwick Service!", kList, -1,
     [](Console& c) { return c.requests.txGetAllSchedules(); }},
    {"txSaveSchedule, new", sent("20/30 number 0 length 77", "ffff" + kSchedule.substr(4)), "",
     "Unable to transmit data to the Tollwick Service!", kStrict, -1,
     [](Console& c) { return c.requests.txSaveSchedule(true); }},
    {"txSaveSchedule, changed", sent("30/30 number 0 length 77", kSchedule), "",
     "Unable to transmit data to the Tollwick Service!", kStrict, -1,
     [](Console& c) { return c.requests.txSaveSchedule(false); }},
    {"txDeleteSchedule", sent("40/30 number 70000 length 77", "01"), "",
     "Unable to remove schedule from the Tollwick Service!", kStrict, -1,
     [](Console& c) { return c.requests.txDeleteSchedule(70'000); }},
    {"txGetAllHosts", sent("50/20 number 1 length 0"), "Retrieving hosts...",
     "Unable to retrieve hosts from the Tollwick Service!", kList, -1,
     [](Console& c) { return c.requests.txGetAllHosts(); }},
    {"txSaveHost, new", sent("20/20 number 0 length 2292", kHost), "",
     "Unable to transmit data to the Tollwick Service!", kStrict, -1,
     [](Console& c) { return c.requests.txSaveHost(true); }},
    {"txSaveHost, changed", sent("30/20 number 0 length 2292", kHost), "",
     "Unable to transmit data to the Tollwick Service!", kStrict, -1,
     [](Console& c) { return c.requests.txSaveHost(false); }},
    {"txDeleteHost", sent("40/20 number 70000 length 2292"), "Removing host...",
     "Unable to remove host from the Tollwick Service!", kLenient, -1,
     [](Console& c) { return c.requests.txDeleteHost(70'000); }},
    {"txDeleteHostDirectory", sent("40/100 number 0 length 0", "6df66c6e"), "",
     "Unable to delete hostdirectory through the Tollwick Service!", kLenient, -1,
     [](Console& c) { return c.requests.txDeleteHostDirectory("möln"); }},
    {"txGetAllOutbox", sent("50/130 number 0 length 0"), "Retrieving outbox contents...",
     "Unable to retrieve outbox information from the Tollwick Service!", kList, -1,
     [](Console& c) { return c.requests.txGetAllOutbox(); }},
    {"txDeleteOutboxMail", sent("40/130 number 0 length 20", "0100 61 0000 0200 442e 0000 05"),
     "Removing mail...", "Unable to remove the selected mail from the Tollwick Service!", kLenient,
     -1,
     [](Console& c) {
         bool removed = false;
         const OutboxRecord mail{VarText("a"), VarText(), VarText("D."), VarText(), 5};
         return c.requests.txDeleteOutboxMail(mail, removed);
     }},
    // The data block keeps what was there before.
    {"txGetUucpStatus", sent("50/140 number 0 length 0", "78*4096"), "",
     "Unable to get UUCP status from the Tollwick Service!", kLenient, -2, status},
    {"txSendUucpCommand", sent("20/150 number 0 length 4", "0000 ffff"), "",
     "Unable to send UUCP-command to the Tollwick Service!", kStrict, kReplyItself,
     [](Console& c) { return c.requests.txSendUucpCommand(); }},
    {"txGetAllTapiLocations", sent("50/50 number 0 length 0"), "Retrieving TAPI locations...",
     "Unable to retrieve Tapi locations from the Tollwick Service!", kList, -1,
     names<&Requests::txGetAllTapiLocations>},
    {"txGetAllTapiDevices", sent("50/60 number 0 length 0"), "Retrieving TAPI devices...",
     "Unable to retrieve Tapi Devices from the Tollwick Service!", kList, -1,
     names<&Requests::txGetAllTapiDevices>},
    {"txGetAllRasEntries", sent("50/70 number 0 length 0"), "Retrieving RAS settings...",
     "Unable to retrieve RAS-entries from the Tollwick Service!", kList, -1,
     names<&Requests::txGetAllRasEntries>},
    {"txGetScript", sent("50/80 number 0 length 0", "0500 612e736370"), "",
     "Unable to retrieve Script from the Tollwick Service!", kStrict, -1,
     [](Console& c) { bool received = false; return c.requests.txGetScript("a.scp", received); }},
    {"txSaveScript", sent("30/80 number 0 length 0", "0500 612e736370 0300 6f6b0a"), "",
     "Unable to save script to the Tollwick Service!", kStrict, -1,
     [](Console& c) { return c.requests.txSaveScript("a.scp", "ok\n"); }},
    {"txGetAllScriptFile", sent("50/90 number 0 length 0"), "Retrieving scriptfiles...",
     "Unable to retrieve Scriptfiles from the Tollwick Service!", kList, -1,
     names<&Requests::txGetAllScriptFile>},
};
// clang-format on

// How the service takes a request.
struct Reaction {
    const char* name;
    ScriptedPeer::Acts acts;
    int result; // -1 when there is none
    bool connected = true;
    bool in_time = true;
};

const Reaction kReactions[] = {
    {"1", answer(1), 1},
    {"2", answer(2), 2},
    {"3", answer(3), 3},
    {"8", answer(8), 8},
    {"9", answer(9), 9},
    {"77", answer(77), 77},
    {"-1", answer(-1), -1},
    {"silence", {}, -1, true, false},
    {"close", {script::close}, -1},
    {"reset", {script::reset}, -1},
    {"not connected", {}, -1, false},
};

// The monitor's poll leaves the windows usable, and is simply repeated when it times out.
bool isPoll(const RequestCase& request) {
    return std::string_view(request.name) == "txGetUucpStatus";
}

// What the request returns, or kFails.
int expectedValue(const RequestCase& request, const Reaction& reaction) {
    if (!reaction.in_time && isPoll(request))
        return 0;
    switch (reaction.result) {
    case 1:
        return 0;
    case 3:
        return request.returns.three;
    case 8:
        return request.returns.eight;
    case 9:
        return request.returns.nine;
    case 77:
        return request.returns.unknown;
    default:
        return kFails;
    }
}

void fill(Console& console) {
    console.data.user_id = "åsa";
    console.data.password = "secret";
    console.data.settings.service_version = 4;
    console.data.settings.smtp_service_ip = "a";
    console.data.settings.smtp_service_port = 25;
    console.data.settings.unnamed_36 = 258;
    console.data.current_schedule.identity = 1;
    console.data.current_schedule.day = 1;
    console.data.current_schedule.at_time = "07:30";
    console.data.current_schedule.record_number = 9;
    console.data.current_host.state = 1;
    console.data.current_host.record_number = 7;
    console.data.current_host.spool_directory = "ur";
    console.data.current_host.mail_limit = 5;
    console.data.uucp_command.cancel_transport = kTrue;
    // What an earlier exchange has left.
    Comrecord& record = console.link.comrecord;
    record = {99, 99, 99, 99, {}};
    record.ComrecordData.fill('x');
}

void check(const RequestCase& request, const Reaction& reaction) {
    const ScriptedPeer peer({reaction.acts, answer(result::EndOfList)});
    Console console;
    fill(console);
    if (reaction.connected)
        console.connectTo(peer);
    console.link.setComTimeout(reaction.in_time ? 30 : kShortTimeout);

    const int expected = expectedValue(request, reaction);
    const bool fails = expected == kFails;
    if (fails)
        console.expectFailure(request.failure);
    const int value = request.call(console);
    const int failed = request.failed == kReplyItself ? reaction.result : request.failed;
    EXPECT_EQ(value, fails ? failed : expected);

    EXPECT_EQ(console.link.isOpen(), !fails && reaction.connected);
    EXPECT_FALSE(console.requests.isBusy());
    EXPECT_EQ(console.lock.depth, 0);
    std::vector<std::string> infos;
    if (*request.status)
        infos.emplace_back(request.status);
    EXPECT_EQ(console.progress.infos, infos);
    if (!reaction.connected)
        return;
    EXPECT_TRUE(waitUntil([&] { return peer.ended() == (fails ? 1u : 0u); }));
    EXPECT_TRUE(waitUntil([&] { return !peer.requests().empty(); }));
    const std::vector<std::string> requests = peer.requests();
    ASSERT_FALSE(requests.empty());
    EXPECT_EQ(requests[0], request.sent);
    EXPECT_EQ(console.lock.times, isPoll(request) ? 0 : static_cast<int>(requests.size()));
}

TEST(Requests, SendShowAndReturnWhatTheCatalogueSays) {
    for (const RequestCase& request : kCases) {
        for (const Reaction& reaction : kReactions) {
            SCOPED_TRACE(std::string(request.name) + ", answered with " + reaction.name);
            check(request, reaction);
        }
    }
}

TEST(Requests, TellFailuresInTheLanguageOfTheConsoleSaveForTheHostSave) {
    const auto swedish = [](auto&& request, std::string_view text) {
        const ScriptedPeer peer({answer(result::Refused)});
        Console console(peer, kSwedish);
        console.prompter.expectBeep();
        console.prompter.expectBox(BoxIcon::Critical, text);
        EXPECT_EQ(request(console.requests), kTrue);
    };
    swedish([](Requests& requests) { return requests.txGetAllHosts(); },
            "Det går inte att hämta värdar från Tollwick-tjänsten!\r\nAnslutningen har brutits!");
    swedish([](Requests& requests) { return requests.txSaveSchedule(true); },
            "Det går inte att skicka data till Tollwick-tjänsten!\r\nAnslutningen har brutits!");
    swedish([](Requests& requests) { return requests.txSaveHost(true); },
            "Unable to transmit data to the Tollwick Service!\r\nThe connection is terminated!");
}

} // namespace
} // namespace tollwick
