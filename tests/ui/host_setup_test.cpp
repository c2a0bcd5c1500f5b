#include "tests/ui/support/host_setup_test.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QSet>

namespace tollwick {
namespace {

using simulator::Server;

constexpr const char* kShare =
    "The selected 'RemoteHostname' is used by another host/domain setup! Do you want them to "
    "share the same spool directory?";
constexpr const char* kRename =
    "You have changed the 'Remote hostname'. This will\n\\                  \n"
    "result in that the previous directory with its spoolfiles\n"
    "will be removed. Do you wish to continue?";
constexpr const char* kFailSave =
    "Unable to transmit data to the Tollwick Service!\nThe connection is terminated!";

std::string unable(const std::string& what) {
    return "Unable to " + what + " the Tollwick Service!\nThe connection is terminated!";
}

TEST_F(HostSetupTest, ShowsAHost) {
    editHost(0, [&] {
        EXPECT_EQ(focused(), "HostSetupNameTxt");
        // All captions and entries, as the controls were made.
        std::string shown;
        for (const auto* widget : form().findChildren<QWidget*>())
            if (const std::string name = widget->objectName().toStdString();
                !name.empty() && !name.starts_with("qt_") && name != "ScriptBox")
                if (const std::string its_text = text(name.c_str()); !its_text.empty())
                    shown += its_text + '|';
        EXPECT_EQ(shown,
                  "Location and devices:|Select location:|Kontoret i Lund|Location...|"
                  "Connect using:|Standard 33600 bps Modem|&Device...|Modem settings:|"
                  "Current modem:|None|&Modem...|Comport:|COM2:|Data bits:|8|Connectspeed:|57600|"
                  "Stop bits:|1|Parity:|None|Modem initialization:|AT&F1|Internet UUCP host:|"
                  "Host to connect to:|UUCP - port:|540|Timeout:|15|Sec|Remote access entry:|"
                  "Username:|Password:|Do not use active connection|Script filename:|malmo.scp|...|"
                  "Pre login:|Login name:|växel|Password:|smörgås|UUCP node names:|"
                  "Local UUCP nodname:|corvale|Remote UUCP nodname:|malmo|UUCP login:|"
                  "Uucp login name:|ucorvale|Uucp password:|nattpost|Uucp settings:|Protocol:|g|"
                  "Packet size:|64|Timeout:|12|Sec|Windows:|7|UUCP transport:|Only scheduled|"
                  "Scheduled and when|5|mail is in queue|Deliver by:|Modem|Do not use TAPI|"
                  "TCP/IP via RAS|Use clean TCP/IP connection|Dial entry:|Phone no:|040-123456|"
                  "Call retries:|3|Retry time:|5|Dial timeout:|60|Sec|Display name:|"
                  "Malmö huvudkontor|Mail domain:|malmo.corvale.example|UUCP transport activated|"
                  "Primary domain|&Ok|Cancel|");
        EXPECT_EQ(form().windowTitle(), "Edit host");
        EXPECT_EQ(control<QTabWidget>("SysSetupTab")->tabText(LoginScript), "Login &script");
        for (const char* name :
             {"ActiveHostCheck", "DefaultDomainCheck", "obMailTransport1", "ConnectUsingOption0"})
            EXPECT_TRUE(control<QAbstractButton>(name)->isChecked()) << name;
        for (const char* name : {"PasswordTxt", "UucpPasswordTxt", "RasPasswordTxt"})
            EXPECT_EQ(control<QLineEdit>(name)->echoMode(), QLineEdit::Password) << name;
        for (const char* name : {"LocationButton", "DeviceButton"})
            EXPECT_FALSE(control(name)->isEnabled()) << name;
        press(Qt::Key_Escape);
    });
}

TEST_F(HostSetupTest, SpeaksSwedish) {
    set(setting::CountryCode, "4000");
    editHost(2, [&] {
        EXPECT_EQ(form().windowTitle(), "Redigera värd");
        EXPECT_EQ(text("ParityLbx"), "Ingen");
        EXPECT_EQ(text("UucpSettingFrameCap"), "UUCP-inställningar:");
        // No letter serves twice, and every control that is worked can be read out.
        QString letters;
        auto* tabs = control<QTabWidget>("SysSetupTab");
        for (int i = 0; i < tabs->count(); ++i)
            letters += tabs->tabText(i).section('&', 1).left(1).toUpper();
        for (const auto* button : form().findChildren<QAbstractButton*>())
            letters += button->text().section('&', 1).left(1).toUpper();
        EXPECT_EQ(QSet<QChar>(letters.begin(), letters.end()).size(), letters.size());
        EXPECT_EQ(letters.size(), 8);
        for (const char* name : {"BläddraButton", "ScriptBox", "tbMailLimit"})
            EXPECT_FALSE(control(name)->accessibleName().isEmpty()) << name;
        boxes.expectBox(kExclamation, "Tidsgränsen för UUCP måste vara minst 2 sekunder.\n"
                                      "Rekommenderad inställning är 12 sekunder för protokoll 'g'\n"
                                      "och 40 sekunder för protokoll 't' och 'e'");
        enter("UucpTimeoutTxt", "");
        ok();
        boxes.expectQuestion("Du har ändrat fjärrvärdens nodnamn. Det medför att\n"
                             "den tidigare katalogen med sina spoolfiler\n"
                             "tas bort. Vill du fortsätta?",
                             kYes, {}, kCritical);
        fill({{"UucpTimeoutTxt", "40"}, {"RemoteHostNameTxt", "solna"}});
        // A refused save is told in English in every language.
        failing(Failure::Refused, ObjectClass::Host, kFailSave, [this] { ok(); });
    });
    EXPECT_TRUE(isLoggedOut());
}

TEST_F(HostSetupTest, NewHostsOfEveryKind) {
    addHost([&] {
        EXPECT_EQ(form().windowTitle(), "Add host");
        EXPECT_EQ(text("RetryTimeTxt") + ' ' + text("TimeoutTxt") + ' ' + text("UucpTimeoutTxt"),
                  "5 60 12");
        enterNames("Östra  skolan", "skolan.example", "skolan");
        // clang-format off
        fill({{"ActiveHostCheck", ""}, {"obMailTransport1", ""}, {"tbMailLimit", " 8"},
              {"PhoneNoTxt", "046-1234567"}, {"CallRetriesTxt", "9"}, {"RetryTimeTxt", "15"},
              {"TimeoutTxt", "100000"}, {"LoginNameTxt", " gäst"}, {"PasswordTxt", "kålrot 7"},
              {"UucpLoginNameTxt", "uskolan"}, {"UucpPasswordTxt", "hemligt"},
              {"LocalUUCPnameTxt", "corvale"}, {"UucpProtocolLbx", "2"}, {"UucpTimeoutTxt", "20"},
              {"PackSizeLbx", "7"}, {"WindowsSizeLbx", "3"}, {"ComPortLbx", "15"},
              {"ConnectSpeedLbx", "5"}, {"DataBitsLbx", "1"}, {"StopBitsLbx", "1"},
              {"ParityLbx", "2"}, {"InitializationStringTxt", "AT&F1^M\n"}});
        // clang-format on
    });
    EXPECT_EQ(fieldsOfNewest(),
              "state -1|record_number 9|spool_directory skolan|display_name Östra  skolan|"
              "mail_domain skolan.example|active -1|local_uucp_name corvale|"
              "remote_uucp_name skolan|login_name  gäst|password kålrot 7|"
              "uucp_login_name uskolan|uucp_password hemligt|uucp_protocol 2|uucp_timeout 20|"
              "retry_time 15|call_retries 9|phone_number 046-1234567|modem_make None|"
              "modem_reset ATZ^M|modem_init AT&F1^M|modem_attention AT|modem_busy BUSY|"
              "modem_connect CONNECT|modem_dial ATDT|modem_hang_up ATH^M|modem_answer ATA^M|"
              "com_port 15|modem_max_speed 115200|connect_speed 5|data_bits 1|stop_bits 1|"
              "parity 2|dial_timeout 100000|window_size 4|packet_size 8|"
              "transport_when_in_queue -1|mail_limit 8|");
    EXPECT_EQ(saves(), 1) << "no script, no directory";
    EXPECT_EQ(context().data.hosts.back(), site().hosts.back()) << "as the service numbered it";
    EXPECT_EQ(rowText(5), "setting transport Östra  skolan|skolan.example|Yes");
    EXPECT_EQ(hasDirectory("skolan"), 1);

    addHost([&] {
        enterNames("Väst", "vast.example", "vast");
        fill({{"chkUseTapi", ""}, {"LocationList", "2"}, {"DeviceList", "3"}});
        ok();
    });
    EXPECT_EQ(site().hosts[6].do_not_use_tapi, kTrue);
    EXPECT_EQ(site().hosts[6].tapi_location.text(), "Hotell Örnsköldsvik");
    EXPECT_EQ(site().hosts[6].tapi_device.text(), "Seriell kabel på COM2");

    addHost([&] {
        enterNames("Nord", "nord.example", "nord-1_a.b");
        fill({{"ConnectUsingOption1", ""},
              {"RasHost", "uucp.nord.example"},
              {"RasUucpPort", "32767"},
              {"HostLupTm", "30"},
              {"PhoneEntries", "2"},
              {"RasUsernameTxt", "corvale"},
              {"RasPasswordTxt", "tjugofyra tecken lång å!"},
              {"UseCurrentTcp", ""},
              {"OkButton", ""}});
    });
    EXPECT_EQ(fieldsOfNewest(),
              "state -1|record_number 11|spool_directory nord-1_a.b|display_name Nord|"
              "mail_domain nord.example|connect_using 1|remote_uucp_name nord-1_a.b|"
              "uucp_timeout 12|retry_time 5|modem_make None|modem_reset ATZ^M|"
              "modem_attention AT|modem_busy BUSY|modem_connect CONNECT|modem_dial ATDT|"
              "modem_hang_up ATH^M|modem_answer ATA^M|modem_max_speed 115200|dial_timeout 60|"
              "ras_host uucp.nord.example|uucp_tcp_port 32767|ras_entry_position 2|"
              "ras_user_name corvale|ras_password tjugofyra tecken lång å!|"
              "ras_entry Reservförbindelse|do_not_use_active_connection -1|"
              "host_lookup_timeout 30|");
}

TEST_F(HostSetupTest, AHostThatIsOnlyLookedAtKeepsEveryByte) {
    // One as a service of another make may hold it: NULs and blanks where they are not expected,
    // numbers that no list has.
    change(4, [](HostRecord& host) {
        host.display_name.setBytes("  odd  name \xD6" + std::string(45, '\0'));
        host.modem_make = " Make";
        host.active = 1;
        host.uucp_protocol = 9;
        host.packet_size = 0;
        host.com_port = 16;
        host.ras_entry_position = 12;
    });
    for (int row = 0; row < 5; ++row) {
        SCOPED_TRACE(row);
        const HostRecord before = siteHost(row);
        editHost(row, [&] {
            showPage(Connection);
            ok();
        });
        EXPECT_EQ(siteHost(row), before);
        EXPECT_EQ(context().data.hosts.at(static_cast<std::size_t>(row)), before);
        EXPECT_EQ(list().selectedRow(), row);
    }
    EXPECT_EQ(saves(), 7) << "two have a script";
    EXPECT_EQ(site().scripts, simulator::sampleSite().scripts);

    // Then only what is changed changes.
    HostRecord expected = siteHost(4);
    expected.display_name = "Nytt";
    expected.active = kFalse;
    expected.window_size = 1;
    editHost(4, [&] {
        fill({{"HostSetupNameTxt", "Nytt"}, {"ActiveHostCheck", ""}, {"WindowsSizeLbx", "0"}});
        ok();
    });
    EXPECT_EQ(siteHost(4), expected);
    EXPECT_EQ(rowText(4), "setting transport Nytt|tryckeri.example|No");
}

TEST_F(HostSetupTest, PagesFollowTheNameTheProtocolAndTheConnection) {
    const auto expectShown = [&](bool shown, std::initializer_list<const char*> names) {
        for (const char* name : names)
            EXPECT_EQ(isShown(name), shown) << name;
    };
    const auto sizes = {"PackSizeLbx", "PackSizeLabel", "WindowsSizeLbx", "WinSizeLabel"};
    const auto ras_only = {"RasUserCap",    "RasUsernameTxt", "RasPasswCap", "RasPasswordTxt",
                           "UseCurrentTcp", "HostLookupCap",  "HostLupTm",   "HostSetTxpSecCap"};
    addHost([&] {
        for (const int page_number : {Transport, Login, LoginScript, Connection}) {
            boxes.expectBox(kExclamation, "You must select a displayname to continue!");
            click("MailDomainTxt");
            showPage(page_number);
            EXPECT_EQ(page(), General);
            EXPECT_EQ(focused(), "HostSetupNameTxt");
        }
        enter("HostSetupNameTxt", "  A & B ");
        press(Qt::Key_T, Qt::AltModifier);
        EXPECT_EQ(page(), Transport);
        for (const char* header :
             {"tbHostSetupName0", "tbHostSetupName1", "tbHostSetupName2", "tbHostSetupName3"})
            EXPECT_EQ(text(header), "A & B");
        expectShown(true, sizes);
        choose("UucpProtocolLbx", 1);
        expectShown(false, sizes);

        expectShown(true, {"ModemFrame"});
        expectShown(false, {"Win95ModemFrame", "RasFrame"});
        click("chkUseTapi");
        expectShown(true, {"Win95ModemFrame"});
        expectShown(false, {"ModemFrame", "RasFrame"});
        for (const char* option : {"ConnectUsingOption1", "ConnectUsingOption2"}) {
            click(option);
            expectShown(true, {"RasFrame"});
            expectShown(false, {"Win95ModemFrame", "ModemFrame"});
            expectShown(true, ras_only); // the second time until the page changes
        }
        showPage(Connection);
        expectShown(false, ras_only);
        cancel();
    });
    EXPECT_EQ(saves(), 0);

    // A service without telephony keeps the names that belong to it.
    loseConnection();
    EXPECT_TRUE(isLoggedOut());
    onServer([](Server& s) {
        s.site().settings.service_version = 3;
        s.site().tapi_devices.clear();
    });
    HostRecord expected = siteHost(0);
    editHost(0, [&] {
        expectShown(true, {"ModemFrame"});
        EXPECT_EQ(combo("DeviceList")->count(), 0);
        choose("ComPortLbx", 0);
        ok();
    });
    expected.com_port = 0;
    EXPECT_EQ(siteHost(0), expected);
}

TEST_F(HostSetupTest, WhatIsGoneOrIllegalIsTold) {
    change(2, [](HostRecord& host) { host.connect_speed = 8; });
    boxes.expectBox(kExclamation, "Illegal baudrate entry!\nUsing default...");
    editHost(2, [&] { ok(); });
    EXPECT_EQ(siteHost(2).connect_speed, 7);
    // A dial-up entry whose name the record holds cut is still found.
    onServer([](Server& s) { s.site().ras_entries[0] = "En post med ett alltför långt namn"; });
    editHost(1, [&] {
        EXPECT_EQ(combo("PhoneEntries")->itemText(3), "Do not use RAS");
        fill({{"PhoneEntries", "0"}, {"OkButton", ""}});
    });
    EXPECT_EQ(siteHost(1).ras_entry.text(), "En post med ett alltför långt");
    editHost(1, [&] {
        EXPECT_EQ(combo("PhoneEntries")->currentIndex(), 0);
        choose("PhoneEntries", 3);
        EXPECT_EQ(combo("PhoneEntries")->currentIndex(), -1);
        cancel();
    });
    onServer([](Server& s) { std::swap(s.site().ras_entries[0], s.site().ras_entries[2]); });
    boxes.expectBox(kExclamation, "The previous selected RAS entry no longer exists!");
    editHost(1, [&] {
        EXPECT_EQ(combo("PhoneEntries")->currentIndex(), -1);
        cancel();
    });
    onServer([](Server& s) { s.site().ras_entries.clear(); });
    const HostRecord before = siteHost(1);
    editHost(1, [&] {
        EXPECT_EQ(text("PhoneEntries"), "No RAS entries available");
        ok();
    });
    EXPECT_EQ(siteHost(1), before);
}

TEST_F(HostSetupTest, LinesTakeTheirCharactersOnly) {
    change(1, [](HostRecord& host) { host.remote_uucp_name = "räv"; });
    editHost(2, [&] {
        enter("RemoteHostNameTxt", "a b!Z_0-9.å@ö/\\:");
        EXPECT_EQ(text("RemoteHostNameTxt"), "abZ_0-9.");
        // As AltGr on the keys of other countries.
        QTest::keyClick(control("RemoteHostNameTxt"), '@', Qt::ControlModifier | Qt::AltModifier);
        QApplication::clipboard()->setText(" ../r\r\nåv\u2028");
        press(Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(text("RemoteHostNameTxt"), "abZ_0-9...rv");
        for (const char* name : {"HostSetupNameTxt", "PasswordTxt", "ScripFileNameTxt"}) {
            enter(name, "x");
            press(Qt::Key_V, Qt::ControlModifier);
            type("d");
            EXPECT_EQ(text(name), "x ../råvd") << "the cursor stays behind it";
        }
        cancel();
    });
    // A name that came with others can be edited.
    editHost(1, [&] {
        click("RemoteHostNameTxt");
        press(Qt::Key_End);
        type("å2");
        EXPECT_EQ(text("RemoteHostNameTxt"), "räv2");
        cancel();
    });
}

TEST_F(HostSetupTest, WhatIsRefusedIsToldAndGetsTheFocus) {
    change(2, [](HostRecord& host) { host.default_domain = 1; });
    // clang-format off
    const struct {
        const char* field;
        const char* entered;
        QMessageBox::Icon icon;
        const char* message;
        Page page;
    } cases[] = {
        {"HostSetupNameTxt", "  ", kCritical, "You must enter a 'setup' name for this host!", General},
        {"HostSetupNameTxt", " STOCKHOLM ", kCritical,
         "The selected 'Host setup name' is already used. Select a different name!", General},
        {"MailDomainTxt", "", kCritical, "You must enter a 'Maildomain' for this host!", General},
        {"RemoteHostNameTxt", "", kCritical, "You must enter a 'Remote hostname' for this setup!", Login},
        {"DefaultDomainCheck", "", kExclamation, "There is already a default domain registered!", General},
        {"UucpTimeoutTxt", "1.5", kExclamation,
         "UUCP timeout must be at least 2 seconds.\nRecommended setting is 12 for 'g' protocol\n"
         "and 40 seconds for protocol 't' and 'e'", Login},
        {"ScripFileNameTxt", "sub\\login.scp", kCritical,
         "Script filename may not contain directory or drive information!", LoginScript},
        {"ScripFileNameTxt", "a/b.scp", kCritical, "Illegal filename!", LoginScript}};
    // clang-format on
    for (const auto& c : cases) {
        SCOPED_TRACE(c.message);
        editHost(1, [&] {
            fill({{c.field, c.entered}});
            if (std::string_view(c.field) != "HostSetupNameTxt")
                showPage(Connection);
            boxes.expectBox(c.icon, c.message, [](QMessageBox&) {
                EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::ArrowCursor);
            });
            ok();
            EXPECT_FALSE(QApplication::overrideCursor());
            EXPECT_EQ(page(), c.page);
            EXPECT_EQ(focused(), c.field);
            cancel();
        });
    }
    // A number past its bits is logged.
    editHost(1, [&] {
        const std::size_t lines = logged().size();
        for (const char* field : {"tbMailLimit", "CallRetriesTxt", "RetryTimeTxt"})
            fill({{field, "32768"}, {"OkButton", ""}, {field, "32767"}});
        fill({{"TimeoutTxt", "2147483648"}, {"OkButton", ""}});
        ASSERT_EQ(logged().size(), lines + 4);
        EXPECT_TRUE(logged().back().starts_with("Loop->Overflow ; (6/80")) << logged().back();
        EXPECT_EQ(saves(), 0);
        // A long host lookup is cut with a warning.
        boxes.expectBox(kExclamation,
                        "Host lookup timeout cannot handle larger values then\n\\               \n"
                        "30 seconds. Setting will be changed to 30 sec!",
                        [this](QMessageBox&) { EXPECT_EQ(saves(), 0); });
        fill({{"TimeoutTxt", "2147483647"}, {"HostLupTm", "99999"}, {"OkButton", ""}});
    });
    EXPECT_EQ(siteHost(1).dial_timeout, 2147483647);
    EXPECT_EQ(siteHost(1).call_retries, 32767);
    EXPECT_EQ(siteHost(1).host_lookup_timeout, 30);
}

// A host whose node is renamed from "malmo", or a new one with that node: what is asked, and what
// comes of it.
TEST_F(HostSetupTest, ARenamedNodeMovesTheSpoolDirectory) {
    constexpr const char* kOwn = "Malmö huvudkontor-corvale";
    // clang-format off
    const struct {
        const char* name;
        bool is_shared; // another host has the old name for its local one
        const char* node;
        std::vector<std::pair<const char*, QMessageBox::StandardButton>> answers;
        const char* directory; // nullptr: not saved
        bool is_removed;
    } cases[] = {
        {"stopped", false, "lund", {{kRename, kNo}}, nullptr, false},
        {"to a new name", false, "lund", {{kRename, kYes}}, "lund", true},
        {"to a shared name", false, "corvale", {{kRename, kYes}, {kShare, kYes}}, "corvale", true},
        {"to one of its own", false, "corvale", {{kRename, kYes}, {kShare, kNo}}, kOwn, true},
        {"from a shared name", true, "lund", {}, "lund", false},
    };
    // clang-format on
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        restore();
        change(0, [](HostRecord& host) { host.spool_directory = " malmo mail"; });
        onServer([](Server& s) { s.site().spool_directories[0] = "malmo mail"; });
        if (c.is_shared)
            change(4, [](HostRecord& host) { host.local_uucp_name = "malmo"; });
        HostRecord expected = siteHost(0);
        logIn();
        for (const auto& [question, answer] : c.answers)
            boxes.expectQuestion(question, answer, {}, kCritical, question == kRename ? kNo : kYes);
        editHost(0, [&] {
            fill({{"ScripFileNameTxt", ""}, {"RemoteHostNameTxt", c.node}, {"OkButton", ""}});
            if (c.directory)
                return;
            EXPECT_EQ(info(), "Ready");
            cancel();
        });
        if (c.directory) {
            expected.script_file_name = "";
            expected.remote_uucp_name = c.node;
            expected.spool_directory = c.directory;
        }
        EXPECT_EQ(siteHost(0), expected);
        EXPECT_EQ(context().data.hosts[0], expected);
        EXPECT_EQ(hasDirectory("malmo mail"), c.is_removed ? 0 : 1);
        EXPECT_EQ(saves(), (c.directory ? 1 : 0) + (c.is_removed ? 1 : 0));
        context().link.Close();
        EXPECT_TRUE(isLoggedOut());
    }
    logIn();
    for (const auto answer : {kNo, kYes}) {
        boxes.expectQuestion(kShare, answer, {}, kCritical);
        addHost([&] {
            enterNames(answer == kYes ? "Två" : "Ett", " ny.example ", "corvale");
            ok();
        });
        EXPECT_EQ(site().hosts.back().spool_directory.text(),
                  answer == kYes ? "corvale" : "ny.example-corvale");
    }
}

TEST_F(HostSetupTest, AFailedFetchLeavesADialogThatCannotSave) {
    // clang-format off
    const std::tuple<ObjectClass, const char*, const char*> fetches[] = {
        {ObjectClass::Script, "retrieve Script from", "Retrieving script..."},
        {ObjectClass::TapiDevice, "retrieve Tapi Devices from", "Retrieving TAPI devices..."},
        {ObjectClass::TapiLocation, "retrieve Tapi locations from", "Retrieving TAPI locations..."},
        {ObjectClass::RasEntry, "retrieve RAS-entries from", "Retrieving RAS settings..."}};
    // clang-format on
    for (const auto& [object_class, what, status] : fetches)
        for (const Failure failure : {Failure::Refused, Failure::TimedOut}) {
            SCOPED_TRACE(what);
            restore();
            logIn();
            const std::string told = failing(failure, object_class, unable(what), [&] {
                editHost(0, [&] {
                    EXPECT_EQ(onServer([](Server& s) { return s.lastRequest().ObjectClass; }),
                              static_cast<Integer>(object_class))
                        << "the last that is fetched";
                    EXPECT_TRUE(isLoggedOut());
                    EXPECT_EQ(text("HostSetupNameTxt"), "Malmö huvudkontor");
                    boxes.expectBox(kCritical, unable("save script to"));
                    ok();
                });
            });
            EXPECT_EQ(told, failure == Failure::Refused ? "" : status);
            EXPECT_EQ(saves(), 0);
        }
}

TEST_F(HostSetupTest, AFailedSaveClosesTheDialog) {
    const std::tuple<ObjectClass, std::string, const char*> steps[] = {
        {ObjectClass::Script, unable("save script to"), "Saving script..."},
        {ObjectClass::HostDirectory, unable("delete hostdirectory through"),
         "Removing old hostdirectory..."},
        {ObjectClass::Host, kFailSave, "Updating host..."}};
    for (int step = 0; step < 3; ++step)
        for (const Failure failure : kFailures) {
            const auto& [object_class, message, status] = steps[step];
            if (failure == Failure::ConnectionLostBefore && step > 0)
                continue;
            SCOPED_TRACE(message + std::to_string(static_cast<int>(failure)));
            restore();
            logIn();
            const std::vector<HostRecord> before = context().data.hosts;
            std::string told;
            editHost(0, [&] {
                fill({{"MailDomainTxt", "ny.example"}, {"RemoteHostNameTxt", "lund"}});
                if (step > 0)
                    boxes.expectQuestion(kRename, kYes, {}, kCritical);
                told = failing(failure, object_class, message, [this] { ok(); });
            });
            EXPECT_EQ(told, failure == Failure::TimedOut || failure == Failure::ConnectionLost
                                ? status
                                : "");
            EXPECT_EQ(saves(), failure == Failure::ConnectionLostBefore ? 0 : step + 1)
                << "nothing after the failure";
            EXPECT_EQ(context().data.hosts, before);
            EXPECT_FALSE(QApplication::overrideCursor());
            EXPECT_TRUE(isLoggedOut());
        }
    restore();
    addHost([&] {
        enterNames("New", "new.example", "new");
        EXPECT_EQ(failing(Failure::TimedOut, ObjectClass::Host, kFailSave, [this] { ok(); }),
                  "Saving new host...");
    });
    EXPECT_EQ(context().data.hosts.size(), 5U);
}

} // namespace
} // namespace tollwick
