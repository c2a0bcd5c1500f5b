#include "tests/support/modem_file.h"
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
    // Opens the list of scripts, or that of modems, works it, and closes it with these keys or by a
    // double click on the item that is selected in the list with this name.
    void pick(const char* button, const std::string& steps, const std::string& close) {
        inDialog([&] { play(button); },
                 [&](QDialog& dialog) {
                     EXPECT_EQ(dialog.windowTitle(),
                               *button == 'M' ? "Modem Selection" : "Select script");
                     ConsoleTest::play(dialog, steps);
                     if (close[0] < ' ')
                         return type(close);
                     auto* list = child<QListWidget>(dialog, close.c_str());
                     QTest::mouseDClick(list->viewport(), Qt::LeftButton, {},
                                        list->visualItemRect(list->currentItem()).center());
                 });
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
        pick("BläddraButton", "FileList?malmo.scp;fjall.scp;standard.scp;", "\x1b");
        play("ScripFileNameTxt?malmo.scp");
        pick("BläddraButton", "FileList=2", "FileList");
        play("ScripFileNameTxt?standard.scp");
        pick("BläddraButton", "FileList=1", "\n");
        EXPECT_EQ(info(), "Ready");
        play("ScripFileNameTxt?fjall.scp");
        EXPECT_TRUE(text("ScriptBox").starts_with("# Satellitlänken"));
        EXPECT_EQ(saves(), 0);

        loadLocal("lokal å.scp");
        play("ScriptBox?set\nåäö\n");
        loadLocal("utf8.scp");
        play("ScriptBox?åäö");
        boxes.expectBox(kCritical, Text::ScriptNotRead);
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
    folder.write("large.scp", std::string(room + 1, '\xE5')); // a byte each
    inForm(0, [&] {
        loadLocal("large.scp");
        boxes.expectBox(kCritical, Text::ScriptTooLarge);
        play("HostSetupNameTxt|OkButton|?ScriptBox");
        EXPECT_EQ(tabs()->currentIndex(), LoginScript);
        type("\b");
        play("OkButton");
    });
    EXPECT_EQ(site().scripts[0].text.bytes().size(), room);
}

TEST_F(HostScriptTest, AModemIsChosenFromTheCatalogue) {
    folder.write(
        "install/MODEMS.DAT",
        modemFile({{.make = "Tr\xF6sta", .model = "Snabb", .max_speed = 230400},
                   {.make = "Tr\xF6sta", .model = "V.32 & mer", .init = "", .max_speed = 33600},
                   {.make = "Acme", .model = "A", .max_speed = 57600}}));
    HostRecord expected = siteHost(0);
    inForm(0, [&] {
        pick("Modems", "?List1|List1?Acme;Trösta;|List2?|List1=0|List2=0",
             "\x1b");                    // the modem of the host is in no catalogue
        pick("Modems", "List1=0", "\n"); // a make without a model
        play("CurrentModemCap?None");
        pick("Modems", "List1=1|List2?Snabb;V.32 & mer;|List2=1", "List2");
        play("CurrentModemCap?Trösta V.32 & mer|InitializationStringTxt?AT^M|"
             "ConnectSpeedLbx?19200|ConnectSpeedLbx=3");
        pick("Modems", "List1=1|List2=0", "\n"); // and a faster one
        EXPECT_EQ(control<QComboBox>("ConnectSpeedLbx")->count(), 8);
        play("ConnectSpeedLbx?9600");
        pick("Modems", "List1=1|List2=1", "\n");
        EXPECT_EQ(control<QComboBox>("ConnectSpeedLbx")->count(), 5);
        play("OkButton");
    });
    expected.modem_make_position = expected.modem_model_position = 1;
    expected.modem_make = "Trösta";
    expected.modem_model = "V.32 & mer";
    expected.modem_reset = "RESET";
    expected.modem_init = "AT^M";
    expected.modem_attention = "ATT";
    expected.modem_busy = "BUSY!";
    expected.modem_connect = "CONN";
    expected.modem_answer = "ANSWER";
    expected.modem_dial = "DIAL";
    expected.modem_hang_up = "HANG";
    expected.modem_max_speed = 33600;
    expected.connect_speed = 3;
    expected.ras_entry_position = -1;
    EXPECT_EQ(siteHost(0), expected);
}

} // namespace
} // namespace tollwick
