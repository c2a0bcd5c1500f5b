// For the tests of the host dialog: fills it in as a person does and shows what the service got.
#pragma once

#include "rules/host_entry.h"
#include "tests/ui/support/console_test.h"
#include "wire/record_packing.h"
#include "wire/scramble.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPointer>
#include <QTabWidget>

namespace tollwick {

class HostSetupTest : public ConsoleTest {
protected:
    enum Page { General, Transport, Login, LoginScript, Connection };

    // Logs in if need be and opens the dialog on a new host (-1), or on one of the list; the act,
    // or the last of the steps, closes it.
    void inForm(int row, const Work& act) {
        if (!console || !context().link.isOpen())
            logIn();
        clickNode("uucphosts");
        if (row >= 0)
            clickRow(row);
        inDialog(row < 0 ? "AddMenu" : "PropertiesMenu", [&](QDialog& dialog) {
            EXPECT_EQ(dialog.objectName(), "HostSetupForm");
            form_ = &dialog;
            act();
        });
    }
    void inForm(int row, const std::string& steps) {
        inForm(row, [&] { play(steps); });
    }
    void play(const std::string& steps) { ConsoleTest::play(*form_, steps); }

    QDialog& form() { return *form_; }
    template <class Widget = QWidget>
    Widget* control(const char* name) {
        return child<Widget>(form(), name);
    }
    std::string text(const char* name) { return textOf(form(), name); }
    QTabWidget* tabs() { return control<QTabWidget>("SysSetupTab"); }
    // Of these controls, those that are not hidden themselves.
    std::string shown(std::initializer_list<const char*> names) {
        std::string left;
        for (const char* name : names)
            left += control(name)->isHidden() ? "" : name + std::string("|");
        return left;
    }

    HostRecord& host(simulator::Server& server, std::size_t row) {
        return server.site().hosts[row];
    }
    // With passwords readable, since each save scrambles them anew.
    static HostRecord readable(HostRecord host) {
        const HostEntry entry = entryOf(host);
        host.password = entry.password;
        host.uucp_password = entry.uucp_password;
        host.ras_password = entry.ras_password;
        return host;
    }
    HostRecord siteHost(int row) {
        return readable(site().hosts.at(static_cast<std::size_t>(row)));
    }
    HostRecord ownHost(int row) {
        return readable(context().data.hosts.at(static_cast<std::size_t>(row)));
    }
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

private:
    QPointer<QDialog> form_;
};

} // namespace tollwick
