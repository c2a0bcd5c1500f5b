// What every dialog of the console has: captions by name, buttons with Help among them, and a way
// to the field at fault.
#pragma once

#include "ui/common/console_context.h"

#include <QDialog>

#include <span>

class QHBoxLayout;
class QLabel;
class QPushButton;

namespace tollwick {

// Pixels between the buttons at the foot of a dialog. A layout within a grid of unequal spacing has
// none of its own on Windows.
inline constexpr int kButtonGap = 6;

// The text of a control, which is found by its object name.
struct Caption {
    const char* control;
    Text text;
};

class ConsoleDialog : public QDialog {
    Q_OBJECT
protected:
    ConsoleDialog(ConsoleContext& context, QWidget* parent);

    // Gives the dialog its title and its controls their captions, and keeps out of its fields what
    // they do not take. To be called once they are all there.
    void dress(Text title, std::span<const Caption> captions);
    // A button of the form, or a new one, for Ok and Cancel: it accepts or rejects the dialog.
    void connectOkCancel(QPushButton* ok, QPushButton* cancel);
    QPushButton* makeHelpButton();
    // A row with Ok, which is the default, Cancel and Help.
    QHBoxLayout* makeOkCancelRow();
    // Shows a picture of 32 pixels by its image key.
    void showIcon(QLabel* label, std::string_view image_key) const;

    // Tells why a field is refused and goes there.
    void refuse(BoxIcon icon, Text text, QWidget* field, bool beeps = true);
    // Brings up the page that holds the field and puts the focus there.
    static void focusField(QWidget* field);

    ConsoleContext& context_;
};

} // namespace tollwick
