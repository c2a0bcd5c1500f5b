// Logging in, from the connection settings to the data of the service.
#include "link/login_sequence.h"
#include "tests/link/support/console.h"
#include "tests/support/test_log.h"

#include <QElapsedTimer>
#include <gtest/gtest.h>

namespace tollwick {
namespace {

using script::Acts;
using script::answer;

const std::string kAuthenticate =
    "70/120 number 0 length 8 data 050061646d696e0600736563726574"; // "admin", "secret"

class LoginTest : public testing::Test {
protected:
    LoginTest() {
        console.data.user_id = "admin";
        console.data.password = "secret";
        connection.ServerConnectIp = "127.0.0.1";
    }
    LoginOutcome run(const ScriptedPeer& peer) {
        connection.ServerConnectPort = std::to_string(peer.port());
        return sequence.run();
    }

    TestLog log;
    ConnectionSettings connection;
    Console console;
    LoginSequence sequence{console.context, connection};
};

TEST_F(LoginTest, AcceptedFetchesEverythingInOrder) {
    SettingsRecord settings;
    settings.service_version = 4;
    HostRecord host;
    host.display_name = "Malmö";
    host.mail_limit = 1; // the blanks before it are sent
    const ScriptedPeer peer(std::vector<std::vector<Acts>>{
        {{script::send("no key")}},
        {script::kGreeting, answer(1, kAuthenticated), answer(script::recordWith(settings)),
         answer(3), answer(script::recordWith(host, 1)), answer(3), answer(3)}});
    EXPECT_EQ(run(peer), LoginOutcome::LoggedIn);
    EXPECT_TRUE(console.link.isOpen());
    std::string requests;
    for (const std::string& request : peer.requests())
        requests += request.substr(0, request.find(" number")) + ' ';
    EXPECT_EQ(peer.requests()[0], kAuthenticate);
    EXPECT_EQ(requests, "70/120 50/40 50/30 50/20 50/20 50/130 ");
    EXPECT_EQ(console.progress.infos,
              (Strings{"Connecting...", "Connecting...", "Connected...", "Retrieving settings...",
                       "Retrieving schedules...", "Retrieving hosts...",
                       "Retrieving outbox contents...", "Ready"}));
    EXPECT_EQ(console.data.settings, settings);
    EXPECT_EQ(console.data.hosts, std::vector{host});
}

TEST_F(LoginTest, FetchingStopsAtTheFirstFailure) {
    console.data.hosts.resize(7); // which an earlier session has left
    console.data.outbox.resize(7);
    const ScriptedPeer peer({answer(1, kAuthenticated), answer(1), answer(1), answer(2)});
    console.expectFailure("Unable to retrieve schedules from the Tollwick Service!");
    EXPECT_EQ(run(peer), LoginOutcome::LoggedIn);
    EXPECT_FALSE(console.link.isOpen());
    EXPECT_EQ(peer.requests().size(), 4U);
    EXPECT_EQ(console.data.schedules.size(), 1U);
    EXPECT_EQ(console.data.hosts.size() + console.data.outbox.size(), 0U);
    EXPECT_EQ(console.progress.infos.back(), "Connection closed.");
}

TEST_F(LoginTest, WithoutAKeyConnectsThreeMoreTimesAndGivesUp) {
    const std::string key(ScriptedPeer::kKey);
    const ScriptedPeer peer(std::vector<std::vector<Acts>>{{{script::send(key.substr(1))}},
                                                           {{script::send(key + "!")}},
                                                           {{script::close}},
                                                           {{script::send("Hello\r\n")}}});
    console.prompter.expectBeep();
    console.prompter.expectBox(BoxIcon::Exclamation,
                               "Unable to initialize communication link to Tollwick service!");
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(run(peer), LoginOutcome::NoKey);
    EXPECT_LT(timer.elapsed(), 10'000); // none of them is worth the 10 seconds that a key may take
    EXPECT_EQ(peer.connections(), 4U);
    EXPECT_TRUE(peer.requests().empty());
    EXPECT_FALSE(console.link.isOpen());
    EXPECT_EQ(console.progress.infos,
              (Strings{"Connecting...", "Connecting...", "Connecting...", "Connecting...", ""}));
}

TEST_F(LoginTest, WithoutAConnectionSaysWhy) {
    const int unused_port = ScriptedPeer(std::vector<Acts>{}).port();
    for (const std::string& port :
         {std::to_string(unused_port), std::string("abc"), std::string(), std::string("99999")}) {
        SCOPED_TRACE(port);
        console.progress.infos.clear();
        connection.ServerConnectPort = port;
        console.prompter.expectBox(
            BoxIcon::Exclamation,
            std::string("Unable to connect to the Tollwick service.\r\nCause: (") +
                (port == std::to_string(unused_port) ? "10061) Connection refused"
                                                     : "10049) Invalid address or port number"));
        EXPECT_EQ(sequence.run(), LoginOutcome::NotConnected);
        EXPECT_TRUE(console.prompter.done());
        EXPECT_FALSE(console.link.isOpen());
        EXPECT_EQ(console.progress.infos, (Strings{"Connecting...", ""}));
    }
}

} // namespace
} // namespace tollwick
