// The login dialog.
#pragma once

#include "ui/main/console_context.h"

#include <QDialog>

#include <memory>

namespace Ui {
class frmLogin;
}

namespace tollwick {

class LoginForm : public QDialog {
    Q_OBJECT
public:
    LoginForm(ConsoleContext& context, QWidget* parent);
    ~LoginForm() override;

    // Closes the link when the user gives up.
    void reject() override;

private:
    void login();
    void toggleOptions();
    // Lays the dialog out with or without the service's location.
    void layOut(bool expanded);
    void setRunning(bool running);

    ConsoleContext& context_;
    std::unique_ptr<Ui::frmLogin> ui_;
    bool running_ = false;
};

} // namespace tollwick
