#include "ui/hostsetup/modem_form.h"

#include "base/files.h"

#include <QGridLayout>
#include <QLabel>
#include <QListWidget>

namespace tollwick {
namespace {

constexpr const char* kCatalogueFile = "MODEMS.DAT";

std::string selectedText(const QListWidget* list) {
    const QList<QListWidgetItem*> selected = list->selectedItems();
    return selected.isEmpty() ? std::string() : selected.first()->text().toStdString();
}

void select(QListWidget* list, const std::string& text) {
    const auto found = list->findItems(toQString(text), Qt::MatchExactly);
    if (!found.isEmpty())
        list->setCurrentItem(found.first());
}

QListWidget* addList(QGridLayout* layout, int column, const char* name, const QString& caption,
                     QWidget* parent) {
    auto* list = new QListWidget(parent);
    list->setObjectName(name);
    auto* label = new QLabel(caption, parent);
    label->setBuddy(list);
    list->setAccessibleName(caption);
    layout->addWidget(label, 0, column);
    layout->addWidget(list, 1, column);
    return list;
}

} // namespace

ModemForm::ModemForm(ConsoleContext& context, const CurrentModem& present, QWidget* parent)
    : ConsoleDialog(context, parent),
      catalogue_(ModemCatalogue::load(joinPath(context.install_folder, kCatalogueFile))) {
    setObjectName("ModemForm");
    auto* lists = new QGridLayout;
    makes_ = addList(lists, 0, "List1", context.caption(Text::MakeCap), this);
    models_ = addList(lists, 1, "List2", context.caption(Text::ModelCap), this);
    lists->setColumnStretch(0, 2);
    lists->setColumnStretch(1, 3);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(lists);
    layout->addLayout(makeOkCancelRow());
    dress(Text::ModemForm, {});
    resize(520, 340);

    for (const std::string& make : catalogue_.makes())
        makes_->addItem(QString::fromStdString(make));
    connect(makes_, &QListWidget::itemSelectionChanged, this, &ModemForm::showModels);
    connect(models_, &QListWidget::itemDoubleClicked, this, &ModemForm::accept);
    select(makes_, present.make);
    select(models_, present.model);
}

void ModemForm::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    makes_->setFocus();
}

void ModemForm::showModels() {
    models_->clear();
    for (const std::string& model : catalogue_.modelsOf(selectedText(makes_)))
        models_->addItem(QString::fromStdString(model));
}

std::optional<ModemForm::Choice> ModemForm::choice() const {
    const ModemRecord* found = catalogue_.find(selectedText(makes_), selectedText(models_));
    if (!found || models_->selectedItems().isEmpty())
        return {};
    const ModemRecord record = withUsualValues(*found);
    Choice choice;
    choice.modem = {record.make,
                    record.model,
                    record.reset,
                    record.attention,
                    record.busy,
                    record.connect,
                    record.dial,
                    record.hang_up,
                    record.answer,
                    record.max_speed,
                    static_cast<Integer>(makes_->currentRow()),
                    static_cast<Integer>(models_->currentRow())};
    choice.init = record.init;
    return choice;
}

} // namespace tollwick
