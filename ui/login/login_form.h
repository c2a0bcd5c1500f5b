// The login dialog.
#pragma once

#include "link/login_sequence.h"
#include "ui/common/console_dialog.h"

#include <memory>

class QPushButton;

namespace Ui {
class frmLogin;
}

namespace tollwick {

class LoginForm : public ConsoleDialog {
    Q_OBJECT
public:
    LoginForm(ConsoleContext& context, QWidget* parent);
    ~LoginForm() override;

    // Closes the link when the user gives up, and while a login runs ends that first.
    void reject() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void login();
    void finish(LoginOutcome outcome);
    void toggleOptions();
    // Has the address complete from the servers that were logged in to last.
    void completeServers();
    void showServer(const QModelIndex& server);
    // Lays the dialog out with or without the service's location.
    void layOut(bool expanded);
    void setRunning(bool running);

    std::unique_ptr<Ui::frmLogin> ui_;
    QPushButton* help_ = nullptr;
    bool running_ = false;
};

} // namespace tollwick
