#include "tests/ui/support/host_setup_test.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>

namespace tollwick {
namespace {

using simulator::Server;

// clang-format off
constexpr const char* kNewHost =
    "HostSetupNameTxt=Östra  skolan|MailDomainTxt=skolan.example|RemoteHostNameTxt=skolan-1_a.b|"
    "ActiveHostCheck|obMailTransport1|tbMailLimit= 8|PhoneNoTxt=046-1234567|CallRetriesTxt=9|"
    "RetryTimeTxt=15|TimeoutTxt=100000|LoginNameTxt= gäst|PasswordTxt=kålrot 7|"
    "UucpLoginNameTxt=uskolan|UucpPasswordTxt=hemligt|LocalUUCPnameTxt=corvale|UucpProtocolLbx=2|"
    "UucpTimeoutTxt=20|PackSizeLbx=7|WindowsSizeLbx=3|ComPortLbx=15|ConnectSpeedLbx=5|"
    "DataBitsLbx=1|StopBitsLbx=1|ParityLbx=2|InitializationStringTxt=AT&F1^M|chkUseTapi|"
    "LocationList=2|DeviceList=3|ConnectUsingOption1|RasHost=uucp.skolan.example|"
    "RasUucpPort=32767|HostLupTm=30|PhoneEntries=2|RasUsernameTxt=corvale|"
    "RasPasswordTxt=tjugofyra tecken lång å!|UseCurrentTcp|RasHost=uucp.nord.example\n";
constexpr const char* kNewHostFields =
    "state -1|record_number 9|spool_directory skolan-1_a.b|display_name Östra  skolan|"
    "mail_domain skolan.example|active -1|connect_using 1|local_uucp_name corvale|"
    "remote_uucp_name skolan-1_a.b|login_name  gäst|password kålrot 7|uucp_login_name uskolan|"
    "uucp_password hemligt|uucp_protocol 2|uucp_timeout 20|"
    "tapi_device Seriell kabel på COM2|retry_time 15|call_retries 9|do_not_use_tapi -1|"
    "phone_number 046-1234567|modem_make None|modem_reset ATZ^M|modem_init AT&F1^M|"
    "modem_attention AT|modem_busy BUSY|modem_connect CONNECT|modem_dial ATDT|modem_hang_up ATH^M|"
    "modem_answer ATA^M|com_port 15|modem_max_speed 115200|connect_speed 5|data_bits 1|"
    "stop_bits 1|parity 2|tapi_location Hotell Örnsköldsvik|dial_timeout 100000|window_size 4|"
    "packet_size 8|ras_host uucp.nord.example|uucp_tcp_port 32767|ras_entry_position 2|"
    "ras_user_name corvale|ras_password tjugofyra tecken lång å!|ras_entry Reservförbindelse|"
    "do_not_use_active_connection -1|host_lookup_timeout 30|transport_when_in_queue -1|"
    "mail_limit 8|";
// clang-format on

TEST_F(HostSetupTest, ShowsAHost) {
    inForm(0, [&] {
        EXPECT_EQ(focused(), "HostSetupNameTxt");
        EXPECT_EQ(form().windowTitle(), "Edit host");
        EXPECT_EQ(tabs()->tabText(LoginScript), "Login &script");
        for (const char* name : {"ActiveHostCheck", "DefaultDomainCheck", "obMailTransport1"})
            EXPECT_TRUE(control<QAbstractButton>(name)->isChecked()) << name;
        play("PasswordTxt?smörgås|UucpPasswordTxt?nattpost|DeviceList?Standard 33600 bps Modem|"
             "ComPortLbx?COM2:|ConnectSpeedLbx?57600|PackSizeLbx?64|WindowsSizeLbx?7");
        for (const char* name : {"PasswordTxt", "UucpPasswordTxt", "RasPasswordTxt"})
            EXPECT_EQ(control<QLineEdit>(name)->echoMode(), QLineEdit::Password) << name;
        for (const char* name : {"LocationButton", "DeviceButton"})
            EXPECT_FALSE(control(name)->isEnabled()) << name;
        type("\x1b");
    });
    EXPECT_EQ(saves(), 0);
}

TEST_F(HostSetupTest, EveryControlOfANewHostIsStored) {
    inForm(-1, std::string("RetryTimeTxt?5|TimeoutTxt?60|UucpTimeoutTxt?12|") + kNewHost);
    EXPECT_EQ(fieldsOfNewest(), kNewHostFields);
    EXPECT_EQ(saves(), 1) << "no script, no directory";
    EXPECT_EQ(context().data.hosts.back(), site().hosts.back()) << "as the service numbered it";
    EXPECT_EQ(rowText(5), "setting transport Östra  skolan|skolan.example|Yes");
}

TEST_F(HostSetupTest, AHostThatIsOnlyLookedAtStaysAsItIs) {
    onServer([&](Server& s) { // numbers that no list has
        host(s, 4).uucp_protocol = 9;
        host(s, 4).com_port = 16;
        host(s, 4).password.setBytes("8F");
        host(s, 4).uucp_password.setBytes("8F");
        host(s, 4).ras_password.setBytes("8F");
    });
    for (int row = 0; row < 5; ++row) {
        HostRecord before = siteHost(row);
        if (row != 1) // "Do not use RAS" has no position
            before.ras_entry_position = -1;
        inForm(row, [&] {
            const std::string option = "ConnectUsingOption" + std::to_string(before.connect_using);
            EXPECT_TRUE(control<QAbstractButton>(option.c_str())->isChecked()) << row;
            play("ScripFileNameTxt|OkButton");
        });
        for (const HostRecord& after : {siteHost(row), ownHost(row)})
            forEachField<HostRecord>([&](const auto& field) {
                EXPECT_EQ(after.*field.member, before.*field.member) << row << field.name;
            });
        EXPECT_EQ(list().selectedRow(), row);
    }
    EXPECT_EQ(saves(), 7) << "two have a script";
    EXPECT_EQ(site().scripts, simulator::sampleSite().scripts);
    inForm(4, "HostSetupNameTxt=Nytt|ActiveHostCheck|OkButton");
    EXPECT_EQ(rowText(4), "setting transport Nytt|tryckeri.example|" +
                              std::string(siteHost(4).active != 0 ? "Yes" : "No"));
}

TEST_F(HostSetupTest, PagesFollowTheNameTheProtocolAndTheConnection) {
    const auto sizes = {"PackSizeLbx", "PackSizeLabel", "WindowsSizeLbx", "WinSizeLabel"};
    const auto frames = {"Win95ModemFrame", "ModemFrame", "RasFrame"};
    const auto ras_only = {"RasUserCap",    "RasUsernameTxt", "RasPasswCap", "RasPasswordTxt",
                           "UseCurrentTcp", "HostLookupCap",  "HostLupTm",   "HostSetTxpSecCap"};
    inForm(-1, [&] {
        boxes.expectBox(kExclamation, Text::DisplayNameMissing);
        play("MailDomainTxt");
        press(Qt::Key_T, Qt::AltModifier);
        EXPECT_EQ(tabs()->currentIndex(), General);
        play("?HostSetupNameTxt|HostSetupNameTxt=  A & B ");
        press(Qt::Key_T, Qt::AltModifier);
        EXPECT_EQ(tabs()->currentIndex(), Transport);
        play("tbHostSetupName0?A & B|tbHostSetupName3?A & B|UucpProtocolLbx=1");
        EXPECT_EQ(shown(sizes), "");
        play("UucpProtocolLbx=0");
        EXPECT_EQ(shown(sizes), "PackSizeLbx|PackSizeLabel|WindowsSizeLbx|WinSizeLabel|");
        EXPECT_EQ(shown(frames), "ModemFrame|");
        play("ConnectUsingOption2");
        EXPECT_EQ(shown(frames), "RasFrame|");
        EXPECT_NE(shown(ras_only), "") << "until the page changes";
        tabs()->setCurrentIndex(Connection);
        EXPECT_EQ(shown(ras_only), "");
        play("CancelButton");
    });
    // A service without telephony keeps the names that belong to it.
    context().link.Close();
    onServer([](Server& s) {
        s.site().settings.service_version = 3;
        s.site().tapi_devices.clear();
    });
    HostRecord expected = siteHost(0);
    inForm(0, "ComPortLbx=0|OkButton");
    expected.com_port = 0;
    expected.ras_entry_position = -1;
    EXPECT_EQ(siteHost(0), expected);
}

TEST_F(HostSetupTest, WhatIsGoneOrIllegalIsTold) {
    onServer([&](Server& s) { host(s, 2).connect_speed = 8; });
    boxes.expectBox(kExclamation, "Illegal baudrate entry!\nUsing default...");
    inForm(2, "OkButton");
    EXPECT_EQ(siteHost(2).connect_speed, 7);
    // A dial-up entry whose name the record holds cut is still found.
    onServer([](Server& s) { s.site().ras_entries[0] = "En post med ett alltför långt namn"; });
    inForm(1, "PhoneEntries=0|OkButton");
    EXPECT_EQ(siteHost(1).ras_entry.text(), "En post med ett alltför långt");
    inForm(1, "PhoneEntries?En post med ett alltför långt namn|PhoneEntries=3|PhoneEntries?|"
              "CancelButton");
    const HostRecord before = siteHost(1);
    onServer([](Server& s) { std::swap(s.site().ras_entries[0], s.site().ras_entries[2]); });
    boxes.expectBox(kExclamation, Text::RasEntryGone);
    inForm(1, "PhoneEntries?|CancelButton");
    onServer([](Server& s) { s.site().ras_entries.clear(); });
    inForm(1, "PhoneEntries?No RAS entries available|OkButton");
    EXPECT_EQ(siteHost(1), before);
}

TEST_F(HostSetupTest, LinesTakeTheirCharactersOnly) {
    onServer([&](Server& s) { host(s, 1).remote_uucp_name = "räv"; });
    QApplication::clipboard()->setText(" ../r\r\nåv\u2028");
    inForm(2, [&] {
        play("RemoteHostNameTxt=a b!Z_0-9.å@ö/\\:");
        // As AltGr on the keys of other countries.
        QTest::keyClick(control("RemoteHostNameTxt"), '@', Qt::ControlModifier | Qt::AltModifier);
        press(Qt::Key_V, Qt::ControlModifier);
        play("RemoteHostNameTxt?abZ_0-9...rv|PasswordTxt=x");
        press(Qt::Key_V, Qt::ControlModifier);
        type("d"); // behind it
        play("PasswordTxt?x ../råvd|CancelButton");
    });
    inForm(1, [&] { // a name that came with others can be edited
        play("RemoteHostNameTxt");
        press(Qt::Key_End);
        type("å2");
        play("RemoteHostNameTxt?räv2|CancelButton");
    });
}

TEST_F(HostSetupTest, WhatIsRefusedIsToldAndGetsTheFocus) {
    // clang-format off
    const std::tuple<std::string, const char*, QMessageBox::Icon, Text> cases[] = {
        {"HostSetupNameTxt",   "=  ",          kCritical,    Text::HostNameMissing},
        {"HostSetupNameTxt",   "= STOCKHOLM ", kCritical,    Text::HostNameTaken},
        {"MailDomainTxt",      "=",            kCritical,    Text::MailDomainMissing},
        {"RemoteHostNameTxt",  "=",            kCritical,    Text::RemoteHostMissing},
        {"DefaultDomainCheck", "",             kExclamation, Text::DefaultDomainTaken},
        {"UucpTimeoutTxt",     "=1.5",         kExclamation, Text::UucpTimeoutTooShort},
        {"ScripFileNameTxt",   "=sub\\a.scp",  kCritical,    Text::ScriptNameHasPath},
        {"ScripFileNameTxt",   "=a/b.scp",     kCritical,    Text::ScriptNameIllegal}};
    // clang-format on
    for (const auto& [field, entry, icon, message] : cases)
        inForm(1, [&] {
            play(field + entry);
            const int page = tabs()->currentIndex();
            if (page != General)
                play("RasHost");
            boxes.expectBox(icon, message, [](QMessageBox&) {
                EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::ArrowCursor);
            });
            play("OkButton|?" + field);
            EXPECT_EQ(tabs()->currentIndex(), page) << field;
            play("CancelButton");
        });
    EXPECT_FALSE(QApplication::overrideCursor());
    const std::size_t lines = logged().size(); // where numbers past their bits go, too
    inForm(1, [&] {
        for (const std::string number :
             {"tbMailLimit=32768", "TimeoutTxt=2147483648", "RasUucpPort=40000"}) {
            const std::string name = number.substr(0, number.find('='));
            play(number + "|HostSetupNameTxt|OkButton|?" + name);
            EXPECT_EQ(control<QLineEdit>(name.c_str())->selectedText().toStdString(),
                      number.substr(name.size() + 1));
            EXPECT_EQ(info(), english(Text::NumberTooLarge));
            play(name + "=1");
        }
        play("CancelButton");
    });
    ASSERT_EQ(logged().size(), lines + 3);
    EXPECT_TRUE(logged().back().starts_with("Loop->Overflow ; (6/80")) << logged().back();
    boxes.expectBox(kExclamation, Text::HostLookupTooLong,
                    [this](QMessageBox&) { EXPECT_EQ(saves(), 0); });
    inForm(1, "HostLupTm=30.1|OkButton");
    EXPECT_EQ(siteHost(1).host_lookup_timeout, 30);
}

TEST_F(HostSetupTest, ARenamedNodeMovesTheSpoolDirectory) {
    HostRecord expected = siteHost(2);
    boxes.expectQuestion(Text::RemoteHostChanged, kNo, {}, kCritical);
    inForm(2, "RemoteHostNameTxt=corvale|OkButton|CancelButton");
    EXPECT_EQ(info(), "Ready");
    EXPECT_EQ(saves(), 0);
    boxes.expectQuestion(Text::RemoteHostChanged, kYes, {}, kCritical);
    boxes.expectQuestion(Text::ShareSpoolDirectory, kYes, {}, kCritical, kYes);
    inForm(2, "RemoteHostNameTxt=corvale|OkButton");
    expected.remote_uucp_name = "corvale";
    expected.spool_directory = "corvale";
    expected.ras_entry_position = -1;
    EXPECT_EQ(siteHost(2), expected);
    EXPECT_EQ(ownHost(2), expected);
    const auto left = site().spool_directories;
    EXPECT_EQ(std::count(left.begin(), left.end(), VarText("sthlm")), 0);
    EXPECT_EQ(saves(), 2);
    boxes.expectQuestion(Text::ShareSpoolDirectory, kNo, {}, kCritical);
    inForm(-1, "HostSetupNameTxt=Ett|MailDomainTxt= ny.example |RemoteHostNameTxt=corvale|"
               "OkButton");
    EXPECT_EQ(site().hosts.back().spool_directory.text(), "ny.example-corvale");
}

TEST_F(HostSetupTest, AFailedFetchLeavesADialogThatCannotSave) {
    logIn();
    const std::string told = refused(ObjectClass::Script, "retrieve Script from", [&] {
        inForm(0, [&] {
            EXPECT_EQ(requestCount(ObjectClass::TapiDevice), 0) << "nothing is fetched behind it";
            EXPECT_TRUE(isLoggedOut());
            boxes.expectBox(kCritical, unable("save script to"));
            play("HostSetupNameTxt?Malmö huvudkontor|OkButton");
        });
    });
    EXPECT_EQ(told, "Retrieving script...");
    EXPECT_EQ(saves(), 0);
}

} // namespace
} // namespace tollwick
