// The page of the host dialog that names the login script and edits its text.
#pragma once

#include "ui/common/console_context.h"

#include <QObject>

#include <optional>
#include <string>

class QPoint;
class QWidget;

namespace Ui {
class HostSetupForm;
}

namespace tollwick {

class ScriptPage : public QObject {
    Q_OBJECT
public:
    // Works on the controls of `ui`, once setUp() has been called.
    ScriptPage(ConsoleContext& context, Ui::HostSetupForm& ui, QWidget& dialog);

    void setUp();
    // Shows the script of this name, UTF-8, as the service has it.
    void fetch(const std::string& file_name);
    // UTF-8 with CR LF line ends: as it was received, unless it has been edited. Nothing for a
    // script that has arrived cut.
    [[nodiscard]] std::optional<std::string> textToSend() const;

private:
    void browse();
    void showMenu(const QPoint& position);
    void loadLocal();

    ConsoleContext& context_;
    Ui::HostSetupForm& ui_;
    QWidget& dialog_;
    std::string received_;
};

} // namespace tollwick
