#include "link/little_endian.h"
#include "tests/ui/support/host_setup_test.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QFileDialog>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTimer>

namespace tollwick {
namespace {

using simulator::Server;

constexpr auto kCritical = QMessageBox::Critical;

class HostScriptTest : public HostSetupTest {
protected:
    QPlainTextEdit& editor() { return *control<QPlainTextEdit>("ScriptBox"); }
    std::string edited() { return editor().toPlainText().toStdString(); }
    // Opens the list of scripts; `act` closes it.
    void pick(const Act& act) {
        inChild([this] { click("BläddraButton"); }, act);
    }
    static void clickItem(QDialog& dialog, const char* name, int row) {
        auto* items = child<QListWidget>(dialog, name);
        QTest::mouseClick(items->viewport(), Qt::LeftButton, {},
                          items->visualItemRect(items->item(row)).center());
    }
    static Lines items(QDialog& dialog, const char* name) {
        auto* list = child<QListWidget>(dialog, name);
        Lines texts;
        for (int row = 0; row < list->count(); ++row)
            texts.push_back(list->item(row)->text().toStdString());
        return texts;
    }
    // Replaces the script.
    void pasteScript(const QString& text) {
        QApplication::clipboard()->setText(text);
        click("ScriptBox");
        press(Qt::Key_A, Qt::ControlModifier);
        press(Qt::Key_V, Qt::ControlModifier);
    }
    // Clicks an entry of the editor's context menu.
    void clickInScriptMenu(const char* name) {
        showPage(LoginScript);
        QTimer later;
        later.callOnTimeout([&] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            if (!menu)
                return;
            later.stop();
            QTest::mouseClick(menu, Qt::LeftButton, {},
                              menu->actionGeometry(menu->findChild<QAction*>(name)).center());
        });
        later.start(5);
        QContextMenuEvent event(QContextMenuEvent::Mouse, {9, 9},
                                editor().viewport()->mapToGlobal(QPoint(9, 9)));
        QApplication::sendEvent(editor().viewport(), &event);
    }
    void loadLocal(const std::string& file) {
        inChild([this] { clickInScriptMenu("LoadScript"); },
                [&](QDialog& dialog) {
                    EXPECT_EQ(dialog.windowTitle(), "Load script");
                    auto& files = dynamic_cast<QFileDialog&>(dialog);
                    EXPECT_EQ(files.nameFilters(),
                              (QStringList{"Script files (*.scp)", "All files (*)"}));
                    child<QLineEdit>(dialog, "fileNameEdit")->setText(QString::fromStdString(file));
                    dialog.accept();
                });
    }
};

TEST_F(HostScriptTest, IsPickedEditedAndSaved) {
    editHost(0, [&] {
        EXPECT_TRUE(edited().starts_with("# Växeln i Malmö\nwaitfor"));
        const Lines told = statusesDuring([&] {
            pick([](QDialog& picker) {
                EXPECT_EQ(picker.objectName(), "ScriptFileForm");
                EXPECT_EQ(picker.windowTitle(), "Select script");
                EXPECT_FALSE(QApplication::overrideCursor());
                EXPECT_EQ(items(picker, "FileList"),
                          (Lines{"malmo.scp", "fjall.scp", "standard.scp"}));
                clickItem(picker, "FileList", 1);
                press(Qt::Key_Return);
            });
        });
        Lines expected(4, "90 Retrieving scriptfiles...");
        expected.emplace_back("80 Retrieving script...");
        EXPECT_EQ(told, expected);
        EXPECT_EQ(info(), "Ready");
        EXPECT_EQ(textOf("ScripFileNameTxt"), "fjall.scp");
        EXPECT_TRUE(edited().starts_with("# Satellitlänken")) << edited();

        click("ScriptBox");
        press(Qt::Key_Home, Qt::ControlModifier);
        type("å");
        press(Qt::Key_Tab);
        EXPECT_EQ(focused(), "ScriptBox");
        press(Qt::Key_Return);
        press(Qt::Key_Return, Qt::ShiftModifier);
        ok();
    });
    EXPECT_EQ(script("fjall.scp"), "å\t\r\n\r\n# Satellitlänken svarar långsamt\r\n"
                                   "set timeout 90\r\nwaitfor \"Anslut:\"\r\n"
                                   "transmit \"uucp^M\"\r\n");
    EXPECT_EQ(script("malmo.scp"), simulator::sampleSite().scripts[0].text.scriptText());
    EXPECT_EQ(siteHost(0).script_file_name.text(), "fjall.scp");
}

TEST_F(HostScriptTest, PickingChangesNothingBeforeOk) {
    editHost(0, [&] {
        pick([](QDialog& picker) { QTest::keyClick(&picker, Qt::Key_Escape); });
        EXPECT_EQ(textOf("ScripFileNameTxt"), "malmo.scp");
        pick([](QDialog& picker) {
            auto* files = child<QListWidget>(picker, "FileList");
            const QPoint place = files->visualItemRect(files->item(2)).center();
            QTest::mouseClick(files->viewport(), Qt::LeftButton, {}, place);
            QTest::mouseDClick(files->viewport(), Qt::LeftButton, {}, place);
        });
        EXPECT_EQ(textOf("ScripFileNameTxt"), "standard.scp");
        // Ok without a choice is an empty choice.
        onServer([](Server& s) { s.site().scripts.clear(); });
        const std::string text = edited();
        pick([](QDialog& picker) {
            EXPECT_EQ(items(picker, "FileList"), Lines());
            QTest::keyClick(&picker, Qt::Key_Return);
        });
        EXPECT_EQ(textOf("ScripFileNameTxt"), "");
        EXPECT_EQ(edited(), text);
        cancel();
    });
    EXPECT_EQ(saves(), 0);
}

TEST_F(HostScriptTest, AListThatFailsEndsTheConnection) {
    onServer([](Server& s) { s.site().hosts[2].script_file_name = ""; });
    editHost(2, [&] {
        failing(Failure::Refused, ObjectClass::ScriptFile,
                "Unable to retrieve Scriptfiles from the Tollwick Service!\n"
                "The connection is terminated!",
                [&] {
                    pick([&](QDialog& picker) {
                        EXPECT_FALSE(context().link.isOpen());
                        QTest::keyClick(&picker, Qt::Key_Escape);
                    });
                });
        EXPECT_TRUE(isLoggedOut());
        cancel();
    });
}

TEST_F(HostScriptTest, GetsAWholeNameAndIsSentAsItCame) {
    const std::string raw = "one\ntwo \r\nthree\xC2\xA0";
    onServer([&](Server& s) {
        s.site().scripts[2].text = raw;
        s.site().hosts[2].script_file_name = "standard.scp";
    });
    const std::pair<const char*, const char*> names[] = {
        {" två ord ", "två ord.scp"}, {"login.", "login.scp"}, {"LOGIN2.SCP", "LOGIN2.SCP"}};
    for (const auto& [typed, completed] : names) {
        editHost(2, [&] {
            enter("ScripFileNameTxt", typed);
            if (completed != names[0].second)
                editor().setPlainText(QString::fromStdString(raw));
            ok();
        });
        EXPECT_EQ(script(completed), raw);
        EXPECT_EQ(siteHost(2).script_file_name.text(), completed);
        change(2, [](HostRecord& host) { host.script_file_name = "standard.scp"; });
    }
    // Edited, it has the line ends of the service, and its no-break spaces.
    editHost(2, [&] {
        click("ScriptBox");
        press(Qt::Key_End, Qt::ControlModifier);
        type("!");
        enter("ScripFileNameTxt", "edited");
        ok();
    });
    EXPECT_EQ(script("edited.scp"), "one\r\ntwo \r\nthree\xC2\xA0!");

    // Without a name nothing is sent.
    const int scripts = requestCount(ObjectClass::Script);
    editHost(2, [&] {
        enter("ScripFileNameTxt", "  ");
        ok();
    });
    EXPECT_EQ(requestCount(ObjectClass::Script), scripts + 1) << "only the one at the start";
    EXPECT_EQ(siteHost(2).script_file_name.text(), "");
}

TEST_F(HostScriptTest, ThatIsTooLargeIsNotSent) {
    const std::size_t room = 4096 - 2 - std::string("malmo.scp").size() - 2;
    editHost(0, [&] {
        pasteScript(QString(static_cast<int>(room) - 1, u'å') + '\n');
        boxes.expectBox(kCritical, "The login script is too large to be sent to the service.\n"
                                   "Shorten it and try again.");
        showPage(General);
        ok();
        EXPECT_EQ(page(), LoginScript);
        EXPECT_EQ(form().focusWidget()->objectName(), "ScriptBox");
        EXPECT_EQ(saves(), 0);
        click("ScriptBox");
        press(Qt::Key_Home, Qt::ControlModifier);
        press(Qt::Key_Delete);
        ok();
    });
    EXPECT_EQ(site().scripts[0].text.bytes().size(), room);
    EXPECT_EQ(saves(), 2);
}

TEST_F(HostScriptTest, CanComeFromALocalFile) {
    folder.write("lokal å.scp", "set\r\n\xE5\xE4\xF6\n"); // in the code page
    folder.write("utf8.scp", "åäö");
    folder.write("huge.scp", std::string((1 << 20) + 1, 'x'));
    editHost(0, [&] {
        loadLocal(folder.text("lokal å.scp"));
        EXPECT_EQ(edited(), "set\nåäö\n");
        EXPECT_EQ(textOf("ScripFileNameTxt"), "malmo.scp");
        loadLocal(folder.text("utf8.scp"));
        EXPECT_EQ(edited(), "åäö");
        boxes.expectBox(kCritical, "The script file could not be read!");
        loadLocal(folder.text("huge.scp"));
        EXPECT_EQ(edited(), "åäö");
        click("ScriptBox");
        press(Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(edited(), "set\nåäö\n");
        ok();
    });
    EXPECT_EQ(script("malmo.scp"), "set\r\nåäö\r\n");
}

// A record of the modem catalogue.
std::string modem(const char* make, const char* model, Long max_speed, const char* init,
                  Integer state = 0) {
    std::string bytes(6, '\0');
    storeLittleEndian(state, bytes.data());
    const auto add = [&](std::string_view utf8, std::size_t width) {
        std::string text = toAnsi(utf8);
        text.resize(width, ' ');
        bytes += text;
    };
    add(make, 25);
    add(model, 40);
    add(init, 128);
    add("ATT", 30);
    add("HANG", 50);
    add("RESET", 30);
    add("", 30); // answer
    add("DIAL", 30);
    add("UPPTAGET", 30);
    bytes.resize(bytes.size() + 4);
    storeLittleEndian(max_speed, bytes.data() + bytes.size() - 4);
    add("", 40); // connect
    return bytes;
}

class HostModemTest : public HostScriptTest {
protected:
    void writeCatalogue() {
        folder.write("install/MODEMS.DAT", std::string("\5\0\0\0", 4) +
                                               modem("Zeta", "Z", 300, "Z0") +
                                               modem("Trösta", "Snabb", 230400, "AT&F1^M") +
                                               modem("Borttagen", "B", 9600, "", -1) +
                                               modem("Trösta", "V.32 & mer", 33600, "") +
                                               modem("Acme", "A", 57600, "A0"));
    }
    void chooseModem(const Act& act) {
        inChild([this] { click("Modems"); }, act);
    }
    Act choosing(int make, int model) {
        return [=](QDialog& dialog) {
            clickItem(dialog, "List1", make);
            clickItem(dialog, "List2", model);
            press(Qt::Key_Return);
        };
    }
};

TEST_F(HostModemTest, IsChosenFromTheCatalogue) {
    writeCatalogue();
    const HostRecord before = siteHost(0);
    editHost(0, [&] {
        chooseModem([](QDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(), "Modem Selection");
            EXPECT_EQ(focused(), "List1");
            EXPECT_EQ(items(dialog, "List1"), (Lines{"Acme", "Trösta", "Zeta"}));
            EXPECT_EQ(items(dialog, "List2"), Lines());
            clickItem(dialog, "List1", 1);
            EXPECT_EQ(items(dialog, "List2"), (Lines{"Snabb", "V.32 & mer"}));
            auto* models = child<QListWidget>(dialog, "List2");
            const QPoint place = models->visualItemRect(models->item(1)).center();
            QTest::mouseClick(models->viewport(), Qt::LeftButton, {}, place);
            QTest::mouseDClick(models->viewport(), Qt::LeftButton, {}, place);
        });
        EXPECT_EQ(textOf("CurrentModemCap"), "Trösta V.32 & mer");
        EXPECT_EQ(textOf("InitializationStringTxt"), "AT^M");
        EXPECT_EQ(control<QLineEdit>("InitializationStringTxt")->cursorPosition(), 0);
        EXPECT_EQ(combo("ConnectSpeedLbx")->count(), 5);
        EXPECT_EQ(textOf("ConnectSpeedLbx"), "19200") << "the fastest that is left";
        choose("ConnectSpeedLbx", 3);
        chooseModem(choosing(1, 0)); // and a faster one
        EXPECT_EQ(combo("ConnectSpeedLbx")->count(), 8);
        EXPECT_EQ(textOf("ConnectSpeedLbx"), "9600") << "the position is kept";
        chooseModem(choosing(1, 1));
        EXPECT_EQ(textOf("ConnectSpeedLbx"), "9600");
        ok();
    });
    HostBytes expected(bytesOf(before));
    expected.number(1580, 1).number(1582, 1).text(1584, 30, "Trösta").text(1614, 30, "V.32 & mer");
    expected.text(1644, 30, "RESET").text(1674, 60, "AT^M").text(1734, 30, "ATT");
    expected.text(1764, 30, "UPPTAGET").text(1794, 30, "CONNECT").text(1824, 30, "DIAL");
    expected.text(1854, 30, "HANG").text(1884, 30, "ATA^M").number32(1916, 33600).number(1920, 3);
    EXPECT_EQ(differences(bytesOf(siteHost(0)), expected), "");
}

TEST_F(HostModemTest, IsKeptWithoutAChoice) {
    writeCatalogue();
    const HostRecord before = siteHost(0);
    editHost(0, [&] {
        chooseModem([](QDialog& dialog) {
            clickItem(dialog, "List1", 0);
            clickItem(dialog, "List2", 0);
            press(Qt::Key_Escape);
        });
        chooseModem([](QDialog& dialog) {
            clickItem(dialog, "List1", 0);
            press(Qt::Key_Return); // a make without a model
        });
        EXPECT_EQ(textOf("CurrentModemCap"), "None");
        EXPECT_EQ(combo("ConnectSpeedLbx")->count(), 8);

        // A catalogue without a modem.
        folder.write("install/MODEMS.DAT", "");
        for (int i = 0; i < 2; ++i) {
            chooseModem([](QDialog& dialog) {
                EXPECT_EQ(items(dialog, "List1"), Lines());
                press(Qt::Key_Return);
            });
            EXPECT_EQ(folder.read("install/MODEMS.DAT"), "(missing)");
        }
        ok();
    });
    EXPECT_EQ(siteHost(0), before);
}

} // namespace
} // namespace tollwick
