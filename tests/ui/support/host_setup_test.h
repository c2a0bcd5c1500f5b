// For the tests of the host dialog: fills it in as a person does and shows what the service got.
#pragma once

#include "link/scramble.h"
#include "tests/ui/support/console_test.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPointer>
#include <QTabBar>
#include <QTabWidget>

namespace tollwick {

class HostSetupTest : public ConsoleTest {
protected:
    enum Page { General, Transport, Login, LoginScript, Connection };

    // Logs in if need be and opens the dialog on a new host, or on one of the list; `act` closes
    // it.
    void addHost(const Work& act) { inForm("AddMenu", -1, act); }
    void editHost(int row, const Work& act) { inForm("PropertiesMenu", row, act); }

    QDialog& form() { return *form_; }
    template <class Widget = QWidget>
    Widget* control(const char* name) {
        return child<Widget>(form(), name);
    }
    QComboBox* combo(const char* name) { return control<QComboBox>(name); }
    std::string text(const char* name) { return textOf(form(), name); }
    int page() { return control<QTabWidget>("SysSetupTab")->currentIndex(); }
    void showPage(int page) {
        QTabBar* bar = control<QTabWidget>("SysSetupTab")->tabBar();
        QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(page).center());
    }
    // Whether the control is not hidden itself, on whatever page it is.
    bool isShown(const char* name) { return !control(name)->isHidden(); }

    // Clicks a control on its page.
    void click(const char* name) {
        // No window manager does it here when a box over the dialog is gone.
        form().activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form_, kPatience));
        QWidget* widget = control(name);
        showPageOf(widget);
        QTest::mouseClick(widget, Qt::LeftButton, {}, {8, widget->height() / 2});
    }
    // Clicks into a line and types in place of what is there.
    void enter(const char* name, const char* text) {
        click(name);
        ASSERT_EQ(focused(), name);
        press(Qt::Key_A, Qt::ControlModifier);
        press(Qt::Key_Delete);
        type(text);
    }
    // Chooses in a list with the keyboard.
    void choose(const char* name, int position) {
        showPageOf(combo(name));
        combo(name)->setFocus();
        press(Qt::Key_Home);
        for (int i = 0; i < position; ++i)
            press(Qt::Key_Down);
    }
    // Lines are entered, lists get the position of the choice, and buttons are clicked.
    void fill(std::initializer_list<std::pair<const char*, const char*>> controls) {
        for (const auto& [name, text] : controls)
            if (qobject_cast<QLineEdit*>(control(name)))
                enter(name, text);
            else if (qobject_cast<QComboBox*>(control(name)))
                choose(name, std::stoi(text));
            else
                click(name);
    }
    // Enters what a host cannot do without.
    void enterNames(const char* display_name, const char* domain, const char* node) {
        fill({{"HostSetupNameTxt", display_name},
              {"MailDomainTxt", domain},
              {"RemoteHostNameTxt", node}});
    }
    void ok() { click("OkButton"); }
    void cancel() { click("CancelButton"); }

    // Sets a host of the service; call before the login.
    template <class Change>
    void change(int row, Change change) {
        onServer([&](auto& s) { change(s.site().hosts.at(static_cast<std::size_t>(row))); });
    }
    HostRecord siteHost(int row) { return site().hosts.at(static_cast<std::size_t>(row)); }
    // The fields of the service's latest host that are not empty, with passwords readable.
    std::string fieldsOfNewest() {
        std::string fields;
        const HostRecord host = site().hosts.back();
        forEachField<HostRecord>([&](const auto& field) {
            const auto& value = host.*field.member;
            std::string text;
            if constexpr (std::is_arithmetic_v<std::decay_t<decltype(value)>>)
                text = value == 0 ? "" : std::to_string(value);
            else if (text = value.text(); field.name.ends_with("password") && !text.empty())
                text = fromAnsi(unscramble(HostPasswordKey, withoutTrailingBlanks(value.bytes())));
            if (!text.empty())
                fields += std::string(field.name) + ' ' + text + '|';
        });
        return fields;
    }
    int hasDirectory(std::string_view name) {
        const auto all = site().spool_directories;
        return static_cast<int>(std::count(all.begin(), all.end(), VarText(name)));
    }
    // The text of a script at the service; "(none)" when there is none.
    std::string script(std::string_view name) {
        for (const ScriptRecord& script : site().scripts)
            if (script.file_name.text() == name)
                return script.text.scriptText();
        return "(none)";
    }

private:
    void inForm(const char* command, int row, const Work& act) {
        if (!console || !context().link.isOpen())
            logIn();
        clickNode("uucphosts");
        if (row >= 0)
            clickRow(row);
        inDialog([&] { trigger(command); },
                 [&](QDialog& dialog) {
                     EXPECT_EQ(dialog.objectName(), "HostSetupForm");
                     form_ = &dialog;
                     act();
                 });
    }
    void showPageOf(const QWidget* widget) {
        auto* tabs = control<QTabWidget>("SysSetupTab");
        for (QWidget* parent = widget->parentWidget(); parent; parent = parent->parentWidget())
            if (const int its_page = tabs->indexOf(parent); its_page >= 0 && its_page != page())
                showPage(its_page);
        ASSERT_TRUE(widget->isVisible() && widget->isEnabled())
            << widget->objectName().toStdString();
    }

    QPointer<QDialog> form_;
};

} // namespace tollwick
