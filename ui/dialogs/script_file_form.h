// Lets the user pick one of the login scripts that the service knows.
#pragma once

#include "ui/common/console_dialog.h"

#include <string>

class QListWidget;

namespace tollwick {

class ScriptFileForm : public ConsoleDialog {
    Q_OBJECT
public:
    // Fetches the names from the service and selects the present one, UTF-8, if it is among them.
    // The outcome is written into the context's; Ok without a selection gives the empty text.
    ScriptFileForm(ConsoleContext& context, const std::string& present, QWidget* parent);

    void accept() override;
    void reject() override;

private:
    QListWidget* list_;
};

} // namespace tollwick
