#include "link/little_endian.h"
#include "tests/ui/support/host_setup_test.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QFileDialog>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>

namespace tollwick {
namespace {

using simulator::Server;

class HostScriptTest : public HostSetupTest {
protected:
    QPlainTextEdit& editor() { return *control<QPlainTextEdit>("ScriptBox"); }
    // The text of a script at the service; "(none)" when there is none.
    std::string script(std::string_view name) {
        for (const ScriptRecord& script : site().scripts)
            if (script.file_name.text() == name)
                return script.text.scriptText();
        return "(none)";
    }
    // Opens the list of scripts, or that of modems; `act` closes it.
    void pick(const char* button, const Act& act) {
        inDialog([&] { play(button); }, act);
    }
    static void clickItem(QDialog& dialog, const char* name, int row, bool twice = false) {
        auto* items = child<QListWidget>(dialog, name);
        const QPoint place = items->visualItemRect(items->item(row)).center();
        QTest::mouseClick(items->viewport(), Qt::LeftButton, {}, place);
        if (twice)
            QTest::mouseDClick(items->viewport(), Qt::LeftButton, {}, place);
    }
    static std::string items(QDialog& dialog, const char* name) {
        std::string texts;
        for (int row = 0; row < child<QListWidget>(dialog, name)->count(); ++row)
            texts += child<QListWidget>(dialog, name)->item(row)->text().toStdString() + '|';
        return texts;
    }
    // Loads a local file by way of the editor's context menu.
    void loadLocal(const char* file) {
        play("ScriptBox");
        QTimer later;
        later.callOnTimeout([&] {
            if (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
                later.stop();
                QTest::mouseClick(
                    menu, Qt::LeftButton, {},
                    menu->actionGeometry(menu->findChild<QAction*>("LoadScript")).center());
            }
        });
        later.start(5);
        QContextMenuEvent event(QContextMenuEvent::Mouse, {9, 9}, editor().mapToGlobal(QPoint()));
        inDialog([&] { QApplication::sendEvent(editor().viewport(), &event); },
                 [&](QDialog& dialog) {
                     EXPECT_EQ(dialog.windowTitle(), "Load script");
                     EXPECT_EQ(dynamic_cast<QFileDialog&>(dialog).nameFilters().join('|'),
                               "Script files (*.scp)|All files (*)");
                     child<QLineEdit>(dialog, "fileNameEdit")
                         ->setText(QString::fromStdString(folder.text(file)));
                     dialog.accept();
                 });
    }
};

TEST_F(HostScriptTest, IsPickedEditedLoadedAndSaved) {
    folder.write("lokal å.scp", "set\r\n\xE5\xE4\xF6\n"); // in the code page
    folder.write("utf8.scp", "åäö");
    folder.write("huge.scp", std::string((1 << 20) + 1, 'x'));
    inForm(0, [&] {
        pick("BläddraButton", typing("\x1b"));
        play("ScripFileNameTxt?malmo.scp");
        pick("BläddraButton", [](QDialog& picker) {
            EXPECT_EQ(picker.windowTitle(), "Select script");
            EXPECT_EQ(items(picker, "FileList"), "malmo.scp|fjall.scp|standard.scp|");
            clickItem(picker, "FileList", 2, true);
        });
        play("ScripFileNameTxt?standard.scp");
        pick("BläddraButton", [](QDialog& picker) {
            clickItem(picker, "FileList", 1);
            type("\n");
        });
        EXPECT_EQ(info(), "Ready");
        play("ScripFileNameTxt?fjall.scp");
        EXPECT_TRUE(text("ScriptBox").starts_with("# Satellitlänken"));
        EXPECT_EQ(saves(), 0);

        loadLocal("lokal å.scp");
        play("ScriptBox?set\nåäö\n");
        loadLocal("utf8.scp");
        play("ScriptBox?åäö");
        boxes.expectBox(kCritical, "The script file could not be read!");
        loadLocal("huge.scp");
        play("ScriptBox");
        press(Qt::Key_Z, Qt::ControlModifier);
        press(Qt::Key_Home, Qt::ControlModifier);
        type("å\t\n");
        press(Qt::Key_Return, Qt::ShiftModifier);
        play("OkButton");
    });
    EXPECT_EQ(script("fjall.scp"), "å\t\r\n\r\nset\r\nåäö\r\n");
    EXPECT_EQ(script("malmo.scp"), simulator::sampleSite().scripts[0].text.scriptText());
    EXPECT_EQ(siteHost(0).script_file_name.text(), "fjall.scp");

    inForm(2, [&] { // a list that fails ends the connection
        refused(ObjectClass::ScriptFile,
                "Unable to retrieve Scriptfiles from the Tollwick Service!\n"
                "The connection is terminated!",
                [&] { pick("BläddraButton", typing("\x1b")); });
        EXPECT_TRUE(isLoggedOut());
        play("CancelButton");
    });
}

TEST_F(HostScriptTest, GetsAWholeNameAndIsSentAsItCame) {
    const std::string raw = "one\ntwo \r\nthree\xC2\xA0";
    onServer([&](Server& s) {
        s.site().scripts[2].text = raw;
        host(s, 2).script_file_name = "standard.scp";
    });
    inForm(2, "ScripFileNameTxt= två ord |OkButton");
    EXPECT_EQ(script("två ord.scp"), raw);
    EXPECT_EQ(siteHost(2).script_file_name.text(), "två ord.scp");
    // Edited, it has the line ends of the service, and its no-break spaces.
    inForm(2, [&] {
        play("ScriptBox");
        press(Qt::Key_End, Qt::ControlModifier);
        type("!");
        play("OkButton");
    });
    EXPECT_EQ(script("två ord.scp"), "one\r\ntwo \r\nthree\xC2\xA0!");
    // Without a name nothing is sent.
    inForm(2, "ScripFileNameTxt=  |OkButton");
    EXPECT_EQ(saves(), 5) << "of the last time only the host";
    EXPECT_EQ(siteHost(2).script_file_name.text(), "");
    // Nor one that is too large for the data block.
    const std::size_t room = 4096 - 2 - std::string("malmo.scp").size() - 2;
    folder.write("large.scp", std::string(room + 1, 'x'));
    inForm(0, [&] {
        loadLocal("large.scp");
        boxes.expectBox(kCritical, "The login script is too large to be sent to the service.\n"
                                   "Shorten it and try again.");
        play("HostSetupNameTxt|OkButton|?ScriptBox");
        EXPECT_EQ(tabs()->currentIndex(), LoginScript);
        type("\b");
        play("OkButton");
    });
    EXPECT_EQ(site().scripts[0].text.bytes().size(), room);
}

// A record of the modem catalogue, with the widths of its texts.
std::string modem(const char* make, const char* model, Long max_speed, const char* init,
                  Integer state = 0) {
    std::string bytes(6, '\0');
    storeLittleEndian(state, bytes.data());
    for (const auto& [utf8, width] : {std::pair{make, 25U},
                                      {model, 40},
                                      {init, 128},
                                      {"ATT", 30},
                                      {"HANG", 50},
                                      {"RESET", 30},
                                      {"", 30},
                                      {"DIAL", 30},
                                      {"UPPTAGET", 30}}) {
        const std::string ansi = toAnsi(utf8);
        bytes += ansi + std::string(width - ansi.size(), ' ');
    }
    bytes.resize(bytes.size() + 4);
    storeLittleEndian(max_speed, bytes.data() + bytes.size() - 4);
    return bytes + std::string(40, ' ');
}

TEST_F(HostScriptTest, AModemIsChosenFromTheCatalogue) {
    folder.write("install/MODEMS.DAT",
                 std::string("\4\0\0\0", 4) + modem("Trösta", "Snabb", 230400, "AT&F1^M") +
                     modem("Borttagen", "B", 9600, "", -1) +
                     modem("Trösta", "V.32 & mer", 33600, "") + modem("Acme", "A", 57600, "A0"));
    HostRecord expected = siteHost(0);
    const auto choosing = [](int make, int model) {
        return [=](QDialog& dialog) {
            clickItem(dialog, "List1", make);
            if (model >= 0)
                clickItem(dialog, "List2", model);
            type("\n");
        };
    };
    inForm(0, [&] {
        pick("Modems", [](QDialog& dialog) {
            clickItem(dialog, "List1", 0);
            clickItem(dialog, "List2", 0);
            type("\x1b");
        });
        pick("Modems", choosing(0, -1)); // a make without a model
        play("CurrentModemCap?None");
        pick("Modems", [](QDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(), "Modem Selection");
            EXPECT_EQ(focused(), "List1");
            EXPECT_EQ(items(dialog, "List1"), "Acme|Trösta|");
            EXPECT_EQ(items(dialog, "List2"), "");
            clickItem(dialog, "List1", 1);
            EXPECT_EQ(items(dialog, "List2"), "Snabb|V.32 & mer|");
            clickItem(dialog, "List2", 1, true);
        });
        play("CurrentModemCap?Trösta V.32 & mer|InitializationStringTxt?AT^M|"
             "ConnectSpeedLbx?19200|ConnectSpeedLbx=3");
        pick("Modems", choosing(1, 0)); // and a faster one
        EXPECT_EQ(control<QComboBox>("ConnectSpeedLbx")->count(), 8);
        play("ConnectSpeedLbx?9600");
        pick("Modems", choosing(1, 1));
        EXPECT_EQ(control<QComboBox>("ConnectSpeedLbx")->count(), 5);
        play("OkButton");
    });
    expected.modem_make_position = expected.modem_model_position = 1;
    expected.modem_make = "Trösta";
    expected.modem_model = "V.32 & mer";
    expected.modem_reset = "RESET";
    expected.modem_init = "AT^M";
    expected.modem_attention = "ATT";
    expected.modem_busy = "UPPTAGET";
    expected.modem_dial = "DIAL";
    expected.modem_hang_up = "HANG";
    expected.modem_max_speed = 33600;
    expected.connect_speed = 3;
    EXPECT_EQ(siteHost(0), expected);
}

} // namespace
} // namespace tollwick
