// Changes the user id and password with which consoles log in to the service.
#pragma once

#include "ui/common/console_dialog.h"

#include <memory>

namespace Ui {
class NewLoginForm;
}

namespace tollwick {

class NewLoginForm : public ConsoleDialog {
    Q_OBJECT
public:
    NewLoginForm(ConsoleContext& context, QWidget* parent);
    ~NewLoginForm() override;

    void accept() override;
    void reject() override;

private:
    void save();
    void setRunning(bool running);

    std::unique_ptr<Ui::NewLoginForm> ui_;
    bool running_ = false;
};

} // namespace tollwick
