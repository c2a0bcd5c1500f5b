// What the lines of a dialog take: the keyboard cannot enter all that a paste or a drop can.
#pragma once

#include <QLineEdit>
#include <QRegularExpression>

namespace tollwick {

// Drops what matches `unwanted` from each text that the user enters. `unwanted` outlives the line.
inline void keepOut(const QRegularExpression& unwanted, QLineEdit* edit) {
    QObject::connect(edit, &QLineEdit::textEdited, edit, [&unwanted, edit](QString text) {
        if (!text.contains(unwanted))
            return;
        const QString before_cursor = text.left(edit->cursorPosition()).remove(unwanted);
        edit->setText(text.remove(unwanted));
        edit->setCursorPosition(static_cast<int>(before_cursor.size()));
    });
}

// Keeps line breaks out of all lines of the dialog.
inline void keepLineBreaksOut(QWidget* dialog) {
    static const QRegularExpression line_breaks("[\\r\\n\\x{2028}\\x{2029}]");
    for (QLineEdit* edit : dialog->findChildren<QLineEdit*>())
        keepOut(line_breaks, edit);
}

} // namespace tollwick
