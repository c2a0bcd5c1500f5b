// The dialog of one field in which text and number settings are edited.
#pragma once

#include "ui/common/console_dialog.h"

class QLabel;
class QLineEdit;

namespace tollwick {

class EditForm : public ConsoleDialog {
    Q_OBJECT
public:
    // The outcome is written into the context's.
    EditForm(ConsoleContext& context, QWidget* parent);

    void setText(std::string_view utf8);
    // To be set again before each exec(). `image_key` names a picture of 32 pixels.
    void setCaptions(Text caption, Text label, std::string_view image_key);

    void accept() override;
    void reject() override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    // Makes the dialog as wide as its text needs, up to the screen; it can be made wider by hand.
    void fit();

    QLabel* icon_;
    QLabel* label_;
    QLineEdit* edit_;
};

} // namespace tollwick
