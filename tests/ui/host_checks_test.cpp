#include "tests/ui/support/host_setup_test.h"

#include <QApplication>
#include <QCheckBox>

namespace tollwick {
namespace {

using simulator::Server;

constexpr auto kExclamation = QMessageBox::Warning;
constexpr auto kCritical = QMessageBox::Critical;
constexpr auto kYes = QMessageBox::Yes;
constexpr auto kNo = QMessageBox::No;

constexpr const char* kShare =
    "The selected 'RemoteHostname' is used by another host/domain setup! Do you want them to "
    "share the same spool directory?";
constexpr const char* kRename =
    "You have changed the 'Remote hostname'. This will\n\\                  \n"
    "result in that the previous directory with its spoolfiles\n"
    "will be removed. Do you wish to continue?";
constexpr const char* kFailSave =
    "Unable to transmit data to the Tollwick Service!\nThe connection is terminated!";
constexpr const char* kFailScript =
    "Unable to save script to the Tollwick Service!\nThe connection is terminated!";

class HostChecksTest : public HostSetupTest {
protected:
    static std::string refusedAs(const char* what) {
        return std::string("Unable to ") + what +
               " the Tollwick Service!\nThe connection is terminated!";
    }
    [[nodiscard]] std::vector<HostRecord>& hosts() { return context().data.hosts; }
};

TEST_F(HostChecksTest, WhatIsRefusedIsToldAndGetsTheFocus) {
    change(2, [](HostRecord& host) { host.default_domain = 1; });
    const struct {
        const char* field;
        const char* text; // nullptr: a click
        QMessageBox::Icon icon;
        const char* message;
        Page page;
    } cases[] = {
        {"HostSetupNameTxt", "  ", kCritical, "You must enter a 'setup' name for this host!",
         General},
        {"HostSetupNameTxt", " STOCKHOLM ", kCritical,
         "The selected 'Host setup name' is already used. Select a different name!", General},
        {"MailDomainTxt", "", kCritical, "You must enter a 'Maildomain' for this host!", General},
        {"RemoteHostNameTxt", "", kCritical, "You must enter a 'Remote hostname' for this setup!",
         Login},
        {"DefaultDomainCheck", nullptr, kExclamation,
         "There is already a default domain registered!", General},
        {"UucpTimeoutTxt", "1.5", kExclamation,
         "UUCP timeout must be at least 2 seconds.\nRecommended setting is 12 for 'g' protocol\n"
         "and 40 seconds for protocol 't' and 'e'",
         Login},
        {"ScripFileNameTxt", "c:login.scp", kCritical,
         "Script filename may not contain directory or drive information!", LoginScript},
        {"ScripFileNameTxt", "sub\\login.scp", kCritical,
         "Script filename may not contain directory or drive information!", LoginScript},
        {"ScripFileNameTxt", "a/b.scp", kCritical, "Illegal filename!", LoginScript},
        {"ScripFileNameTxt", "\"a\".scp", kCritical, "Illegal filename!", LoginScript},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.message);
        editHost(1, [&] {
            c.text ? enter(c.field, c.text) : click(c.field);
            const std::string before = textOf(c.field);
            if (std::string_view(c.field) != "HostSetupNameTxt")
                showPage(Connection);
            boxes.expectBox(c.icon, c.message, [](QMessageBox&) {
                EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::ArrowCursor);
            });
            ok();
            EXPECT_FALSE(QApplication::overrideCursor());
            EXPECT_TRUE(form().isVisible());
            EXPECT_EQ(page(), c.page);
            EXPECT_EQ(form().focusWidget()->objectName(), c.field);
            EXPECT_EQ(textOf(c.field), before);
            if (!c.text) {
                EXPECT_TRUE(control<QCheckBox>(c.field)->isChecked());
            }
            cancel();
        });
    }
    EXPECT_EQ(saves(), 0);
    EXPECT_EQ(hosts(), site().hosts);
}

TEST_F(HostChecksTest, ANumberPast16BitsIsLoggedAndNothingIsSent) {
    editHost(0, [&] {
        const std::size_t lines = logged().size();
        for (const char* field : {"tbMailLimit", "CallRetriesTxt", "RetryTimeTxt"}) {
            enter(field, "32768");
            ok();
            enter(field, "32767");
        }
        enter("TimeoutTxt", "2147483648");
        press(Qt::Key_Return);
        EXPECT_TRUE(form().isVisible());
        ASSERT_EQ(logged().size(), lines + 4);
        EXPECT_TRUE(logged().back().starts_with("Loop->Overflow ; (6/80")) << logged().back();
        EXPECT_EQ(saves(), 0);
        EXPECT_FALSE(QApplication::overrideCursor());
        enter("TimeoutTxt", "2147483647");
        ok();
    });
    EXPECT_EQ(siteHost(0).dial_timeout, 2147483647);
    EXPECT_EQ(siteHost(0).call_retries, 32767);
}

