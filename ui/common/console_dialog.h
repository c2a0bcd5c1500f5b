// What every dialog of the console has: captions by name, buttons with Help among them, and a way
// to the field at fault.
#pragma once

#include "ui/common/console_context.h"
#include "ui/common/line_input.h"

#include <QDialog>
#include <QLineEdit>

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
    // What is entered in the field goes to the service: a character that its code page lacks is
    // left out, which is told.
    template <class Field>
    void takeCodePage(Field* field) {
        filterInput(field, [this](const QString& text, bool is_whole) {
            return inCodePage(text, is_whole);
        });
    }
    // The same for all lines of the dialog.
    void takeCodePageInLines();
    // Puts a text from elsewhere into such a field, as if it had been entered.
    void setEntered(QLineEdit* edit, const QString& text) const {
        edit->setText(inCodePage(text, true));
    }
    // A button of the form, or a new one, for Ok and Cancel: it accepts or rejects the dialog.
    void connectOkCancel(QPushButton* ok, QPushButton* cancel);
    QPushButton* makeHelpButton();
    // A row with Ok, which is the default, Cancel and Help.
    QHBoxLayout* makeOkCancelRow();
    // Shows a picture of 32 pixels by its image key.
    void showIcon(QLabel* label, std::string_view image_key) const;

    // Tells why a field is refused and goes there.
    void refuse(BoxIcon icon, Text text, QWidget* field, bool beeps = true);
    // Brings up the page that holds the field, puts the focus there and selects its text.
    static void focusField(QWidget* field);
    // Runs what Ok does. A number that is too large is told in the status bar, logged, and its
    // field gets the focus.
    template <class Body>
    void guardEntry(Routine routine, Body&& body) {
        context_.guardControl(routine, [&] {
            try {
                body();
            } catch (const RunTimeError& error) {
                if (error.number() == error_number::Overflow)
                    refuseNumber(error);
                throw;
            }
        });
    }
    // The field whose number is too large.
    [[nodiscard]] virtual QWidget* fieldOf(const RunTimeError& /*error*/) const { return nullptr; }

    ConsoleContext& context_;

private:
    [[nodiscard]] QString inCodePage(const QString& text, bool is_told) const;
    void refuseNumber(const RunTimeError& error);
};

} // namespace tollwick
