#include "ui/common/console_dialog.h"

#include "base/ansi.h"
#include "ui/common/help_pages.h"
#include "ui/common/icons.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QVariant>

namespace tollwick {
namespace {

constexpr int kIconSize = 32; // pixels

} // namespace

ConsoleDialog::ConsoleDialog(ConsoleContext& context, QWidget* parent)
    : QDialog(parent), context_(context) {
    setWindowModality(Qt::WindowModal);
}

void ConsoleDialog::dress(Text title, std::span<const Caption> captions) {
    setWindowTitle(context_.caption(title));
    for (const Caption& caption : captions) {
        auto* control = findChild<QWidget*>(QString::fromUtf8(caption.control));
        Q_ASSERT(control);
        const bool is_frame = control->property("title").isValid();
        control->setProperty(is_frame ? "title" : "text", context_.caption(caption.text));
    }
    keepLineBreaksOut(this);
}

void ConsoleDialog::connectOkCancel(QPushButton* ok, QPushButton* cancel) {
    ok->setText(context_.caption(Text::Ok));
    cancel->setText(context_.caption(Text::Cancel));
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

QPushButton* ConsoleDialog::makeHelpButton() {
    auto* button = new QPushButton(context_.caption(Text::HelpButton), this);
    button->setObjectName("HelpButton");
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, [this] { context_.help.showPageOf(this); });
    return button;
}

QHBoxLayout* ConsoleDialog::makeOkCancelRow() {
    auto* ok = new QPushButton(this);
    ok->setObjectName("OkButton");
    ok->setDefault(true);
    auto* cancel = new QPushButton(this);
    cancel->setObjectName("CancelButton");
    cancel->setAutoDefault(false);
    connectOkCancel(ok, cancel);
    auto* row = new QHBoxLayout;
    row->setSpacing(kButtonGap);
    row->addStretch();
    row->addWidget(ok);
    row->addWidget(cancel);
    row->addWidget(makeHelpButton());
    return row;
}

void ConsoleDialog::showIcon(QLabel* label, std::string_view image_key) const {
    label->setPixmap(imageIcon(image_key).pixmap(QSize(kIconSize, kIconSize), devicePixelRatioF()));
}

void ConsoleDialog::refuse(BoxIcon icon, Text text, QWidget* field, bool beeps) {
    if (beeps)
        context_.prompter.beep();
    context_.prompter.tell(icon, context_.text(text));
    focusField(field);
}

void ConsoleDialog::focusField(QWidget* field) {
    for (QWidget* page = field; page; page = page->parentWidget())
        if (auto* stack = page->parentWidget())
            if (auto* tabs = qobject_cast<QTabWidget*>(stack->parentWidget()))
                tabs->setCurrentWidget(page);
    field->setFocus();
    if (auto* edit = qobject_cast<QLineEdit*>(field))
        edit->selectAll();
}

void ConsoleDialog::refuseNumber(const RunTimeError& error) {
    context_.tellOverflow();
    if (QWidget* field = fieldOf(error))
        focusField(field);
}

void ConsoleDialog::takeCodePageInLines() {
    for (QLineEdit* edit : findChildren<QLineEdit*>())
        takeCodePage(edit);
}

QString ConsoleDialog::inCodePage(const QString& text, bool is_told) const {
    std::string kept = text.toStdString();
    if (removeForeign(kept).empty())
        return text;
    // A letter and its accent may have come apart.
    kept = text.normalized(QString::NormalizationForm_C).toStdString();
    const std::string foreign = removeForeign(kept);
    if (is_told && !foreign.empty()) {
        context_.prompter.beep();
        context_.progress.setInfo(std::string(context_.text(Text::CharactersLeftOut)) + foreign);
    }
    return QString::fromStdString(kept);
}

} // namespace tollwick