TEST_F(HostChecksTest, ALongHostLookupIsCutWithAWarning) {
    boxes.expectBox(kExclamation,
                    "Host lookup timeout cannot handle larger values then\n\\               \n"
                    "30 seconds. Setting will be changed to 30 sec!",
                    [this](QMessageBox&) { EXPECT_EQ(saves(), 0); });
    editHost(1, [&] {
        enter("HostLupTm", "99999");
        ok();
    });
    EXPECT_EQ(siteHost(1).host_lookup_timeout, 30);
}

TEST_F(HostChecksTest, ANewHostMayShareTheDirectory) {
    for (const auto answer : {kNo, kYes}) {
        questions.expect(kShare, kNo, answer);
        addHost([&] {
            enterNames(answer == kYes ? "Två" : "Ett", " ny.example ", "corvale");
            ok();
        });
        EXPECT_EQ(site().hosts.back().spool_directory.text(),
                  answer == kYes ? "corvale" : "ny.example-corvale");
    }
    EXPECT_EQ(saves(), 2);
    EXPECT_EQ(list().model()->rowCount(), 7);
}

// A host in Malmö that is renamed from node "malmo": what is asked, and what comes of it.
struct Renaming {
    const char* name;
    bool is_shared; // another host has the old name for its local one
    const char* node;
    std::vector<std::pair<const char*, QMessageBox::StandardButton>> answers;
    const char* directory; // nullptr: not saved
    bool is_removed;
};

const Renaming kRenamings[] = {
    {"Stopped", false, "lund", {{kRename, kNo}}, nullptr, false},
    {"ToANewName", false, "lund", {{kRename, kYes}}, "lund", true},
    {"ToASharedName", false, "corvale", {{kRename, kYes}, {kShare, kYes}}, "corvale", true},
    {"ToADirectoryOfItsOwn",
     false,
     "corvale",
     {{kRename, kYes}, {kShare, kNo}},
     "Malmö huvudkontor-corvale",
     true},
    {"FromASharedName", true, "lund", {}, "lund", false},
    {"FromASharedToASharedName", true, "corvale", {{kShare, kYes}}, "corvale", false},
    {"FromASharedNameToADirectoryOfItsOwn",
     true,
     "corvale",
     {{kShare, kNo}},
     "Malmö huvudkontor-corvale",
     false},
};

class RenamingTest : public HostChecksTest, public testing::WithParamInterface<Renaming> {};

TEST_P(RenamingTest, MovesTheSpoolDirectory) {
    const Renaming& renaming = GetParam();
    change(0, [](HostRecord& host) {
        host.script_file_name = "";
        host.spool_directory = " malmo mail";
    });
    onServer([](Server& s) { s.site().spool_directories[0] = "malmo mail"; });
    if (renaming.is_shared)
        change(4, [](HostRecord& host) { host.local_uucp_name = "malmo"; });
    for (const auto& [question, answer] : renaming.answers)
        questions.expect(question, question == kRename ? kNo : kYes, answer);
    const HostRecord before = siteHost(0);
    editHost(0, [&] {
        enter("RemoteHostNameTxt", renaming.node);
        ok();
        if (renaming.directory)
            return;
        EXPECT_TRUE(form().isVisible());
        EXPECT_EQ(info(), "Ready");
        cancel();
    });
    const Lines left = directories();
    EXPECT_EQ(std::count(left.begin(), left.end(), "malmo mail"), renaming.is_removed ? 0 : 1);
    EXPECT_EQ(requestCount(ObjectClass::HostDirectory), renaming.is_removed ? 1 : 0);
    if (!renaming.directory) {
        EXPECT_EQ(saves(), 0);
        EXPECT_EQ(hosts()[0], before);
        return;
    }
    HostBytes expected(bytesOf(before));
    expected.text(6, 512, renaming.directory).text(702, 30, renaming.node);
    EXPECT_EQ(differences(bytesOf(siteHost(0)), expected), "");
    EXPECT_EQ(std::count(left.begin(), left.end(), renaming.directory), 1);
}

INSTANTIATE_TEST_SUITE_P(, RenamingTest, testing::ValuesIn(kRenamings),
                         [](const auto& test) { return test.param.name; });

