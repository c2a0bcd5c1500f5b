#include "ui/dialogs/script_file_form.h"

#include <QBoxLayout>
#include <QListWidget>

namespace tollwick {

ScriptFileForm::ScriptFileForm(ConsoleContext& context, const std::string& present, QWidget* parent)
    : ConsoleDialog(context, parent), list_(new QListWidget(this)) {
    setObjectName("ScriptFileForm");
    list_->setObjectName("FileList");
    list_->setAccessibleName(context.caption(Text::AccessibleFiles));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(list_);
    layout->addLayout(makeOkCancelRow());
    dress(Text::ScriptFileForm, {});
    resize(320, 260);

    connect(list_, &QListWidget::itemDoubleClicked, this, &ScriptFileForm::accept);

    const BusyPointer busy(context.progress);
    std::vector<std::string> names;
    context.requests.txGetAllScriptFile(names);
    // After a failure the names received so far are offered.
    for (const std::string& name : names)
        list_->addItem(QString::fromStdString(name));
    // Without regard to case, as the service looks for it.
    if (const auto found = list_->findItems(toQString(present), Qt::MatchFixedString);
        !found.isEmpty())
        list_->setCurrentItem(found.first());
    context.showIdle();
}

void ScriptFileForm::accept() {
    const QList<QListWidgetItem*> selected = list_->selectedItems();
    context_.edit.EditResult =
        selected.isEmpty() ? std::string() : selected.first()->text().toStdString();
    context_.edit.EditCancelled = false;
    QDialog::accept();
}

void ScriptFileForm::reject() {
    context_.edit.EditCancelled = true;
    QDialog::reject();
}

} // namespace tollwick
