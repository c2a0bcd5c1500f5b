#include "ui/login/new_login_form.h"

#include "ui/common/icons.h"
#include "ui/common/line_input.h"
#include "ui/help/help_button.h"
#include "ui_new_login_form.h"

#include <QScopeGuard>

namespace tollwick {
namespace {

constexpr int kIconSize = 32; // pixels

} // namespace

NewLoginForm::NewLoginForm(ConsoleContext& context, QWidget* parent)
    : QDialog(parent), context_(context), ui_(std::make_unique<Ui::NewLoginForm>()) {
    ui_->setupUi(this);
    setWindowModality(Qt::WindowModal);
    ui_->buttonLayout->addWidget(helpButton(context, this));
    setWindowTitle(context.caption(Text::NewLoginForm));
    ui_->lbUserIdUser->setText(context.caption(Text::lbUserIdUser));
    ui_->lbPassword->setText(context.caption(Text::lbPassword));
    ui_->lbPasswordAgain->setText(context.caption(Text::lbPasswordAgain));
    ui_->OkButton->setText(context.caption(Text::Ok));
    ui_->CancelButton->setText(context.caption(Text::Cancel));
    ui_->EditIcon->setPixmap(
        imageIcon("lock32").pixmap(QSize(kIconSize, kIconSize), devicePixelRatioF()));
    ui_->tbUserId->setText(QString::fromStdString(context.data.user_id));
    ui_->tbUserId->setFocus();
    ui_->tbUserId->selectAll();
    keepLineBreaksOut(this);
    connect(ui_->OkButton, &QPushButton::clicked, this, &NewLoginForm::accept);
    connect(ui_->CancelButton, &QPushButton::clicked, this, &NewLoginForm::reject);
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
    const QString password = ui_->tbPassword->text().trimmed();
    if (password != ui_->tbPasswordAgain->text().trimmed()) {
        context_.prompter.beep();
        context_.prompter.critical(context_.text(Text::PasswordsDiffer));
        ui_->tbPassword->clear();
        ui_->tbPasswordAgain->clear();
        ui_->tbPassword->setFocus();
        return;
    }
    if (ui_->tbPassword->text().isEmpty()) {
        context_.prompter.beep();
        context_.prompter.critical(context_.text(Text::PasswordEmpty)); // a warning: it goes on
    }
    Integer result = kTrue;
    {
        setRunning(true);
        const auto end = qScopeGuard([this] { setRunning(false); });
        const BusyPointer busy(context_.progress);
        context_.data.user_id = ui_->tbUserId->text().trimmed().toStdString();
        context_.data.password = password.toStdString();
        result = context_.requests.txNewLogin();
    }
    if (result != kTrue)
        QDialog::accept();
}

} // namespace tollwick
