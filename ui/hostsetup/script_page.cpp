#include "ui/hostsetup/script_page.h"

#include "base/ansi.h"
#include "base/files.h"
#include "base/utf8.h"
#include "ui/common/file_filter.h"
#include "ui/dialogs/script_file_form.h"
#include "ui_host_setup_form.h"

#include <QFileDialog>
#include <QFontDatabase>
#include <QMenu>

#include <memory>

namespace tollwick {
namespace {

// In bytes; what the service cannot take is refused when it is saved.
constexpr std::size_t kMaxScriptFile = 1 << 20;

} // namespace

ScriptPage::ScriptPage(ConsoleContext& context, Ui::HostSetupForm& ui, QWidget& dialog)
    : context_(context), ui_(ui), dialog_(dialog) {}

void ScriptPage::setUp() {
    const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    ui_.ScriptBox->setFont(fixed);
    ui_.ScriptBox->setTabStopDistance(8 * QFontMetricsF(fixed).horizontalAdvance(' '));
    ui_.ScriptBox->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(ui_.ScriptBox, &QWidget::customContextMenuRequested, this, &ScriptPage::showMenu);
    connect(ui_.BrowseButton, &QPushButton::clicked, this,
            [this] { context_.guardControl(Routine::BrowseScripts, [&] { browse(); }); });
}

void ScriptPage::fetch(const std::string& file_name) {
    Requests::Script script{};
    context_.requests.txGetScript(file_name, script);
    if (script == Requests::Script::None)
        return;
    received_ = context_.data.script.text.scriptText();
    ui_.ScriptBox->setPlainText(QString::fromStdString(received_));
    ui_.ScriptBox->document()->setModified(false);
    ui_.ScriptBox->setReadOnly(script == Requests::Script::Cut);
    if (script == Requests::Script::Cut)
        context_.prompter.exclamation(context_.text(Text::ScriptCut));
}

std::optional<std::string> ScriptPage::textToSend() const {
    if (ui_.ScriptBox->isReadOnly())
        return {};
    if (!ui_.ScriptBox->document()->isModified())
        return received_;
    // Not the plain text: that has a blank for each no-break space.
    QString text = ui_.ScriptBox->document()->toRawText();
    for (const QChar line_end : {QChar(QChar::ParagraphSeparator), QChar(QChar::LineSeparator)})
        text.replace(line_end, QLatin1String("\r\n"));
    return text.toStdString();
}

void ScriptPage::browse() {
    const std::string present = trimmed(ui_.ScripFileNameTxt->text().toStdString());
    ScriptFileForm(context_, present, &dialog_).exec();
    const std::string name = context_.edit.EditResult;
    if (context_.edit.EditCancelled || name.empty())
        return;
    // What has been typed into the present script is not replaced by what it was before.
    if (toUpper(name) == toUpper(present) && ui_.ScriptBox->document()->isModified())
        return;
    const BusyPointer busy(context_.progress);
    ui_.ScripFileNameTxt->setText(QString::fromStdString(name));
    context_.progress.setInfo(context_.text(Text::StatusRetrievingPickedScript));
    fetch(name);
    context_.showIdle();
}

void ScriptPage::showMenu(const QPoint& position) {
    const std::unique_ptr<QMenu> menu(ui_.ScriptBox->createStandardContextMenu());
    menu->addSeparator();
    QAction* load = menu->addAction(context_.caption(Text::LoadScript));
    load->setEnabled(!ui_.ScriptBox->isReadOnly());
    load->setObjectName("LoadScript");
    connect(load, &QAction::triggered, this,
            [this] { context_.guardControl(Routine::LoadScript, [&] { loadLocal(); }); });
    menu->exec(ui_.ScriptBox->viewport()->mapToGlobal(position));
}

void ScriptPage::loadLocal() {
    const QString file =
        QFileDialog::getOpenFileName(&dialog_, context_.caption(Text::LoadScript), QString(),
                                     fileFilter(context_.text(Text::ScriptFileFilter)));
    if (file.isEmpty())
        return;
    const std::optional<std::string> bytes =
        readWholeFile(toPath(file.toStdString()), kMaxScriptFile);
    if (!bytes) {
        context_.prompter.critical(context_.text(Text::ScriptNotRead));
        return;
    }
    const QString text = toQString(isValidUtf8(*bytes) ? *bytes : fromAnsi(*bytes));
    // As one edit, so that it can be undone.
    QTextCursor all(ui_.ScriptBox->document());
    all.select(QTextCursor::Document);
    all.insertText(text);
}

} // namespace tollwick
