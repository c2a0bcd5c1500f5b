#include "client.h"
#include "simulator/responder.h"
#include "simulator/sample_site.h"

#include <gtest/gtest.h>

namespace tollwick::simulator {
namespace {

using namespace std::chrono_literals;
using enum Operation;
using Class = ObjectClass;

class ResponderTest : public testing::Test {
protected:
    ResponderTest() { session.is_authenticated = true; }

    Comrecord ask(const Comrecord& what) { return responder.reply(what, session); }
    Integer resultOf(const Comrecord& what) { return ask(what).Operation; }
    Integer resultOf(Operation operation, Class object_class, Long number = 0) {
        return resultOf(request(operation, object_class, number));
    }
    void addMail(const char* recipient, const char* node, const char* file, Long size) {
        site.outbox.push_back({VarText(recipient), VarText(node), VarText(file), VarText(), size});
    }
    std::string stateAfter(std::chrono::milliseconds time) {
        now += time;
        transport.advance();
        return transport.status().state.text();
    }

    Site site;
    std::chrono::milliseconds now{1000};
    Transport transport{site, [this] { return now; }};
    int changes = 0;
    Responder responder{site, transport, [this] { ++changes; }};
    Session session;
};

TEST_F(ResponderTest, RefusesWhatItDoesNotKnow) {
    for (const int operation : {0, 50, -1, 32767})
        for (const int object_class : {0, 10, 110, 160, -1})
            EXPECT_EQ(resultOf(Operation(operation), Class(object_class)), result::Refused)
                << operation << '/' << object_class;
    EXPECT_EQ(resultOf(GetNext, Class::Host), result::Refused);
    EXPECT_EQ(changes, 0);
}

TEST_F(ResponderTest, DeliversRecordsFromTheirNumberOnAndMarksThemAsStored) {
    site.schedules.emplace_back().record_number = 5;
    ScheduleRecord schedule;
    schedule.identity = kTrue;
    schedule = recordIn<ScheduleRecord>(ask(requestWith(Add, Class::Schedule, schedule)));
    EXPECT_EQ(schedule.identity, 1);
    schedule.day = 4;
    const Comrecord save = requestWith(Save, Class::Schedule, schedule);
    EXPECT_EQ(recordIn<ScheduleRecord>(ask(save)), schedule);
    EXPECT_EQ(ask(request(Get, Class::Schedule, 1)).RecordNumber, 5);
    EXPECT_EQ(recordIn<ScheduleRecord>(ask(request(Get, Class::Schedule, 6))), schedule);
    EXPECT_EQ(resultOf(Get, Class::Schedule, 7), result::EndOfList);
    EXPECT_EQ(resultOf(Delete, Class::Schedule, 6), result::Done);
    EXPECT_EQ(resultOf(Delete, Class::Schedule, 6), result::Refused);
    EXPECT_EQ(resultOf(save), result::Refused);
    EXPECT_EQ(changes, 3);

    for (const Integer wanted : std::initializer_list<Integer>{1, 2, 8, 9}) {
        SettingsRecord settings;
        settings.admin_port = site.settings_save_answer = wanted;
        EXPECT_EQ(resultOf(requestWith(Save, Class::Settings, settings)), wanted);
        EXPECT_EQ(site.settings == settings, wanted != result::Refused) << wanted;
    }
}

TEST_F(ResponderTest, WalksEachListWithItsOwnCursorAndDeletesMail) {
    site.tapi_locations = {VarText("Lund"), VarText("Örebro")};
    Session other;
    other.is_authenticated = true;
    for (Session* each : {&session, &other})
        responder.reply(request(Get, Class::TapiLocation), *each);
    addMail("a@x", "n", "D.1", 3);
    addMail("b@x", "n", "D.1", 3);
    const std::vector<OutboxRecord> mail = site.outbox;
    EXPECT_EQ(recordIn<OutboxRecord>(ask(request(Get, Class::OutboxMail))), mail[0]);
    for (const Long number : {0, 1}) // it is there only once
        EXPECT_EQ(ask(requestWith(Delete, Class::OutboxMail, mail[0])).RecordNumber, number);
    // Deleting while the list is walked leaves the walk as it was.
    EXPECT_EQ(recordIn<OutboxRecord>(ask(request(GetNext, Class::OutboxMail))), mail[1]);
    EXPECT_EQ(resultOf(GetNext, Class::OutboxMail), result::EndOfList);
    EXPECT_EQ(recordIn<NameListRecord>(ask(request(GetNext, Class::TapiLocation))).name.text(),
              "Örebro");
}

TEST_F(ResponderTest, KeepsScriptsUnderNamesWithoutCase) {
    const auto with = [&](Operation operation, const char* name, const char* text) {
        return ask(
            requestWith(operation, Class::Script, ScriptRecord{VarText(name), VarText(text)}));
    };
    with(Save, "Åre.scp", "one");
    with(Save, "åRE.SCP", "two \r\n  ");
    EXPECT_EQ(recordIn<ScriptRecord>(with(Get, "ÅRE.scp", "ignored")),
              (ScriptRecord{VarText("Åre.scp"), VarText("two \r\n  ")}));
    EXPECT_EQ(site.scripts.size(), 1U);
    EXPECT_EQ(with(Save, "", "x").Operation, result::Refused);
}

TEST_F(ResponderTest, CommandsATransferThatEmptiesTheOutbox) {
    const auto command = [&](Integer start, Integer cancel) {
        return resultOf(requestWith(Add, Class::UucpCommand, UucpCommandRecord{start, cancel}));
    };
    EXPECT_EQ(command(kFalse, kFalse), result::Refused);
    EXPECT_EQ(command(kTrue, kFalse), result::Done);
    EXPECT_EQ(stateAfter(0ms), "No mail to send");
    EXPECT_EQ(stateAfter(3s), "Idle");
    for (const auto& [node, active] : {std::pair{"malmo", kTrue}, {"are", kFalse}}) {
        HostRecord& host = site.hosts.emplace_back();
        host.remote_uucp_name = node;
        host.active = active;
        addMail("a@x", node, "D.1", 3);
    }
    addMail("a@x", "malmo", "D.4", 100);
    command(kTrue, kFalse);
    EXPECT_EQ(stateAfter(2500ms), "Logging in");
    EXPECT_EQ(stateAfter(800ms), "Sending");
    // 3000 bytes of 10 bits at 97 hundredths of 33600 bits per second
    EXPECT_EQ(stateAfter(919ms), "Sending");
    EXPECT_EQ(recordIn<UucpStatusRecord>(ask(request(Get, Class::UucpStatus))).percent, 99);
    now += 1h; // a clock that jumps passes through everything that is left
    EXPECT_TRUE(transport.advance());
    EXPECT_EQ(site.outbox.size(), 1U) << "the host of this one is not activated";
    EXPECT_FALSE(transport.isActive());
}

} // namespace
} // namespace tollwick::simulator
