// Long runs leave nothing behind: no memory, no handle, no timer. And no password.
#include "base/files.h"
#include "link/login_sequence.h"
#include "tests/ui/support/console_test.h"

#include <filesystem>
#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace tollwick {
namespace {

constexpr std::size_t kBytesOfGrowth = 200'000; // allocators and caches settle within this

struct Use {
    std::size_t bytes = 0;
    std::size_t handles = 0;
    qsizetype objects = 0; // timers among them
};

class SoakTest : public ConsoleTest {
protected:
    Use use() {
        // Records that the service keeps of its requests are not the console's.
        onServer([](simulator::Server& server) { server.forgetRequests(); });
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        Use now;
#ifdef __GLIBC__
        now.bytes = mallinfo2().uordblks;
#endif
#ifdef __linux__
        for ([[maybe_unused]] const auto& handle :
             std::filesystem::directory_iterator("/proc/self/fd"))
            ++now.handles;
#endif
        now.objects = window().findChildren<QObject*>().size() +
                      context().link.findChildren<QObject*>().size();
        return now;
    }
    // `work` does it this many times; the first of them fill the caches.
    void expectNoGrowth(int warm_up, int times, const std::function<void(int)>& work) {
        work(warm_up);
        const Use before = use();
        work(times);
        const Use after = use();
        EXPECT_LT(after.bytes, before.bytes + kBytesOfGrowth);
        EXPECT_EQ(after.handles, before.handles);
        EXPECT_EQ(after.objects, before.objects);
    }
};

TEST_F(SoakTest, TenThousandPollsLeaveNothing) {
    logIn();
    stopTimer();
    clickNode("uucpmonitor");
    expectNoGrowth(1000, 10'000, [this](int times) { // the graph's span is reached, too
        for (int i = 0; i < times; ++i) {
            while (!context().link.isWaiting())
                tick();
            while (context().link.isWaiting())
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            ASSERT_TRUE(context().link.isOpen());
            if (i % 500 == 0)
                onServer([](simulator::Server& server) { server.forgetRequests(); });
        }
    });
}

TEST_F(SoakTest, FiveHundredLoginsLeaveNothing) {
    onServer([](simulator::Server& server) { // one record of each kind: logins are quicker then
        server.site().schedules.resize(1);
        server.site().hosts.resize(1);
        server.site().outbox.resize(1);
    });
    ASSERT_TRUE(start());
    ConsoleContext& parts = context();
    parts.data.user_id = simulator::kSampleUserId;
    parts.data.password = simulator::kSamplePassword;
    expectNoGrowth(20, 500, [&](int times) {
        for (int i = 0; i < times; ++i) {
            ASSERT_EQ(LoginSequence(parts, parts.connection).run(), LoginOutcome::LoggedIn);
            tick();
            window().tree()->build(parts.link.host(), parts.texts);
            clickNode("outbox");
            window().logOff();
            tick();
        }
        ASSERT_TRUE(waitUntil([this] {
            return onServer([](simulator::Server& server) { return server.connectionCount(); }) ==
                   0;
        }));
    });
}

TEST_F(SoakTest, NoPasswordIsLeftAnywhere) {
    const std::string wrong = "hemligt-1234";
    ASSERT_TRUE(start());
    boxes.expectBox(kCritical, Text::AuthenticationFailure);
    inDialog("LoginMenu", [&](QDialog& login) {
        type(wrong + '\n');
        for (QWidget* top : QApplication::topLevelWidgets())
            EXPECT_EQ(top->windowTitle().indexOf(wrong.c_str()), -1);
        login.reject();
    });
    logIn();
    select("uucphosts", 1);
    inDialog("PropertiesMenu", typing("\x1b"));
    window().exitProgram();
    std::vector<std::string> left = system_log.entries;
    for (const auto& [key, value] : store.values)
        left.push_back(value);
    for (const auto& file : std::filesystem::recursive_directory_iterator(toPath(folder.text())))
        left.push_back(readWholeFile(file.path(), 10'000'000).value_or(""));
    for (const std::string& text : left)
        EXPECT_TRUE(text.find(wrong) == std::string::npos &&
                    text.find("fiskmås") == std::string::npos)
            << text;
}

} // namespace
} // namespace tollwick
