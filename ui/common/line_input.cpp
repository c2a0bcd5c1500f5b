#include "ui/common/line_input.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QTextBlock>

namespace tollwick {

void filterInput(QLineEdit* edit, const InputFilter& filter) {
    QObject::connect(edit, &QLineEdit::textEdited, edit, [=] {
        const QString text = edit->text(); // another filter may have been here
        const QString kept = filter(text, true);
        if (kept == text)
            return;
        const auto cursor = filter(text.left(edit->cursorPosition()), false).size();
        edit->setText(kept);
        edit->setCursorPosition(static_cast<int>(cursor));
    });
}

void filterInput(QPlainTextEdit* edit, const InputFilter& filter) {
    QObject::connect(edit, &QPlainTextEdit::textChanged, edit, [=] {
        for (QTextBlock block = edit->document()->begin(); block.isValid(); block = block.next()) {
            const QString text = block.text();
            QStringList lines = text.split(QChar::LineSeparator); // of Shift+Enter
            for (QString& line : lines)
                line = filter(line, true);
            const QString kept = lines.join(QChar::LineSeparator);
            if (kept == text)
                continue;
            QTextCursor line(block);
            line.joinPreviousEditBlock();
            line.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
            line.insertText(kept);
            line.endEditBlock();
            return; // the change has this called anew
        }
    });
}

void keepLineBreaksOut(QWidget* dialog) {
    static const QRegularExpression line_breaks("[\\r\\n\\x{2028}\\x{2029}]");
    for (QLineEdit* edit : dialog->findChildren<QLineEdit*>())
        filterInput(edit, [](QString text, bool) { return text.remove(line_breaks); });
}

} // namespace tollwick
