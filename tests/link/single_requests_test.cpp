// What single requests do beyond the catalogue: the values they return and the records they keep.
#include "tests/link/support/console.h"

#include <gtest/gtest.h>

namespace tollwick {
namespace {

using script::answer;
using Strings = std::vector<std::string>;

TEST(SingleRequests, WithoutANameSendNothing) {
    const ScriptedPeer peer({answer(1), answer(1)});
    Console console(peer);
    bool received = true;
    for (const char* blank : {"", "   "}) {
        EXPECT_EQ(console.requests.txDeleteHostDirectory(blank), 0);
        EXPECT_EQ(console.requests.txGetScript(blank, received), 0);
        EXPECT_FALSE(received);
        EXPECT_EQ(console.requests.txSaveScript(blank, "text"), 0);
    }
    EXPECT_EQ(console.requests.txDeleteHostDirectory("ur"), 0);
    EXPECT_EQ(peer.requests(), Strings{"40/100 number 0 length 0 data 7572"});

    // A name that is longer than the data block is cut.
    EXPECT_EQ(console.requests.txDeleteHostDirectory(std::string(5000, 'a')), 0);
    EXPECT_EQ(peer.requests().back(), describe([] {
                  Comrecord record{40, 100, 0, 0, {}};
                  record.ComrecordData.fill('a');
                  return record;
              }()));
}

TEST(SingleRequests, MailThatCouldNotBeRemovedIsToldAndTheLinkStays) {
    const ScriptedPeer peer({answer(1, 4), answer(1, 0), answer(3)});
    Console console(peer);
    bool removed = true;
    console.prompter.expectBeep();
    console.prompter.expectBox(BoxIcon::Critical, "The selected mail could not be removed!");
    EXPECT_EQ(console.requests.txDeleteOutboxMail({}, removed), 0);
    EXPECT_FALSE(removed);
    EXPECT_TRUE(console.prompter.done());
    EXPECT_EQ(console.requests.txDeleteOutboxMail({}, removed), 0);
    EXPECT_TRUE(removed);
    EXPECT_EQ(console.requests.txDeleteOutboxMail({}, removed), 0);
    EXPECT_FALSE(removed);
    EXPECT_TRUE(console.link.isOpen());
}

TEST(SingleRequests, VerdictsAndCommandValuesComeFromTheRecordNumber) {
    const ScriptedPeer peer(
        {answer(1, -1), answer(1, -2), answer(1, 65536 + 7), answer(1, 40'000)});
    Console console(peer);
    EXPECT_EQ(console.requests.txAuthenticate(), kAuthenticated);
    EXPECT_EQ(console.requests.txAuthenticate(), -2);
    EXPECT_EQ(console.requests.txSendUucpCommand(), 7);
    EXPECT_EQ(console.requests.txSendUucpCommand(), 40'000 - 65536);
    EXPECT_TRUE(console.link.isOpen());
}

TEST(SingleRequests, KeepTheRecordOfTheReply) {
    SettingsRecord settings;
    settings.doc_viewer = "läsare";
    settings.unnamed_36 = 7;
    ScheduleRecord schedule;
    schedule.identity = 12;
    schedule.record_number = 3;
    HostRecord host;
    host.record_number = 4;
    ScriptRecord script;
    script.file_name = "a.scp";
    script.text = "wait 5 \n";
    const ScriptedPeer peer({answer(script::recordWith(settings)),
                             answer(script::recordWith(schedule)), answer(script::recordWith(host)),
                             answer(script::recordWith(script)), answer(result::EndOfList)});
    Console console(peer);
    console.data.settings.smtp_service_ip = "old";
    bool received = false;
    EXPECT_EQ(console.requests.txGetSettings(), 0);
    EXPECT_EQ(console.requests.txSaveSchedule(true), 0);
    EXPECT_EQ(console.requests.txSaveHost(true), 0);
    EXPECT_EQ(console.requests.txGetScript("a.scp", received), 0);
    EXPECT_TRUE(received);
    EXPECT_EQ(console.data.settings, settings);
    EXPECT_EQ(console.data.current_schedule, schedule);
    EXPECT_EQ(console.data.current_host, host);
    EXPECT_EQ(console.data.script, script);

    // An answer without a record leaves the last one.
    EXPECT_EQ(console.requests.txGetSettings(), 0);
    EXPECT_EQ(console.data.settings, settings);
}

} // namespace
} // namespace tollwick
