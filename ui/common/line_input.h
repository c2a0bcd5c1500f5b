// What the fields of a dialog take: the keyboard cannot enter all that a paste or a drop can.
#pragma once

#include <QString>

#include <functional>

class QLineEdit;
class QPlainTextEdit;
class QWidget;

namespace tollwick {

// Gives the text as a field takes it. `is_whole`: it is the whole field and not a part of it.
using InputFilter = std::function<QString(const QString& text, bool is_whole)>;

// Has each text that the user enters go through the filter.
void filterInput(QLineEdit* edit, const InputFilter& filter);
// The same for an editor; what is left out can be undone together with the rest.
void filterInput(QPlainTextEdit* edit, const InputFilter& filter);

// Keeps line breaks out of all lines of the dialog.
void keepLineBreaksOut(QWidget* dialog);

} // namespace tollwick
