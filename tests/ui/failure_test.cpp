#include "tests/ui/support/console_test.h"

namespace tollwick {
namespace {

constexpr const char* kSettings =
    "Unable to transfer new settings to the Tollwick Service!\nThe connection is terminated!";
constexpr const char* kSchedule =
    "Unable to transmit data to the Tollwick Service!\nThe connection is terminated!";

// Something to save, and what the list shows of it until the next tick when that failed.
struct Attempt {
    const char* name;
    const char* node;
    int row;
    const char* command;
    const char* keys; // nullptr: there is no dialog
    ObjectClass object_class;
    const char* message;
    const char* left;
};

// clang-format off
const Attempt kAttempts[] = {
    {"IpNumber", "smtpserver", 0, "PropertiesMenu", " 127.0.0.1\n", ObjectClass::Settings, kSettings,
     "SmtpServiceIp netadress SMTP service address:|127.0.0.1"},
    {"Port", "smtpforward", 1, "PropertiesMenu", "80\n", ObjectClass::Settings, kSettings,
     "smtpforwardport portin SMTP forward to port:|80"},
    {"Switch", "logs", 3, "Toggmenu", nullptr, ObjectClass::Settings, kSettings,
     "scriptlogging squareselected Script logging|7"},
    {"LogPeriod", "logs", 3, "PropertiesMenu", "8\n", ObjectClass::Settings, kSettings,
     "scriptlogging square Script logging|8"},
    {"NewSchedule", "schedule", 2, "AddMenu", "\t\t\t8:8\t9:9\n", ObjectClass::Schedule, kSchedule,
     "setting schedule Weekdays|Every: 15 min|08:00 - 17:00|5"},
    {"Schedule", "schedule", 2, "PropertiesMenu", "s\n", ObjectClass::Schedule, kSchedule,
     "setting schedule Weekdays|Every: 15 min|08:00 - 17:00|5"},
};
// clang-format on

class FailureTest : public ConsoleTest, public testing::WithParamInterface<Attempt> {};

TEST_P(FailureTest, EndsTheConnection) {
    const Attempt& attempt = GetParam();
    for (const Failure failure : kFailures) {
        if (!attempt.keys && failure == Failure::ConnectionLostBefore)
            continue;
        SCOPED_TRACE(static_cast<int>(failure));
        restore();
        logIn();
        select(attempt.node, attempt.row);
        stopTimer();
        const Lines rows = listed();
        const std::vector<ScheduleRecord> schedules = context().data.schedules;
        if (attempt.name == std::string("IpNumber"))
            boxes.expectBox(kExclamation,
                            "The Tollwick service need to restarted for the IP-number "
                            "change to take effect!");
        const auto fail = [&](const Work& save) {
            failing(failure, attempt.object_class, attempt.message, save);
        };
        const bool is_lost_before = failure == Failure::ConnectionLostBefore;
        const Act enter = [&](QDialog&) {
            is_lost_before ? fail([&] { type(attempt.keys); }) : type(attempt.keys);
        };
        const Work save = [&] {
            attempt.keys ? inDialog([&] { trigger(attempt.command); }, enter)
                         : trigger(attempt.command);
        };
        is_lost_before ? save() : fail(save);
        EXPECT_FALSE(context().link.isOpen());
        EXPECT_EQ(listed().size(), rows.size());
        EXPECT_EQ(rowText(attempt.row), attempt.left);
        EXPECT_EQ(context().data.schedules, schedules);
        EXPECT_EQ(saves(), failure == Failure::ConnectionLostBefore ? 0 : 1);
        EXPECT_TRUE(boxes.done());
        tick();
        EXPECT_TRUE(isLoggedOut());
        window().menuTimer()->start();
    }
    restore();
    logIn();
    EXPECT_EQ(context().data.settings, site().settings) << "as if nothing had been entered";
}

INSTANTIATE_TEST_SUITE_P(, FailureTest, testing::ValuesIn(kAttempts),
                         [](const auto& test) { return test.param.name; });

} // namespace
} // namespace tollwick
