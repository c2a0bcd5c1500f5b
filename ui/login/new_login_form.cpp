#include "ui/login/new_login_form.h"

#include "base/text.h"
#include "ui_new_login_form.h"
#include "wire/record_packing.h"

#include <QScopeGuard>

namespace tollwick {
namespace {

constexpr Caption kCaptions[] = {{"lbUserIdUser", Text::lbUserIdUser},
                                 {"lbPassword", Text::lbPassword},
                                 {"lbPasswordAgain", Text::lbPasswordAgain}};

std::string trimmedText(const QLineEdit* edit) {
    return trimmed(edit->text().toStdString());
}

} // namespace

NewLoginForm::NewLoginForm(ConsoleContext& context, QWidget* parent)
    : ConsoleDialog(context, parent), ui_(std::make_unique<Ui::NewLoginForm>()) {
    ui_->setupUi(this);
    ui_->buttonLayout->addWidget(makeHelpButton());
    connectOkCancel(ui_->OkButton, ui_->CancelButton);
    dress(Text::NewLoginForm, kCaptions);
    takeCodePageInLines();
    showIcon(ui_->EditIcon, "lock32");
    ui_->tbUserId->setText(QString::fromStdString(context.data.user_id));
    ui_->tbUserId->setFocus();
    ui_->tbUserId->selectAll();
}

NewLoginForm::~NewLoginForm() {
    ui_->tbPassword->clear();
    ui_->tbPasswordAgain->clear();
}

void NewLoginForm::setRunning(bool running) {
    running_ = running;
    ui_->OkButton->setEnabled(!running);
    ui_->CancelButton->setEnabled(!running);
}

void NewLoginForm::accept() {
    if (!running_)
        context_.errors.guard(Routine::ChangeLogin, [&](Integer&) { save(); });
}

void NewLoginForm::reject() {
    if (!running_)
        QDialog::reject();
}

void NewLoginForm::save() {
    const std::string password = trimmedText(ui_->tbPassword);
    if (password != trimmedText(ui_->tbPasswordAgain)) {
        refuse(BoxIcon::Critical, Text::PasswordsDiffer, ui_->tbPassword);
        ui_->tbPassword->clear();
        ui_->tbPasswordAgain->clear();
        return;
    }
    const std::string user_id = trimmedText(ui_->tbUserId);
    if (!fitsBlock(LoginRecord{VarText(user_id), VarText(password)}))
        return refuse(BoxIcon::Critical, Text::SettingTooLarge, ui_->tbPassword);
    if (ui_->tbPassword->text().isEmpty()) {
        context_.prompter.beep();
        context_.prompter.critical(context_.text(Text::PasswordEmpty)); // a warning: it goes on
    }
    Integer result = kTrue;
    {
        setRunning(true);
        const auto end = qScopeGuard([this] { setRunning(false); });
        const BusyPointer busy(context_.progress);
        context_.data.user_id = user_id;
        context_.data.password = password;
        result = context_.requests.txNewLogin();
    }
    if (result != kTrue)
        QDialog::accept();
}

} // namespace tollwick
