#include "ui/dialogs/edit_form.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>

#include <algorithm>
#include <limits>

namespace tollwick {
namespace {

constexpr Caption kCaptions[] = {{"EditCaption", Text::EditCaption}};
// Pixels.
constexpr int kFieldWidth = 260;
constexpr int kAroundText = 20; // the field's frame and the cursor
constexpr int kScreenMargin = 40;

} // namespace

EditForm::EditForm(ConsoleContext& context, QWidget* parent)
    : ConsoleDialog(context, parent), icon_(new QLabel(this)), label_(new QLabel(this)),
      edit_(new QLineEdit(this)) {
    setObjectName("EditForm");
    icon_->setObjectName("EditIcon");
    label_->setObjectName("EditCaption");
    label_->setBuddy(edit_);
    edit_->setObjectName("Edittext");
    edit_->setMinimumWidth(kFieldWidth);
    // What is too long for its record is refused by who asked for it.
    edit_->setMaxLength(std::numeric_limits<int>::max());

    auto* layout = new QGridLayout(this);
    layout->addWidget(icon_, 0, 0, 2, 1, Qt::AlignTop);
    layout->addWidget(label_, 0, 1);
    layout->addWidget(edit_, 1, 1);
    layout->addLayout(makeOkCancelRow(), 2, 0, 1, 2);
    layout->setHorizontalSpacing(12);
    layout->setRowMinimumHeight(2, 40);
    dress(Text::EditForm, kCaptions);
    takeCodePageInLines();
}

void EditForm::setText(std::string_view utf8) {
    edit_->setText(toQString(utf8));
    fit();
}

void EditForm::setCaptions(Text caption, Text label, std::string_view image_key) {
    setWindowTitle(context_.caption(caption));
    label_->setText(context_.caption(label));
    showIcon(icon_, image_key);
    fit();
}

void EditForm::fit() {
    const int around_field = sizeHint().width() - kFieldWidth;
    const int most = screen()->availableGeometry().width() - kScreenMargin - around_field;
    const int needed = edit_->fontMetrics().horizontalAdvance(edit_->text()) + kAroundText;
    edit_->setMinimumWidth(std::max(kFieldWidth, std::min(needed, most)));
    layout()->activate();
    resize(sizeHint());
    edit_->setMinimumWidth(kFieldWidth); // so that it can be made narrower again
    setMaximumHeight(sizeHint().height());
}

void EditForm::showEvent(QShowEvent* event) {
    edit_->setFocus();
    edit_->selectAll();
    QDialog::showEvent(event);
}

void EditForm::accept() {
    context_.edit.EditCancelled = false;
    context_.edit.EditResult = edit_->text().toStdString();
    QDialog::accept();
}

void EditForm::reject() {
    context_.edit.EditCancelled = true;
    QDialog::reject();
}

} // namespace tollwick
