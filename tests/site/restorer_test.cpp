// A restore against the stand-in service: a round trip, and a service that ends in the middle.
#include "ctl/restorer.h"
#include "link/configuration.h"
#include "simulator/sample_site.h"
#include "simulator/server_thread.h"
#include "site/differences.h"
#include "tests/link/support/console.h"

#include <gtest/gtest.h>

namespace tollwick {
namespace {

using simulator::Server;

class RestorerTest : public testing::Test {
protected:
    void logIn() {
        console.link.reset();
        console.link.Connect("127.0.0.1", service.port());
        ASSERT_TRUE(waitUntil([this] { return console.link.KeyReceived() != 0; }));
        console.data.user_id = simulator::kSampleUserId;
        console.data.password = simulator::kSamplePassword;
        ASSERT_EQ(console.requests.txAuthenticate(), kAuthenticated);
    }
    // What the service holds, as it tells it.
    Site fetched() {
        logIn();
        Site site;
        std::string cut;
        EXPECT_EQ(console.requests.RetrieveAll(), 0);
        EXPECT_EQ(fetchScripts(console.context, site.scripts, cut), ScriptsOutcome::Fetched);
        site.settings = console.data.settings;
        site.schedules = console.data.schedules;
        site.hosts = console.data.hosts;
        site.is_backup = true;
        return site;
    }
    RestoreOutcome restore(const Site& wanted, const RestoreOptions& options) {
        said.clear();
        Restorer restorer(console.context, fetched(), wanted, options,
                          [this](const std::string& step) { said.push_back(step); });
        const RestoreOutcome outcome = restorer.run();
        left = restorer.stepsLeft();
        return outcome;
    }
    void changeEverything() {
        service.run([](Server& server) {
            Site& site = server.site();
            site.settings.admin_port = 600;
            site.settings.doc_viewer = "other";
            site.scripts[0].text = "other";
            site.hosts[0].mail_domain = "other";
            site.hosts[0].unnamed_2184 = "other";
            site.hosts.erase(site.hosts.begin() + 1);
            site.hosts.back().display_name = "Ny";
            site.schedules[0].at_time = "03:03";
            site.schedules.pop_back();
            site.schedules.push_back(site.schedules[0]);
            site.schedules.back().day = 6;
            site.assignRecordNumbers();
        });
    }
    Site served() {
        return service.run([](Server& server) { return server.site(); });
    }

    simulator::ServerThread service{simulator::sampleSite()};
    Console console;
    Strings said;
    std::size_t left = 0;
};

TEST_F(RestorerTest, MakesTheServiceWhatItWasWithTheStepsThatThisTakes) {
    const Site backup = fetched();
    EXPECT_EQ(restore(backup, {}), RestoreOutcome::Done);
    EXPECT_EQ(said, Strings{}) << "nothing differs";

    changeEverything();
    RestoreOptions options;
    options.is_dry_run = true;
    const Site changed = served();
    EXPECT_EQ(restore(backup, options), RestoreOutcome::Done);
    EXPECT_EQ(said.size(), left);
    EXPECT_TRUE(differencesOf(changed, served()).empty());

    options = {};
    options.deletes = true;
    EXPECT_EQ(restore(backup, options), RestoreOutcome::Done);
    EXPECT_EQ(said,
              (Strings{"Script malmo.scp: save", "Host Malmö huvudkontor: change",
                       "Host " + backup.hosts[1].display_name.text() + ": add",
                       "Host " + backup.hosts[4].display_name.text() + ": add", "Host Ny: remove",
                       said.at(5), said.at(6), said.at(7), "Settings: save"}));
    EXPECT_EQ(left, 0U);
    EXPECT_TRUE(differencesOf(backup, fetched()).empty());
    EXPECT_TRUE(differencesOf(simulator::sampleSite(), served()).empty());
    EXPECT_EQ(served().hosts.size(), backup.hosts.size());
    EXPECT_EQ(served().schedules.size(), backup.schedules.size());
}

TEST_F(RestorerTest, LeavesAloneWhatTheFileLacksAndWhatIsNotAskedFor) {
    Site wanted = fetched();
    wanted.hosts.pop_back();
    wanted.schedules.clear();
    wanted.settings.admin_port = 700;
    RestoreOptions options;
    options.settings = false;
    EXPECT_EQ(restore(wanted, options), RestoreOutcome::Done);
    EXPECT_EQ(said, Strings{});
    EXPECT_EQ(served().settings.admin_port, simulator::sampleSite().settings.admin_port);
}

TEST_F(RestorerTest, GoesOnWhereItHasEnded) {
    const Site backup = fetched();
    changeEverything();
    // The service dies at the second host.
    service.run([](Server& server) {
        server.faults().only_class = ObjectClass::Host;
        server.faults().only_operation = Operation::Add;
        server.faults().deliver = [](QTcpSocket& socket, const Comrecord&, auto&) {
            socket.disconnectFromHost();
        };
    });
    console.expectFailure("Unable to transmit data to the Tollwick Service!");
    RestoreOptions options;
    options.deletes = true;
    EXPECT_EQ(restore(backup, options), RestoreOutcome::LinkFailed);
    const std::size_t left_first = left;
    EXPECT_GT(left_first, 3U);
    service.run([](Server& server) { server.faults() = {}; });
    EXPECT_EQ(restore(backup, options), RestoreOutcome::Done);
    EXPECT_LE(said.size(), left_first) << "what was done is not done again";
    EXPECT_TRUE(differencesOf(backup, fetched()).empty());

    // Settings that the service refuses are told as such.
    Site wanted = backup;
    wanted.settings.admin_port = 700;
    service.run(
        [](Server& server) { server.site().settings_save_answer = result::SettingsAnswer8; });
    EXPECT_EQ(restore(wanted, options), RestoreOutcome::Refused);
    EXPECT_EQ(said, Strings{"Settings: save"});
}

} // namespace
} // namespace tollwick
