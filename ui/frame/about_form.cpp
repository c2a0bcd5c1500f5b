#include "ui/frame/about_form.h"

#include "base/ansi.h"
#include "base/files.h"
#include "base/utf8.h"
#include "ui/common/icons.h"

#include <QGridLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QtMath>

#include <algorithm>

namespace tollwick {
namespace {

constexpr std::size_t kMaxNoteSize = 1 << 24; // bytes
constexpr int kIconSize = 64;
constexpr int kMinColumns = 60;
constexpr int kMaxColumns = 110;
constexpr int kNoteLines = 18;

// The title ends in "V" and the version.
constexpr std::string_view kVersion = kProgramName.substr(kProgramName.rfind('V') + 1);

// The note is UTF-8; one that was edited on an old system may be in its code page.
QString readNote(const std::string& install_folder) {
    const auto note = readWholeFile(toPath(joinPath(install_folder, "note.txt")), kMaxNoteSize);
    if (!note)
        return {};
    return toQString(isValidUtf8(*note) ? *note : fromAnsi(*note));
}

QPlainTextEdit* makeNote(const ConsoleContext& context) {
    auto* note = new QPlainTextEdit(readNote(context.install_folder));
    note->setObjectName("NoteText");
    note->setAccessibleName(context.caption(Text::AboutNote));
    note->setReadOnly(true);
    note->setTabChangesFocus(true);
    // With a cursor, so that who comes by keyboard sees it.
    note->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    // Wide enough for the note's own lines, unless they are very long.
    const QFontMetrics metrics = note->fontMetrics();
    const int lines_width = metrics.size(0, note->toPlainText()).width();
    const int around = 2 * (qCeil(note->document()->documentMargin()) + note->frameWidth()) +
                       note->verticalScrollBar()->sizeHint().width() + metrics.averageCharWidth();
    note->setMinimumSize(std::clamp(lines_width, kMinColumns * metrics.averageCharWidth(),
                                    kMaxColumns * metrics.averageCharWidth()) +
                             around,
                         metrics.lineSpacing() * kNoteLines);
    return note;
}

} // namespace

AboutForm::AboutForm(ConsoleContext& context, QWidget* parent) : ConsoleDialog(context, parent) {
    setObjectName("AboutForm");
    setWindowTitle(context.caption(Text::AboutTitle));

    auto* icon = new QLabel;
    icon->setObjectName("IconImage");
    icon->setPixmap(imageIcon("tollwick").pixmap(QSize(kIconSize, kIconSize), devicePixelRatioF()));
    auto* title = new QLabel(toQString(kProgramName));
    title->setObjectName("TitleCap");
    QFont large = title->font();
    large.setBold(true);
    large.setPointSizeF(large.pointSizeF() * 1.4);
    title->setFont(large);
    auto* version = new QLabel(context.caption(Text::AboutVersion) + ' ' + toQString(kVersion));
    version->setObjectName("VersionCap");

    auto* languages = new QLabel(context.caption(Text::AboutLanguages));
    languages->setObjectName("LanguagesCap");
    auto* library = new QLabel(context.caption(Text::AboutLibrary).arg(qVersion()));
    library->setObjectName("LibraryCap");

    auto* note = makeNote(context);
    auto* ok = new QPushButton(context.caption(Text::Ok));
    ok->setObjectName("OkButton");
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);

    auto* layout = new QGridLayout(this);
    layout->setHorizontalSpacing(16);
    layout->addWidget(icon, 0, 0, 4, 1, Qt::AlignTop);
    layout->addWidget(title, 0, 1, Qt::AlignBottom);
    layout->addWidget(version, 1, 1, Qt::AlignTop);
    layout->addWidget(languages, 2, 1);
    layout->addWidget(library, 3, 1);
    layout->addWidget(note, 4, 0, 1, 2);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(kButtonGap);
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(makeHelpButton());
    layout->addLayout(buttons, 5, 0, 1, 2);
    layout->setColumnStretch(1, 1);
    layout->setRowStretch(4, 1);
    setTabOrder(note, ok);
    ok->setFocus();
}

} // namespace tollwick
