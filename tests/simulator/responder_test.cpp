#include "client.h"
#include "simulator/responder.h"
#include "simulator/sample_site.h"

#include <gtest/gtest.h>

namespace tollwick::simulator {
namespace {

using enum Operation;

class ResponderTest : public testing::Test {
protected:
    ResponderTest() {
        // Deriving the hash of a password takes its time; most tests need no login.
        session.is_authenticated = true;
    }

    Comrecord ask(const Comrecord& what) { return responder.reply(what, session); }
    Integer resultOf(const Comrecord& what) { return ask(what).Operation; }

    // All names of a list that is walked with first and next.
    std::vector<std::string> walk(ObjectClass object_class) {
        std::vector<std::string> names;
        Comrecord reply = ask(request(Get, object_class));
        for (; reply.Operation == result::Done; reply = ask(request(GetNext, object_class)))
            names.push_back(recordIn<NameListRecord>(reply).name.text());
        EXPECT_EQ(reply.Operation, result::EndOfList);
        return names;
    }

    Site site;
    std::chrono::milliseconds now{0};
    Transport transport{site, [this] { return now; }};
    int changes = 0;
    Responder responder{site, transport, [this] { ++changes; }};
    Session session;
};

TEST_F(ResponderTest, ServesNothingBeforeALogin) {
    session = {};
    site.login = sampleLogin();
    EXPECT_EQ(resultOf(request(Get, ObjectClass::Settings)), result::Refused);

    Comrecord reply = ask(loginRequest("admin", "wrong"));
    EXPECT_EQ(reply.Operation, result::Done);
    EXPECT_EQ(reply.RecordNumber, 0);
    EXPECT_EQ(resultOf(request(Get, ObjectClass::Settings)), result::Refused);

    reply = ask(loginRequest("admin", "tollwick"));
    EXPECT_EQ(reply.Operation, result::Done);
    EXPECT_EQ(reply.RecordNumber, -1);
    EXPECT_EQ(resultOf(request(Get, ObjectClass::Settings)), result::Done);

    const LoginRecord changed{VarText("Åsa"), VarText("blåbär")};
    EXPECT_EQ(resultOf(requestWith(Save, ObjectClass::Login, changed)), result::Done);
    EXPECT_EQ(ask(loginRequest("admin", "tollwick")).RecordNumber, 0);
    EXPECT_EQ(ask(loginRequest("Åsa", "blåbär")).RecordNumber, -1);
}

TEST_F(ResponderTest, RefusesWhatItDoesNotKnow) {
    constexpr Integer kOperations[] = {0, 1, 10, 20, 30, 40, 50, 60, 70, -1, 32767};
    constexpr Integer kClasses[] = {0, 10, 110, 160, -1};
    for (const Integer operation : kOperations) {
        for (const Integer object_class : kClasses) {
            Comrecord nonsense = EmptyComrecord;
            nonsense.Operation = operation;
            nonsense.ObjectClass = object_class;
            nonsense.ComrecordData.fill('\xFF');
            EXPECT_EQ(resultOf(nonsense), result::Refused) << operation << '/' << object_class;
        }
    }
    EXPECT_EQ(resultOf(request(GetNext, ObjectClass::Host)), result::Refused);
    EXPECT_EQ(changes, 0);
}

TEST_F(ResponderTest, DeliversSchedulesFromTheNumberOn) {
    for (const Long number : {5, 1, 9})
        site.schedules.emplace_back().record_number = number;
    std::vector<Long> received;
    Comrecord reply = ask(request(Get, ObjectClass::Schedule, 1));
    while (reply.Operation == result::Done && received.size() < 10) {
        const auto schedule = recordIn<ScheduleRecord>(reply);
        EXPECT_EQ(schedule.record_number, reply.RecordNumber);
        EXPECT_EQ(schedule.identity, 1) << "neither blank nor new";
        received.push_back(schedule.record_number);
        reply = ask(request(Get, ObjectClass::Schedule, received.back() + 1));
    }
    EXPECT_EQ(reply.Operation, result::EndOfList);
    EXPECT_EQ(received, (std::vector<Long>{1, 5, 9}));
}

TEST_F(ResponderTest, AddsChangesAndDeletesSchedules) {
    ScheduleRecord schedule;
    schedule.identity = kTrue;
    schedule.at_time = "07:30";
    Comrecord reply = ask(requestWith(Add, ObjectClass::Schedule, schedule));
    schedule = recordIn<ScheduleRecord>(reply);
    EXPECT_EQ(reply.Operation, result::Done);
    EXPECT_EQ(schedule.identity, 1);
    EXPECT_EQ(schedule.record_number, 1);
    EXPECT_EQ(schedule.at_time.text(), "07:30");

    schedule.day = 4;
    reply = ask(requestWith(Save, ObjectClass::Schedule, schedule));
    EXPECT_EQ(reply.Operation, result::Done);
    EXPECT_EQ(recordIn<ScheduleRecord>(reply), schedule);
    EXPECT_EQ(site.schedules, std::vector{schedule});

    schedule.record_number = 2;
    EXPECT_EQ(resultOf(requestWith(Save, ObjectClass::Schedule, schedule)), result::Refused);
    EXPECT_EQ(resultOf(request(Delete, ObjectClass::Schedule, 2)), result::Refused);
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(resultOf(request(Delete, ObjectClass::Schedule, 1)), result::Done);
    EXPECT_TRUE(site.schedules.empty());
    EXPECT_EQ(changes, 3);
}

TEST_F(ResponderTest, KeepsHostsAndTheirSpoolDirectories) {
    HostRecord host;
    host.display_name = "Växjö";
    host.spool_directory = "vaxjo";
    Comrecord reply = ask(requestWith(Add, ObjectClass::Host, host));
    host = recordIn<HostRecord>(reply);
    EXPECT_EQ(reply.RecordNumber, 1);
    EXPECT_EQ(host.record_number, 1);
    EXPECT_NE(host.state, 0);
    EXPECT_EQ(recordIn<HostRecord>(ask(request(Get, ObjectClass::Host, 0))), host);
    EXPECT_EQ(resultOf(request(Get, ObjectClass::Host, 2)), result::EndOfList);

    host.spool_directory = "växjö";
    EXPECT_EQ(resultOf(requestWith(Save, ObjectClass::Host, host)), result::Done);
    EXPECT_EQ(site.spool_directories, (std::vector{VarText("vaxjo"), VarText("växjö")}));

    Comrecord remove = request(Delete, ObjectClass::HostDirectory);
    toAnsi("växjö").copy(remove.ComrecordData.data(), kDataBlockSize);
    EXPECT_EQ(resultOf(remove), result::Done);
    EXPECT_EQ(site.spool_directories, std::vector{VarText("vaxjo")});
    const int changes_before = changes;
    EXPECT_EQ(resultOf(remove), result::Done) << "gone already";
    EXPECT_EQ(changes, changes_before);

    host.record_number = 7;
    EXPECT_EQ(resultOf(requestWith(Save, ObjectClass::Host, host)), result::Refused);
    EXPECT_EQ(resultOf(request(Delete, ObjectClass::Host, 7)), result::Refused);
    EXPECT_EQ(resultOf(request(Delete, ObjectClass::Host, 1)), result::Done);
    EXPECT_TRUE(site.hosts.empty());
}

TEST_F(ResponderTest, AnswersASaveOfTheSettingsAsTold) {
    SettingsRecord settings;
    for (const Integer wanted : std::initializer_list<Integer>{1, 2, 8, 9}) {
        site.settings_save_answer = wanted;
        ++settings.admin_port;
        EXPECT_EQ(resultOf(requestWith(Save, ObjectClass::Settings, settings)), wanted);
        EXPECT_EQ(site.settings == settings, wanted != result::Refused) << wanted;
    }
    EXPECT_EQ(recordIn<SettingsRecord>(ask(request(Get, ObjectClass::Settings))), settings);
}

TEST_F(ResponderTest, WalksEachListWithItsOwnCursor) {
    site.tapi_locations = {VarText("Lund"), VarText("Örebro")};
    site.ras_entries = {VarText("ISDN")};
    site.scripts = {{VarText("a.scp"), VarText("x")}, {VarText("b.scp"), VarText("y")}};
    EXPECT_EQ(walk(ObjectClass::TapiDevice), std::vector<std::string>{});
    EXPECT_EQ(walk(ObjectClass::RasEntry), std::vector<std::string>{"ISDN"});
    EXPECT_EQ(walk(ObjectClass::ScriptFile), (std::vector<std::string>{"a.scp", "b.scp"}));

    ask(request(Get, ObjectClass::TapiLocation));
    Session other;
    other.is_authenticated = true;
    responder.reply(request(Get, ObjectClass::TapiLocation), other);
    walk(ObjectClass::RasEntry);
    const Comrecord second = ask(request(GetNext, ObjectClass::TapiLocation));
    EXPECT_EQ(recordIn<NameListRecord>(second).name.text(), "Örebro");
}

TEST_F(ResponderTest, DeletesMailByFileAndRecipient) {
    site.outbox = {{VarText("a@x"), VarText("n"), VarText("D.1"), VarText(), 3},
                   {VarText("b@x"), VarText("n"), VarText("D.1"), VarText(), 3}};
    const OutboxRecord second = site.outbox[1];
    // Deleting while the list is walked leaves the walk as it was.
    EXPECT_EQ(recordIn<OutboxRecord>(ask(request(Get, ObjectClass::OutboxMail))), site.outbox[0]);

    const Comrecord remove = requestWith(Delete, ObjectClass::OutboxMail, site.outbox[0]);
    Comrecord reply = ask(remove);
    EXPECT_EQ(reply.Operation, result::Done);
    EXPECT_EQ(reply.RecordNumber, 0);
    EXPECT_EQ(site.outbox, std::vector{second});
    reply = ask(remove);
    EXPECT_EQ(reply.Operation, result::Done);
    EXPECT_EQ(reply.RecordNumber, 1);

    EXPECT_EQ(recordIn<OutboxRecord>(ask(request(GetNext, ObjectClass::OutboxMail))), second);
    EXPECT_EQ(resultOf(request(GetNext, ObjectClass::OutboxMail)), result::EndOfList);
}

TEST_F(ResponderTest, CommandsTheTransport) {
    const auto state = [this] {
        const Comrecord reply = ask(request(Get, ObjectClass::UucpStatus));
        EXPECT_EQ(reply.Operation, result::Done);
        return recordIn<UucpStatusRecord>(reply).state.text();
    };
    site.outbox = {{VarText("a@x"), VarText("malmo"), VarText("D.1"), VarText(), 3}};
    EXPECT_EQ(state(), "Idle");
    EXPECT_EQ(resultOf(requestWith(Add, ObjectClass::UucpCommand, UucpCommandRecord{})),
              result::Refused);
    const Comrecord reply =
        ask(requestWith(Add, ObjectClass::UucpCommand, UucpCommandRecord{kTrue, kFalse}));
    EXPECT_EQ(reply.Operation, result::Done);
    EXPECT_EQ(reply.RecordNumber, 0);
    EXPECT_EQ(state(), "Dialing malmo");
    EXPECT_EQ(
        resultOf(requestWith(Add, ObjectClass::UucpCommand, UucpCommandRecord{kFalse, kTrue})),
        result::Done);
    EXPECT_EQ(state(), "Cancelled");
}

TEST_F(ResponderTest, KeepsScriptsUnderNamesWithoutCase) {
    const auto get = [this](const char* name) {
        const Comrecord reply = ask(
            requestWith(Get, ObjectClass::Script, ScriptRecord{VarText(name), VarText("ignored")}));
        EXPECT_EQ(reply.Operation, result::Done);
        return recordIn<ScriptRecord>(reply);
    };
    EXPECT_EQ(get("ny.scp"), (ScriptRecord{VarText("ny.scp"), VarText()}));

    const auto save = [this](const char* name, const char* text) {
        return resultOf(
            requestWith(Save, ObjectClass::Script, ScriptRecord{VarText(name), VarText(text)}));
    };
    EXPECT_EQ(save("Åre.scp", "one"), result::Done);
    EXPECT_EQ(save("åRE.SCP", "two \r\n  "), result::Done);
    EXPECT_EQ(get("ÅRE.scp"), (ScriptRecord{VarText("Åre.scp"), VarText("two \r\n  ")}));
    EXPECT_EQ(site.scripts.size(), 1U);
    EXPECT_EQ(save("", "x"), result::Refused);
}

} // namespace
} // namespace tollwick::simulator
