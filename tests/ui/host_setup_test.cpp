#include "tests/ui/support/host_setup_test.h"

#include <QCheckBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSet>
#include <QTabWidget>

namespace tollwick {
namespace {

using simulator::Server;

constexpr auto kExclamation = QMessageBox::Warning;
constexpr auto kCritical = QMessageBox::Critical;

// The captions of all controls that have one.
// clang-format off
constexpr std::pair<const char*, const char*> kCaptions[] = {
    {"HostSetupNameCap", "Display name:"}, {"MailDomainCap", "Mail domain:"},
    {"ActiveHostCheck", "UUCP transport activated"}, {"DefaultDomainCheck", "Primary domain"},
    {"frMailTransport", "UUCP transport:"}, {"obMailTransport0", "Only scheduled"},
    {"obMailTransport1", "Scheduled and when"}, {"lbMailInQueText", "mail is in queue"},
    {"DeliverFrame", "Deliver by:"}, {"ConnectUsingOption0", "Modem"},
    {"ConnectUsingOption1", "TCP/IP via RAS"}, {"ConnectUsingOption2", "Use clean TCP/IP connection"},
    {"chkUseTapi", "Do not use TAPI"}, {"PhoneNrText", "Phone no:"}, {"CallRetCap", "Call retries:"},
    {"RetryTmCap", "Retry time:"}, {"DialTmCap", "Dial timeout:"}, {"SecondsCap", "Sec"},
    {"DialEntryText", "Dial entry:"}, {"frPreloginFrame", "Pre login:"},
    {"LoginNameCap", "Login name:"}, {"PasswordCap", "Password:"}, {"frMainLogin", "UUCP login:"},
    {"UucpLoginCap", "Uucp login name:"}, {"UucpPasswordCap", "Uucp password:"},
    {"frNodnameFrame", "UUCP node names:"}, {"LocalUucpHostCap", "Local UUCP nodname:"},
    {"RemoteUucpCap", "Remote UUCP nodname:"}, {"UucpSettingFrameCap", "Uucp settings:"},
    {"ProtocolCap", "Protocol:"}, {"UucpTimeoutCap", "Timeout:"}, {"lbUucpTimeout", "Sec"},
    {"PackSizeLabel", "Packet size:"}, {"WinSizeLabel", "Windows:"},
    {"ScriptFilenameCap", "Script filename:"}, {"BläddraButton", "..."},
    {"Win95ModemFrame", "Location and devices:"}, {"SelLocationCap", "Select location:"},
    {"ConUsingDevCap", "Connect using:"}, {"LocationButton", "Location..."},
    {"DeviceButton", "&Device..."}, {"ModemFrame", "Modem settings:"},
    {"CurrModemCap", "Current modem:"}, {"Modems", "&Modem..."}, {"ComportCap", "Comport:"},
    {"ConSpeedCap", "Connectspeed:"}, {"ParityCap", "Parity:"}, {"DatabitsCap", "Data bits:"},
    {"StopBitsCap", "Stop bits:"}, {"ModemInitCap", "Modem initialization:"},
    {"RasFrame", "Internet UUCP host:"}, {"HostToConcap", "Host to connect to:"},
    {"UucpPortCap", "UUCP - port:"}, {"HostLookupCap", "Timeout:"}, {"HostSetTxpSecCap", "Sec"},
    {"RasUserCap", "Username:"}, {"RasPasswCap", "Password:"},
    {"UseCurrentTcp", "Do not use active connection"}, {"RasEntryCap", "Remote access entry:"},
    {"OkButton", "&Ok"}, {"CancelButton", "Cancel"},
};
// What the dialog shows of the sample's host in Malmö.
constexpr std::pair<const char*, const char*> kShown[] = {
    {"HostSetupNameTxt", "Malmö huvudkontor"}, {"MailDomainTxt", "malmo.corvale.example"},
    {"tbMailLimit", "5"}, {"PhoneNoTxt", "040-123456"}, {"CallRetriesTxt", "3"},
    {"RetryTimeTxt", "5"}, {"TimeoutTxt", "60"}, {"LoginNameTxt", "växel"},
    {"PasswordTxt", "smörgås"}, {"UucpLoginNameTxt", "ucorvale"}, {"UucpPasswordTxt", "nattpost"},
    {"LocalUUCPnameTxt", "corvale"}, {"RemoteHostNameTxt", "malmo"}, {"UucpProtocolLbx", "g"},
    {"UucpTimeoutTxt", "12"}, {"PackSizeLbx", "64"}, {"WindowsSizeLbx", "7"},
    {"ScripFileNameTxt", "malmo.scp"}, {"LocationList", "Kontoret i Lund"},
    {"DeviceList", "Standard 33600 bps Modem"}, {"CurrentModemCap", "None"},
    {"ComPortLbx", "COM2:"}, {"ConnectSpeedLbx", "57600"}, {"DataBitsLbx", "8"},
    {"StopBitsLbx", "1"}, {"ParityLbx", "None"}, {"InitializationStringTxt", "AT&F1"},
    {"RasHost", ""}, {"RasUucpPort", "540"}, {"HostLupTm", "15"}, {"RasUsernameTxt", ""},
    {"RasPasswordTxt", ""}, {"PhoneEntries", ""}, {"tbHostSetupName0", ""},
};
// clang-format on

TEST_F(HostSetupTest, ShowsAHost) {
    editHost(0, [&] {
        EXPECT_EQ(form().windowTitle(), "Edit host");
        EXPECT_EQ(focused(), "HostSetupNameTxt");
        for (const auto& [name, caption] : kCaptions)
            EXPECT_EQ(textOf(name), caption) << name;
        for (const auto& [name, text] : kShown)
            EXPECT_EQ(textOf(name), text) << name;
        for (const auto& [name, is_on] : {std::pair{"ActiveHostCheck", true},
                                          {"DefaultDomainCheck", true},
                                          {"obMailTransport1", true},
                                          {"ConnectUsingOption0", true},
                                          {"chkUseTapi", false},
                                          {"UseCurrentTcp", false}})
            EXPECT_EQ(control<QAbstractButton>(name)->isChecked(), is_on) << name;
        for (const char* name : {"PasswordTxt", "UucpPasswordTxt", "RasPasswordTxt"})
            EXPECT_EQ(control<QLineEdit>(name)->echoMode(), QLineEdit::Password) << name;
        for (const char* name : {"LocationButton", "DeviceButton"})
            EXPECT_FALSE(control(name)->isEnabled()) << name;
        auto* tabs = control<QTabWidget>("SysSetupTab");
        Lines pages;
        for (int i = 0; i < tabs->count(); ++i)
            pages.push_back(tabs->tabText(i).toStdString());
        EXPECT_EQ(pages,
                  (Lines{"&General", "&Transport", "&Login", "Login &script", "&Connection"}));
        EXPECT_TRUE(control<QPushButton>("OkButton")->isDefault());
        press(Qt::Key_Escape);
    });
    EXPECT_EQ(saves(), 0);
}

TEST_F(HostSetupTest, ShowsAHostInSwedish) {
    set(setting::CountryCode, "4000");
    editHost(3, [&] {
        EXPECT_EQ(form().windowTitle(), "Redigera värd");
        EXPECT_EQ(textOf("ParityLbx"), "Ingen");
        EXPECT_EQ(textOf("UucpSettingFrameCap"), "UUCP-inställningar:");
        QSet<QString> letters;
        int mnemonics = 0;
        const auto note = [&](const QString& caption) {
            const auto at = caption.indexOf('&');
            if (at < 0)
                return;
            ++mnemonics;
            letters.insert(caption.mid(at + 1, 1).toUpper());
        };
        auto* tabs = control<QTabWidget>("SysSetupTab");
        for (int i = 0; i < tabs->count(); ++i)
            note(tabs->tabText(i));
        for (const QAbstractButton* button : form().findChildren<QAbstractButton*>())
            note(button->text());
        EXPECT_EQ(mnemonics, letters.size()) << "no letter serves twice";
        EXPECT_EQ(mnemonics, 8);
        // Every control that is worked has a name that can be read out.
        for (const QWidget* widget : form().findChildren<QWidget*>())
            if (widget->focusPolicy() & Qt::TabFocus && !widget->objectName().startsWith("qt_")) {
                const auto* button = qobject_cast<const QAbstractButton*>(widget);
                bool is_named = !widget->accessibleName().isEmpty() ||
                                (button && !button->text().isEmpty()) || widget == tabs ||
                                widget->parentWidget() == tabs;
                for (const QLabel* label : form().findChildren<QLabel*>())
                    is_named |= label->buddy() == widget;
                EXPECT_TRUE(is_named) << widget->objectName().toStdString();
            }
        boxes.expectBox(kCritical, "Du måste ange en postdomän för den här värden!");
        enter("MailDomainTxt", "");
        ok();
        press(Qt::Key_Escape);
    });
}

// What a new host gets of itself.
HostBytes newHost(const char* display_name, const char* domain, const char* node) {
    HostBytes host;
    host.text(6, 512, node).text(518, 60, display_name).text(578, 60, domain).text(702, 30, node);
    host.number(1004, 12).number(1259, 5).text(1584, 30, "None").text(1644, 30, "ATZ^M");
    host.text(1734, 30, "AT").text(1764, 30, "BUSY").text(1794, 30, "CONNECT");
    host.text(1824, 30, "ATDT").text(1854, 30, "ATH^M").text(1884, 30, "ATA^M");
    return host.number32(1916, 115200).number32(1992, 60);
}

TEST_F(HostSetupTest, AModemHostFromNothing) {
    addHost([&] {
        EXPECT_EQ(form().windowTitle(), "Add host");
        EXPECT_EQ(textOf("RetryTimeTxt"), "5");
        EXPECT_EQ(textOf("TimeoutTxt"), "60");
        EXPECT_EQ(textOf("UucpTimeoutTxt"), "12");
        EXPECT_EQ(textOf("ConnectSpeedLbx"), "1200");
        enterNames("Östra  skolan", "skolan.example", "skolan");
        click("ActiveHostCheck");
        click("obMailTransport1");
        enter("tbMailLimit", " 8");
        enter("PhoneNoTxt", "046-1234567");
        enter("CallRetriesTxt", "9");
        enter("RetryTimeTxt", "15");
        enter("TimeoutTxt", "100000");
        enter("LoginNameTxt", " gäst");
        enter("PasswordTxt", "kålrot 7 ");
        enter("UucpLoginNameTxt", "uskolan");
        enter("UucpPasswordTxt", "hemligt");
        enter("LocalUUCPnameTxt", "corvale");
        choose("UucpProtocolLbx", 2);
        enter("UucpTimeoutTxt", "20");
        choose("PackSizeLbx", 7);
        choose("WindowsSizeLbx", 3);
        choose("ComPortLbx", 15);
        choose("ConnectSpeedLbx", 5);
        choose("DataBitsLbx", 1);
        choose("StopBitsLbx", 1);
        choose("ParityLbx", 2);
        enter("InitializationStringTxt", "AT&F1^M");
        press(Qt::Key_Return);
    });
    HostBytes expected = newHost("Östra  skolan", "skolan.example", "skolan");
    expected.number(638, -1).text(642, 30, "corvale").text(762, 60, " gäst");
    expected.text(822, 60, "kålrot 7 ").text(882, 60, "uskolan").text(942, 60, "hemligt");
    expected.number(1002, 2).number(1004, 20).number(1259, 15).number(1261, 9);
    expected.text(1520, 60, "046-1234567").text(1674, 60, "AT&F1^M").number(1914, 15);
    expected.number(1920, 5).number(1922, 1).number(1924, 1).number(1926, 2);
    expected.number32(1992, 100000).number(1998, 4).number(2000, 8).number(2180, -1);
    expected.number(2182, 8);
    EXPECT_EQ(differences(sentHost(Operation::Add), expected), "");
    EXPECT_EQ(saves(), 1) << "no script, no directory";

    const HostRecord stored = siteHost(5);
    EXPECT_EQ(stored.record_number, 9);
    EXPECT_EQ(context().data.hosts.back(), stored) << "as the service numbered it";
    EXPECT_EQ(rowText(5), "setting transport Östra  skolan|skolan.example|Yes");
    EXPECT_EQ(info(), "Ready");
    EXPECT_EQ(directories().back(), "skolan");
    EXPECT_TRUE(context().link.isOpen());
}

TEST_F(HostSetupTest, ATelephonyHostFromNothing) {
    addHost([&] {
        enterNames("Väst", "vast.example", "vast");
        click("chkUseTapi");
        choose("LocationList", 2);
        choose("DeviceList", 3);
        ok();
    });
    const HostRecord sent = siteHost(5);
    EXPECT_EQ(sent.do_not_use_tapi, kTrue);
    EXPECT_EQ(sent.tapi_location.text(), "Hotell Örnsköldsvik");
    EXPECT_EQ(sent.tapi_device.text(), "Seriell kabel på COM2");
}

TEST_F(HostSetupTest, ADialUpHostFromNothing) {
    addHost([&] {
        enterNames("Nord", "nord.example", "nord-1_a.b");
        click("ConnectUsingOption1");
        enter("RasHost", "uucp.nord.example");
        enter("RasUucpPort", "540");
        enter("HostLupTm", "30");
        choose("PhoneEntries", 2);
        enter("RasUsernameTxt", "corvale");
        enter("RasPasswordTxt", "tjugofyra tecken lång å!");
        click("UseCurrentTcp");
        ok();
    });
    HostBytes expected = newHost("Nord", "nord.example", "nord-1_a.b");
    expected.number(640, 1).text(2002, 60, "uucp.nord.example").number(2062, 540).number(2064, 2);
    expected.text(2066, 30, "corvale").text(2096, 50, "tjugofyra tecken lång å!");
    expected.text(2146, 30, "Reservförbindelse").number(2176, -1).number(2178, 30);
    EXPECT_EQ(differences(sentHost(Operation::Add), expected), "");
}

TEST_F(HostSetupTest, ATcpHostFromNothing) {
    addHost([&] {
        enterNames("Syd", "syd.example", "syd");
        click("ConnectUsingOption2");
        choose("UucpProtocolLbx", 1);
        enter("UucpTimeoutTxt", "40");
        enter("RasHost", "192.0.2.7");
        enter("RasUucpPort", "32767");
        ok();
    });
    HostBytes expected = newHost("Syd", "syd.example", "syd");
    expected.number(640, 2).number(1002, 1).number(1004, 40).text(2002, 60, "192.0.2.7");
    expected.number(2062, 32767);
    EXPECT_EQ(differences(sentHost(Operation::Add), expected), "");
}

// A host as a service of another make may hold it: NULs and blanks where they are not expected,
// texts that fill their fields, numbers that no list has.
HostRecord oddHost() {
    HostRecord host = simulator::sampleSite().hosts[4];
    const auto put = [](auto& field, std::string_view bytes, char padding) {
        field = std::decay_t<decltype(field)>();
        std::fill_n(field.data(), field.width, padding);
        bytes.copy(field.data(), field.width);
    };
    put(host.spool_directory, std::string(512, '\xE5'), ' ');
    put(host.display_name, "  odd  name \xD6", '\0');
    put(host.mail_domain, std::string(60, 'd'), ' ');
    put(host.remote_uucp_name, " v\xE4xj\xF6 ", '\0');
    put(host.unnamed_672, "\x01 kept \x80", '\0');
    put(host.unnamed_1106, std::string(153, '\xFF'), ' ');
    put(host.unnamed_2184, " x", '\0');
    put(host.tapi_device, "", '\0');
    put(host.phone_number, "46\n12", '\0');
    put(host.modem_make, "", '\0');
    host.modem_make = " Make";
    host.unnamed_1958 = 77;
    host.active = 1;
    host.call_retries = -7;
    host.uucp_protocol = 9;
    host.packet_size = 0;
    host.window_size = 8;
    host.com_port = 16;
    host.parity = -3;
    host.ras_entry_position = 12;
    return host;
}

TEST_F(HostSetupTest, AHostThatIsOnlyLookedAtKeepsEveryByte) {
    change(4, [](HostRecord& host) { host = oddHost(); });
    for (int row = 0; row < 5; ++row) {
        SCOPED_TRACE(row);
        const HostRecord before = siteHost(row);
        editHost(row, [&] {
            for (const int page : {Transport, Login, LoginScript, Connection, General})
                showPage(page);
            ok();
        });
        EXPECT_EQ(differences(bytesOf(siteHost(row)), HostBytes(bytesOf(before))), "");
        EXPECT_EQ(context().data.hosts.at(static_cast<std::size_t>(row)), before);
        EXPECT_EQ(list().selectedRow(), row);
    }
    EXPECT_EQ(saves(), 7) << "two have a script";
    EXPECT_EQ(script("malmo.scp"), simulator::sampleSite().scripts[0].text.scriptText());
}

TEST_F(HostSetupTest, OnlyWhatIsChangedChanges) {
    change(4, [](HostRecord& host) { host = oddHost(); });
    const struct {
        std::function<void()> act;
        std::function<void(HostBytes&)> expected;
    } changes[] = {
        {[&] { enter("HostSetupNameTxt", "Nytt"); }, [](auto& b) { b.text(518, 60, "Nytt"); }},
        {[&] { click("ActiveHostCheck"); }, [](auto& b) { b.number(638, 0); }},
        {[&] { click("obMailTransport1"); }, [](auto& b) { b.number(2180, -1); }},
        {[&] { choose("WindowsSizeLbx", 0); }, [](auto& b) { b.number(1998, 1); }},
        {[&] { click("ConnectUsingOption0"); }, [](auto& b) { b.number(640, 0); }},
        {[&] { choose("ComPortLbx", 2); }, [](auto& b) { b.number(1914, 2); }},
        {[&] { click("chkUseTapi"); }, [](auto& b) { b.number(1518, -1); }},
        {[&] { choose("DeviceList", 0); },
         [](auto& b) { b.text(1006, 100, "Standard 33600 bps Modem"); }},
        {[&] { enter("PhoneNoTxt", "46"); }, [](auto& b) { b.text(1520, 60, "46"); }},
    };
    HostBytes expected(bytesOf(oddHost()));
    for (const auto& change : changes) {
        editHost(4, [&] {
            change.act();
            ok();
        });
        change.expected(expected);
        EXPECT_EQ(differences(bytesOf(siteHost(4)), expected), "");
    }
    EXPECT_EQ(saves(), static_cast<int>(std::size(changes)));
    EXPECT_EQ(rowText(4), "setting transport Nytt|" + std::string(60, 'd') + "|No");
}

TEST_F(HostSetupTest, AnotherPageNeedsADisplayName) {
    addHost([&] {
        for (const int page_number : {Transport, Login, LoginScript, Connection}) {
            boxes.expectBox(kExclamation, "You must select a displayname to continue!");
            click("MailDomainTxt");
            showPage(page_number);
            EXPECT_EQ(page(), General);
            EXPECT_EQ(form().focusWidget()->objectName(), "HostSetupNameTxt");
        }
        enter("HostSetupNameTxt", "  A & B ");
        for (const int page_number : {Transport, Login, LoginScript, Connection}) {
            showPage(page_number);
            EXPECT_EQ(page(), page_number);
            EXPECT_EQ(textOf(("tbHostSetupName" + std::to_string(page_number - 1)).c_str()),
                      "A & B");
        }
        enter("HostSetupNameTxt", "C");
        press(Qt::Key_T, Qt::AltModifier);
        EXPECT_EQ(page(), Transport);
        EXPECT_EQ(textOf("tbHostSetupName3"), "C");
        cancel();
    });
    EXPECT_TRUE(boxes.done());
    EXPECT_EQ(saves(), 0);
}

TEST_F(HostSetupTest, WindowAndPacketSizeBelongToTheOtherProtocols) {
    const auto sizes = [&] {
        return shown({"PackSizeLbx", "PackSizeLabel", "WindowsSizeLbx", "WinSizeLabel"}).size();
    };
    editHost(1, [&] {
        EXPECT_EQ(sizes(), 0U);
        choose("UucpProtocolLbx", 0);
        EXPECT_EQ(sizes(), 4U);
        choose("PackSizeLbx", 4);
        choose("UucpProtocolLbx", 1);
        EXPECT_EQ(sizes(), 0U);
        ok();
    });
    EXPECT_EQ(siteHost(1).packet_size, 5) << "stored all the same";
    EXPECT_EQ(siteHost(1).window_size, 7);
}

TEST_F(HostSetupTest, FramesFollowTheKindOfConnection) {
    const auto frames = [&] { return shown({"Win95ModemFrame", "ModemFrame", "RasFrame"}); };
    const auto ras_only = [&] {
        return shown({"RasUserCap", "RasUsernameTxt", "RasPasswCap", "RasPasswordTxt",
                      "UseCurrentTcp", "HostLookupCap", "HostLupTm", "HostSetTxpSecCap"})
            .size();
    };
    for (const float version : {3.9F, 4.0F}) {
        onServer([&](Server& s) { s.site().settings.service_version = version; });
        const std::string boxed = version < 4 ? "ModemFrame" : "Win95ModemFrame";
        editHost(0, [&] {
            EXPECT_EQ(frames(), Lines{"ModemFrame"});
            click("chkUseTapi");
            EXPECT_EQ(frames(), Lines{boxed});
            showPage(Connection);
            EXPECT_EQ(ras_only(), 8U);
            click("ConnectUsingOption1");
            EXPECT_EQ(frames(), Lines{"RasFrame"});
            click("ConnectUsingOption2");
            EXPECT_EQ(frames(), Lines{"RasFrame"});
            EXPECT_EQ(ras_only(), 8U) << "until the page changes";
            showPage(Connection);
            EXPECT_EQ(ras_only(), 0U);
            EXPECT_TRUE(control("RasHost")->isVisible());
            click("ConnectUsingOption1");
            EXPECT_EQ(ras_only(), 8U);
            click("ConnectUsingOption2");
            showPage(General);
            EXPECT_EQ(ras_only(), 0U);
            click("ConnectUsingOption0");
            EXPECT_EQ(frames(), Lines{boxed});
            click("chkUseTapi");
            EXPECT_EQ(frames(), Lines{"ModemFrame"});
            cancel();
        });
        context().link.Close();
        EXPECT_TRUE(isLoggedOut());
    }
}

TEST_F(HostSetupTest, AnOldServiceKeepsItsTelephonyNames) {
    onServer([](Server& s) {
        s.site().settings.service_version = 3;
        s.site().tapi_devices.clear();
    });
    const HostRecord before = siteHost(0);
    editHost(0, [&] {
        EXPECT_EQ(combo("DeviceList")->count(), 0);
        choose("ComPortLbx", 0);
        ok();
    });
    EXPECT_EQ(siteHost(0).com_port, 0);
    EXPECT_EQ(siteHost(0).tapi_device, before.tapi_device);
    EXPECT_EQ(siteHost(0).tapi_location, before.tapi_location);
}

TEST_F(HostSetupTest, TellsWhatItFetches) {
    logIn();
    Lines fetched;
    Lines saved;
    Lines added;
    fetched = statusesDuring([&] {
        editHost(0, [&] {
            EXPECT_EQ(info(), "Ready");
            fetched = {};
            cancel();
        });
    });
    Lines expected{"80 Retrieving script..."};
    expected.insert(expected.end(), 5, "60 Retrieving TAPI devices...");
    expected.insert(expected.end(), 4, "50 Retrieving TAPI locations...");
    expected.insert(expected.end(), 4, "70 Retrieving RAS settings...");
    EXPECT_EQ(fetched, expected);

    questions.expect("You have changed the 'Remote hostname'. This will\n\\                  \n"
                     "result in that the previous directory with its spoolfiles\n"
                     "will be removed. Do you wish to continue?",
                     QMessageBox::No, QMessageBox::Yes);
    editHost(0, [&] {
        enter("RemoteHostNameTxt", "lund");
        saved = statusesDuring([&] { ok(); });
    });
    EXPECT_EQ(saved, (Lines{"80 Saving script...", "100 Removing old hostdirectory...",
                            "20 Updating host..."}));
    addHost([&] {
        enterNames("New", "new.example", "new");
        added = statusesDuring([&] { ok(); });
    });
    EXPECT_EQ(added, Lines{"20 Saving new host..."});
    EXPECT_EQ(info(), "Ready");
}

TEST_F(HostSetupTest, AnIllegalSpeedBecomesTheFastest) {
    for (const Integer speed : std::initializer_list<Integer>{8, -1}) {
        change(2, [&](HostRecord& host) { host.connect_speed = speed; });
        boxes.expectBox(kExclamation, "Illegal baudrate entry!\nUsing default...");
        editHost(2, [&] {
            EXPECT_EQ(textOf("ConnectSpeedLbx"), "115200");
            ok();
        });
        EXPECT_EQ(siteHost(2).connect_speed, 7);
        context().link.Close();
        EXPECT_TRUE(isLoggedOut());
    }
}

TEST_F(HostSetupTest, DialUpEntries) {
    const auto entries = [&] {
        Lines items;
        for (int i = 0; i < combo("PhoneEntries")->count(); ++i)
            items.push_back(combo("PhoneEntries")->itemText(i).toStdString());
        return items;
    };
    editHost(1, [&] {
        EXPECT_EQ(entries(), (Lines{"Stockholm modempool", "Göteborg ISDN", "Reservförbindelse",
                                    "Do not use RAS"}));
        choose("PhoneEntries", 3);
        EXPECT_EQ(combo("PhoneEntries")->currentIndex(), -1);
        ok();
    });
    EXPECT_EQ(siteHost(1).ras_entry.text(), "");
    EXPECT_EQ(siteHost(1).ras_entry_position, -1);

    // A name that the record holds cut is still found; one at another position is not.
    onServer([](Server& s) {
        s.site().ras_entries[0] = "En post med ett alltför långt namn";
        s.site().ras_entries[2] = "Göteborg ISDN";
    });
    editHost(1, [&] {
        choose("PhoneEntries", 0);
        ok();
    });
    EXPECT_EQ(siteHost(1).ras_entry.text(), "En post med ett alltför långt");
    editHost(1, [&] {
        EXPECT_EQ(combo("PhoneEntries")->currentIndex(), 0);
        cancel();
    });
}

TEST_F(HostSetupTest, ADialUpEntryThatIsGoneIsTold) {
    onServer([](Server& s) { std::swap(s.site().ras_entries[1], s.site().ras_entries[2]); });
    boxes.expectBox(kExclamation, "The previous selected RAS entry no longer exists!");
    editHost(1, [&] {
        EXPECT_EQ(combo("PhoneEntries")->currentIndex(), -1);
        cancel();
    });

    onServer([](Server& s) { s.site().ras_entries.clear(); });
    const HostRecord before = siteHost(1);
    editHost(1, [&] {
        EXPECT_EQ(combo("PhoneEntries")->count(), 1);
        EXPECT_EQ(textOf("PhoneEntries"), "No RAS entries available");
        ok();
    });
    EXPECT_EQ(siteHost(1), before);
}

TEST_F(HostSetupTest, ANodeNameTakesItsOwnCharactersOnly) {
    editHost(2, [&] {
        enter("RemoteHostNameTxt", "a b!Z_0-9.å@ö/\\:");
        EXPECT_EQ(textOf("RemoteHostNameTxt"), "abZ_0-9.");
        press(Qt::Key_Backspace);
        EXPECT_EQ(textOf("RemoteHostNameTxt"), "abZ_0-9");
        // As AltGr on the keys of other countries.
        QTest::keyClick(control("RemoteHostNameTxt"), '@', Qt::ControlModifier | Qt::AltModifier);
        paste("RemoteHostNameTxt", " ../räv\r\n");
        EXPECT_EQ(textOf("RemoteHostNameTxt"), "abZ_0-9..rv");
        enter("LocalUUCPnameTxt", "å b");
        EXPECT_EQ(textOf("LocalUUCPnameTxt"), "å b");
        cancel();
    });
    // A name that came with others can be edited.
    change(2, [](HostRecord& host) { host.remote_uucp_name = "räv"; });
    context().link.Close();
    EXPECT_TRUE(isLoggedOut());
    editHost(2, [&] {
        click("RemoteHostNameTxt");
        press(Qt::Key_End);
        type("å2");
        EXPECT_EQ(textOf("RemoteHostNameTxt"), "räv2");
        cancel();
    });
}

TEST_F(HostSetupTest, PastedLineBreaksAreDropped) {
    editHost(2, [&] {
        for (const char* name : {"HostSetupNameTxt", "MailDomainTxt", "PhoneNoTxt", "PasswordTxt",
                                 "ScripFileNameTxt", "RasHost"}) {
            enter(name, "x");
            paste(name, QString("a\r\nb\nc\u2028") + '\r');
            EXPECT_EQ(textOf(name), "xabc");
            type("d");
            EXPECT_EQ(textOf(name), "xabcd") << "the cursor stays behind it";
        }
        cancel();
    });
}

} // namespace
} // namespace tollwick