TEST_F(HostChecksTest, AFailedFetchLeavesADialogThatCannotSave) {
    const std::pair<ObjectClass, const char*> fetches[] = {
        {ObjectClass::Script, "retrieve Script from"},
        {ObjectClass::TapiDevice, "retrieve Tapi Devices from"},
        {ObjectClass::TapiLocation, "retrieve Tapi locations from"},
        {ObjectClass::RasEntry, "retrieve RAS-entries from"},
    };
    for (std::size_t i = 0; i < std::size(fetches); ++i)
        for (const Failure failure : kFailures) {
            SCOPED_TRACE(fetches[i].second);
            onServer([](Server& s) {
                s.faults() = {};
                s.forgetRequests();
            });
            logIn();
            failingAt(failure, fetches[i].first, refusedAs(fetches[i].second), [&] {
                editHost(0, [&] {
                    EXPECT_FALSE(context().link.isOpen());
                    for (std::size_t later = i + 1; later < std::size(fetches); ++later)
                        EXPECT_EQ(requestCount(fetches[later].first), 0);
                    EXPECT_TRUE(isLoggedOut());
                    EXPECT_EQ(textOf("HostSetupNameTxt"), "Malmö huvudkontor");
                    showPage(Connection);
                    EXPECT_EQ(textOf("tbHostSetupName3"), "Malmö huvudkontor");
                    boxes.expectBox(kCritical, kFailScript);
                    ok();
                });
            });
            EXPECT_EQ(saves(), 0);
            EXPECT_TRUE(isLoggedOut());
        }
}

TEST_F(HostChecksTest, AFailedSaveClosesTheDialog) {
    const struct {
        ObjectClass object_class;
        std::string message;
        int saves;
    } steps[] = {
        {ObjectClass::Script, kFailScript, 1},
        {ObjectClass::HostDirectory, refusedAs("delete hostdirectory through"), 2},
        {ObjectClass::Host, kFailSave, 3},
    };
    const simulator::Site unchanged = site();
    for (const auto& step : steps)
        for (const Failure failure : kFailures) {
            SCOPED_TRACE(step.message + std::to_string(static_cast<int>(failure)));
            onServer([&](Server& s) {
                s.faults() = {};
                s.site() = unchanged;
                s.forgetRequests();
            });
            logIn();
            const std::vector<HostRecord> before = hosts();
            editHost(0, [&] {
                enter("MailDomainTxt", "ny.example");
                enter("RemoteHostNameTxt", "lund");
                if (step.object_class != ObjectClass::Script)
                    questions.expect(kRename, kNo, kYes);
                failingAt(failure, step.object_class, step.message, [this] { ok(); });
                EXPECT_FALSE(form().isVisible());
            });
            EXPECT_EQ(saves(), step.saves) << "nothing after the failure";
            EXPECT_EQ(hosts(), before);
            EXPECT_FALSE(QApplication::overrideCursor());
            EXPECT_TRUE(isLoggedOut());
        }
}

TEST_F(HostChecksTest, ANewHostThatIsRefusedJoinsNoList) {
    addHost([&] {
        enterNames("New", "new.example", "new");
        failing(Failure::Refused, ObjectClass::Host, kFailSave, [this] { ok(); });
    });
    EXPECT_EQ(hosts().size(), 5U);
    EXPECT_TRUE(isLoggedOut());
}

TEST_F(HostChecksTest, AConnectionLostBehindTheDialogFailsTheSave) {
    editHost(2, [&] {
        onServer([](Server& s) { s.closeConnections(); });
        EXPECT_TRUE(isLoggedOut());
        boxes.expectBox(kCritical, kFailSave);
        ok();
    });
    EXPECT_EQ(saves(), 0);
    EXPECT_TRUE(boxes.done());
}

TEST_F(HostChecksTest, SpeakSwedish) {
    set(setting::CountryCode, "4000");
    questions.expect("Du har ändrat fjärrvärdens nodnamn. Det medför att\n"
                     "den tidigare katalogen med sina spoolfiler\n"
                     "tas bort. Vill du fortsätta?",
                     kNo, kYes);
    editHost(2, [&] {
        boxes.expectBox(kExclamation, "Tidsgränsen för UUCP måste vara minst 2 sekunder.\n"
                                      "Rekommenderad inställning är 12 sekunder för protokoll 'g'\n"
                                      "och 40 sekunder för protokoll 't' och 'e'");
        enter("UucpTimeoutTxt", "");
        ok();
        enter("UucpTimeoutTxt", "40");
        enter("RemoteHostNameTxt", "solna");
        // A refused save is told in English in every language.
        failing(Failure::Refused, ObjectClass::Host, kFailSave, [this] { ok(); });
    });
    EXPECT_TRUE(isLoggedOut());
}

} // namespace
} // namespace tollwick
