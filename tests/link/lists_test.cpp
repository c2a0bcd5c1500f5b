// The two forms of list: by record number, and by first and next.
#include "tests/link/support/console.h"
#include "tests/support/hex.h"

#include <QTimer>
#include <gtest/gtest.h>

#include <limits>

namespace tollwick {
namespace {

using script::answer;
using Acts = ScriptedPeer::Acts;
using Strings = std::vector<std::string>;

Acts schedule(Long own_number, Long header_number) {
    ScheduleRecord record;
    record.record_number = own_number;
    return answer(script::recordWith(record, header_number));
}

// The reply as a service sends it: with the length of the record in its header.
Comrecord host(Long own_number, Long header_number) {
    HostRecord record;
    record.record_number = own_number;
    record.display_name = "Malmö";
    Comrecord reply = script::recordWith(record, header_number);
    reply.ObjectClass = 20;
    reply.RecordLength = 2292;
    return reply;
}

Acts name(std::string_view text) {
    return answer(script::recordWith(NameListRecord{VarText(text)}));
}

template <class Record>
std::vector<Long> numbers(const std::vector<Record>& list) {
    std::vector<Long> result;
    for (const Record& record : list)
        result.push_back(record.record_number);
    return result;
}

TEST(NumberedLists, SchedulesFollowTheRecordsOwnNumberFromAClearedRecord) {
    constexpr Long kLast = std::numeric_limits<Long>::max();
    const ScriptedPeer peer({schedule(1, 40), schedule(5, 40), schedule(9, 40), schedule(kLast, 40),
                             answer(result::EndOfList)});
    Console console(peer);
    EXPECT_EQ(console.requests.txGetAllSchedules(), 0);
    EXPECT_EQ(numbers(console.data.schedules), (std::vector<Long>{1, 5, 9, kLast}));
    EXPECT_EQ(peer.requests(), (Strings{"50/30 number 1 length 0", "50/30 number 2 length 0",
                                        "50/30 number 6 length 0", "50/30 number 10 length 0",
                                        "50/30 number 2147483647 length 0"}));
}

TEST(NumberedLists, HostsFollowTheHeadersNumberWithTheLastHostStillInTheRecord) {
    const ScriptedPeer peer(
        {answer(host(40, 1)), answer(host(41, 5)), answer(host(42, 9)), answer(result::EndOfList)});
    Console console(peer);
    EXPECT_EQ(console.requests.txGetAllHosts(), 0);
    EXPECT_EQ(numbers(console.data.hosts), (std::vector<Long>{40, 41, 42}));
    EXPECT_EQ(console.data.hosts.back().display_name.text(), "Malmö");
    const auto next = [](Long own_number, Long number) {
        Comrecord record = host(own_number, number);
        record.Operation = 50;
        return describe(record);
    };
    EXPECT_EQ(peer.requests(),
              (Strings{"50/20 number 1 length 0", next(40, 2), next(41, 6), next(42, 10)}));
}

TEST(NumberedLists, AreEmptiedFirstAndKeepWhatHasComeWhenTheRestFails) {
    for (const Acts& end : {answer(2), answer(9), Acts{}, Acts{script::close}}) {
        const ScriptedPeer peer({schedule(1, 1), schedule(2, 2), end});
        Console console(peer);
        QTimer hour_later; // for the request that gets no answer
        QObject::connect(&hour_later, &QTimer::timeout, [&] {
            if (peer.requests().size() == 3)
                console.clock.set(13, 0, 0);
        });
        hour_later.start(1);
        console.data.schedules.resize(7);
        console.expectFailure("Unable to retrieve schedules from the Tollwick Service!");
        EXPECT_EQ(console.requests.txGetAllSchedules(), kTrue);
        EXPECT_EQ(numbers(console.data.schedules), (std::vector<Long>{1, 2}));
        EXPECT_FALSE(console.link.isOpen());
    }

    const ScriptedPeer peer({answer(result::EndOfList), answer(result::EndOfList)});
    Console console(peer);
    console.data.schedules.resize(7);
    console.data.hosts.resize(7);
    EXPECT_EQ(console.requests.txGetAllSchedules(), 0);
    EXPECT_EQ(console.requests.txGetAllHosts(), 0);
    EXPECT_TRUE(console.data.schedules.empty());
    EXPECT_TRUE(console.data.hosts.empty());
}

TEST(FirstAndNextLists, AskForTheFirstAndThenForTheNext) {
    const OutboxRecord mail{VarText("anna@a.example"), VarText("malmo"), VarText("D.1"), VarText(),
                            3};
    OutboxRecord other = mail;
    other.size = 70'000;
    const ScriptedPeer peer({answer(script::recordWith(mail, 17)),
                             answer(script::recordWith(other, 18)), answer(result::EndOfList)});
    Console console(peer);
    console.data.outbox.resize(7);
    EXPECT_EQ(console.requests.txGetAllOutbox(), 0);
    EXPECT_EQ(console.data.outbox, (std::vector{mail, other}));
    EXPECT_EQ(peer.requests(), (Strings{"50/130 number 0 length 0", "60/130 number 0 length 0",
                                        "60/130 number 0 length 0"}));
}

TEST(FirstAndNextLists, GiveTheNamesInTheirOrder) {
    using Call = Integer (Requests::*)(Strings&);
    const std::pair<Call, std::string> lists[] = {
        {&Requests::txGetAllTapiLocations, "50"},
        {&Requests::txGetAllTapiDevices, "60"},
        {&Requests::txGetAllRasEntries, "70"},
        {&Requests::txGetAllScriptFile, "90"},
    };
    for (const auto& [call, object_class] : lists) {
        SCOPED_TRACE(object_class);
        const ScriptedPeer peer({name("Växjö  "), name(""), name("Arlöv"), answer(3)});
        Console console(peer);
        Strings names;
        EXPECT_EQ((console.requests.*call)(names), 0);
        EXPECT_EQ(names, (Strings{"Växjö", "", "Arlöv"}));
        const std::string next = "60/" + object_class + " number 0 length 0";
        EXPECT_EQ(peer.requests(),
                  (Strings{"50/" + object_class + " number 0 length 0", next, next, next}));
    }
}

TEST(FirstAndNextLists, KeepWhatHasComeWhenTheRestFails) {
    const ScriptedPeer peer({name("a"), name("b"), answer(result::Refused)});
    Console console(peer);
    console.expectFailure("Unable to retrieve Scriptfiles from the Tollwick Service!");
    Strings names;
    EXPECT_EQ(console.requests.txGetAllScriptFile(names), kTrue);
    EXPECT_EQ(names, (Strings{"a", "b"}));
}

TEST(FirstAndNextLists, TakeTenThousandNamesAndNoMore) {
    std::vector<Acts> answers(10'000, name("a"));
    answers.push_back(answer(result::EndOfList));
    {
        const ScriptedPeer peer(answers);
        Console console(peer);
        Strings names;
        EXPECT_EQ(console.requests.txGetAllRasEntries(names), 0);
        EXPECT_EQ(names.size(), 10'000u);
    }
    answers.back() = name("one too many");
    answers.push_back(name("never asked for"));
    const ScriptedPeer peer(answers);
    Console console(peer);
    console.expectFailure("Unable to retrieve RAS-entries from the Tollwick Service!");
    Strings names;
    EXPECT_EQ(console.requests.txGetAllRasEntries(names), kTrue);
    EXPECT_EQ(names, Strings(10'000, "a"));
    EXPECT_EQ(peer.requests().size(), 10'001u);
    EXPECT_FALSE(console.link.isOpen());
}

} // namespace
} // namespace tollwick
