// Lets the user pick a modem by make and model from the catalogue.
#pragma once

#include "base/modem_catalogue.h"
#include "rules/host_entry.h"
#include "ui/common/console_dialog.h"

#include <optional>

class QListWidget;

namespace tollwick {

class ModemForm : public ConsoleDialog {
    Q_OBJECT
public:
    // Opens on the modem with this make and model, UTF-8, if the catalogue has it.
    ModemForm(ConsoleContext& context, const CurrentModem& present, QWidget* parent);

    // What was picked when the dialog was accepted, with its init string; nothing without a
    // selection.
    struct Choice {
        CurrentModem modem;
        std::string init;
    };
    [[nodiscard]] std::optional<Choice> choice() const;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void showModels();

    ModemCatalogue catalogue_;
    QListWidget* makes_;
    QListWidget* models_;
};

} // namespace tollwick
