#include "ui/hostsetup/host_setup_form.h"

#include "base/text.h"
#include "link/host_saver.h"
#include "ui/hostsetup/host_captions.h"
#include "ui/hostsetup/host_fields.h"
#include "ui/hostsetup/modem_form.h"
#include "ui_host_setup_form.h"

#include <QKeyEvent>
#include <QRegularExpression>

#include <algorithm>

namespace tollwick {
namespace {

// Item data of the dial-up list: the entries of the service, and two items that are none.
constexpr int kRasEntry = 0;
constexpr int kDoNotUseRas = -1;
constexpr int kNoRasEntries = -2;

void fill(QComboBox* combo, const std::vector<std::string>& items) {
    combo->clear();
    for (const std::string& item : items)
        combo->addItem(QString::fromStdString(item));
}

// What isNodeNameCharacter() keeps a key from entering, for pastes and drops.
const QRegularExpression& noNodeNameCharacters() {
    static const QRegularExpression others("[^0-9A-Za-z_.-]");
    return others;
}

// Spares the layout what changes nothing.
void setShown(QWidget* widget, bool is_shown) {
    if (widget->isHidden() == is_shown)
        widget->setVisible(is_shown);
}

void withoutMnemonic(QAbstractButton* button) {
    button->setText(button->text().remove('&'));
}

} // namespace

HostSetupForm::HostSetupForm(ConsoleContext& context, QWidget* parent)
    : ConsoleDialog(context, parent), ui_(std::make_unique<Ui::HostSetupForm>()),
      lists_(context.texts), script_(context, *ui_, *this) {
    ui_->setupUi(this);
    ui_->buttonLayout->addWidget(makeHelpButton());
    connectOkCancel(ui_->OkButton, ui_->CancelButton);
    ui_->BrowseButton->setObjectName(QString::fromUtf8("BläddraButton"));
    setCaptions();
    setUpControls();
    fillLists();
    SetComSpeeds();
    connectSignals();
    ui_->HostSetupNameTxt->setFocus();
    // Asked for now, as a widget keeps its size hint: the dialog comes up faster then.
    for (const QLabel* label : findChildren<QLabel*>())
        label->sizeHint();
    for (const QAbstractButton* button : findChildren<QAbstractButton*>())
        button->sizeHint();
}

HostSetupForm::~HostSetupForm() {
    for (QLineEdit* password : {ui_->PasswordTxt, ui_->UucpPasswordTxt, ui_->RasPasswordTxt})
        password->clear();
}

void HostSetupForm::setCaptions() {
    dress(Text::HostSetupForm, hostCaptions());
    for (int page = 0; const Text caption : {Text::TabGeneral, Text::TabTransport, Text::TabLogin,
                                             Text::TabLoginScript, Text::TabConnection})
        ui_->SysSetupTab->setTabText(page++, context_.caption(caption));
    ui_->BrowseButton->setAccessibleName(context_.caption(Text::AccessibleBrowse));
    ui_->ScriptBox->setAccessibleName(context_.caption(Text::AccessibleScript));
    ui_->tbMailLimit->setAccessibleName(context_.caption(Text::AccessibleMailLimit));
    // Their letters belong to pages of the dialog; Escape cancels.
    withoutMnemonic(ui_->CancelButton);
    withoutMnemonic(ui_->LocationButton);
}

void HostSetupForm::setUpControls() {
    // What they would set belongs to the machine that the service runs on.
    ui_->LocationButton->setEnabled(false);
    ui_->DeviceButton->setEnabled(false);
    script_.setUp();
}

void HostSetupForm::fillLists() {
    fill(ui_->UucpProtocolLbx, lists_.protocols);
    fill(ui_->PackSizeLbx, lists_.packet_sizes);
    fill(ui_->WindowsSizeLbx, lists_.window_sizes);
    fill(ui_->ComPortLbx, lists_.com_ports);
    fill(ui_->DataBitsLbx, lists_.data_bits);
    fill(ui_->StopBitsLbx, lists_.stop_bits);
    fill(ui_->ParityLbx, lists_.parities);
}

void HostSetupForm::SetComSpeeds() {
    fill(ui_->ConnectSpeedLbx, lists_.speeds);
}

void HostSetupForm::connectSignals() {
    connect(ui_->SysSetupTab, &QTabWidget::currentChanged, this, &HostSetupForm::pageChanged);
    connect(ui_->UucpProtocolLbx, &QComboBox::currentIndexChanged, this,
            &HostSetupForm::protocolChanged);
    for (QRadioButton* option :
         {ui_->ConnectUsingOption0, ui_->ConnectUsingOption1, ui_->ConnectUsingOption2})
        connect(option, &QRadioButton::clicked, this, &HostSetupForm::SetConnectFrames);
    connect(ui_->chkUseTapi, &QCheckBox::clicked, this, &HostSetupForm::SetConnectFrames);
    for (QComboBox* list : {ui_->LocationList, ui_->DeviceList})
        connect(list, &QComboBox::activated, this, &HostSetupForm::ChangeTapiDataFromLists);
    connect(ui_->PhoneEntries, &QComboBox::activated, this, &HostSetupForm::rasEntryChosen);
    connect(ui_->Modems, &QPushButton::clicked, this,
            [this] { context_.guardControl(Routine::ChooseModem, [&] { chooseModem(); }); });
    takeCodePageInLines();
    takeCodePage(ui_->ScriptBox);
    ui_->RemoteHostNameTxt->installEventFilter(this);
}

bool HostSetupForm::eventFilter(QObject* watched, QEvent* event) {
    if (watched == ui_->RemoteHostNameTxt && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const QString text = key->text();
        // Ctrl makes it a shortcut; Ctrl and Alt together are AltGr.
        const bool is_shortcut =
            (key->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) == Qt::ControlModifier;
        const bool types = !text.isEmpty() && text[0].isPrint() && !is_shortcut;
        if (types && !isNodeNameCharacter(text[0].unicode()))
            return true;
    }
    return QDialog::eventFilter(watched, event);
}

void HostSetupForm::ShowAllData() {
    const BusyPointer busy(context_.progress);
    entry_ = entryOf(context_.data.current_host);
    showEntry();
    fetchLists();
    SetConnectFrames();
    protocolChanged();
    // A name that came with other characters can still be edited.
    if (!ui_->RemoteHostNameTxt->text().contains(noNodeNameCharacters()))
        filterInput(ui_->RemoteHostNameTxt,
                    [](QString text, bool) { return text.remove(noNodeNameCharacters()); });
    layOutAnew();
}

void HostSetupForm::layOutAnew() {
    const QList<QWidget*> widgets = findChildren<QWidget*>(); // from the outermost on
    for (auto widget = widgets.crbegin(); widget != widgets.crend(); ++widget)
        if (QLayout* layout = (*widget)->layout())
            layout->activate();
    ui_->SysSetupTab->updateGeometry(); // which does not hear of its pages before it is shown
    adjustSize();
}

void HostSetupForm::showEntry() {
    showFields(entry_, *ui_);
    for (const auto& [position, option] : {std::pair{0, ui_->ConnectUsingOption0},
                                           {1, ui_->ConnectUsingOption1},
                                           {2, ui_->ConnectUsingOption2}})
        option->setChecked(entry_.connect_using.index == position);
    ui_->CurrentModemCap->setText(toQString(trimmed(entry_.modem.make + ' ' + entry_.modem.model)));
}

void HostSetupForm::fetchLists() {
    std::vector<std::string> devices;
    std::vector<std::string> locations;
    std::vector<std::string> ras_entries;
    context_.progress.setInfo(context_.text(Text::StatusRetrievingScript));
    script_.fetch(entry_.script_file_name);
    Requests& requests = context_.requests;
    const bool fetched = context_.link.isOpen() &&
                         !hasFailed(requests.txGetAllTapiDevices(devices)) &&
                         !hasFailed(requests.txGetAllTapiLocations(locations)) &&
                         !hasFailed(requests.txGetAllRasEntries(ras_entries));
    const auto show = [](QComboBox* list, const std::vector<std::string>& names, auto field,
                         const std::string& stored) {
        fill(list, names);
        const auto found = std::find_if(names.begin(), names.end(), [&](const std::string& name) {
            return asStored(name, field) == stored;
        });
        list->setCurrentIndex(found == names.end() ? -1 : static_cast<int>(found - names.begin()));
    };
    show(ui_->DeviceList, devices, &HostRecord::tapi_device, entry_.tapi_device);
    show(ui_->LocationList, locations, &HostRecord::tapi_location, entry_.tapi_location);
    showConnectSpeed(); // whose box comes before that of the dial-up entries
    showRasEntries(ras_entries, fetched);
    if (fetched)
        context_.progress.setInfo(context_.text(Text::Ready));
}

void HostSetupForm::showRasEntries(const std::vector<std::string>& names, bool are_all) {
    QComboBox* list = ui_->PhoneEntries;
    for (const std::string& name : names)
        list->addItem(QString::fromStdString(name), kRasEntry);
    if (names.empty()) {
        list->addItem(context_.caption(Text::NoRasEntries), kNoRasEntries);
        list->setCurrentIndex(0);
        return;
    }
    list->addItem(context_.caption(Text::DoNotUseRas), kDoNotUseRas);
    const RasChoice& stored = entry_.ras_entry;
    const auto position = static_cast<std::size_t>(stored.position);
    const bool is_there = stored.position >= 0 && position < names.size() &&
                          asStored(names[position], &HostRecord::ras_entry) == stored.name;
    list->setCurrentIndex(is_there ? stored.position : -1);
    if (!is_there && are_all && !stored.name.empty())
        context_.prompter.exclamation(context_.text(Text::RasEntryGone));
}

void HostSetupForm::showConnectSpeed() {
    const int position = entry_.connect_speed.index;
    const bool is_legal = position >= 0 && position < ui_->ConnectSpeedLbx->count();
    if (!is_legal)
        context_.prompter.exclamation(std::string(context_.text(Text::IllegalBaudrate)) + "\r\n" +
                                      std::string(context_.text(Text::UsingDefault)));
    ui_->ConnectSpeedLbx->setCurrentIndex(is_legal ? position : ui_->ConnectSpeedLbx->count() - 1);
}

int HostSetupForm::connectUsing() const {
    if (ui_->ConnectUsingOption0->isChecked())
        return 0;
    if (ui_->ConnectUsingOption1->isChecked())
        return 1;
    return ui_->ConnectUsingOption2->isChecked() ? 2 : entry_.connect_using.index;
}

HostEntry HostSetupForm::entry() const {
    HostEntry entry = entry_;
    takeFields(*ui_, entry);
    entry.connect_using.index = connectUsing();
    entry.tapi_device = trimmed(ui_->DeviceList->currentText().toStdString());
    entry.tapi_location = trimmed(ui_->LocationList->currentText().toStdString());
    entry.connect_speed.index = ui_->ConnectSpeedLbx->currentIndex();
    const QComboBox* ras = ui_->PhoneEntries;
    if (ras->currentIndex() < 0)
        entry.ras_entry = RasChoice();
    else if (ras->currentData().toInt() == kRasEntry)
        entry.ras_entry = {ras->currentIndex(), trimmed(ras->currentText().toStdString())};
    return entry;
}

void HostSetupForm::SetConnectFrames() {
    const ConnectFrames frames = connectFrames(connectUsing(), ui_->chkUseTapi->isChecked(),
                                               context_.data.settings.service_version);
    setShown(ui_->Win95ModemFrame, frames.telephony);
    setShown(ui_->ModemFrame, frames.modem);
    setShown(ui_->RasFrame, frames.ras);
    if (frames.ras_only)
        setRasOnlyVisible(*frames.ras_only);
}

void HostSetupForm::setRasOnlyVisible(bool visible) {
    for (QWidget* widget : std::initializer_list<QWidget*>{
             ui_->RasUserCap, ui_->RasUsernameTxt, ui_->RasPasswCap, ui_->RasPasswordTxt,
             ui_->UseCurrentTcp, ui_->HostLookupCap, ui_->HostLupTm, ui_->HostSetTxpSecCap})
        setShown(widget, visible);
}

void HostSetupForm::ChangeTapiDataFromLists() {
    if (ui_->LocationList->currentIndex() >= 0)
        entry_.tapi_location = trimmed(ui_->LocationList->currentText().toStdString());
    if (ui_->DeviceList->currentIndex() >= 0)
        entry_.tapi_device = trimmed(ui_->DeviceList->currentText().toStdString());
}

void HostSetupForm::protocolChanged() {
    const bool sizes_count = ui_->UucpProtocolLbx->currentIndex() != kProtocolT;
    for (QWidget* widget : std::initializer_list<QWidget*>{ui_->PackSizeLabel, ui_->PackSizeLbx,
                                                           ui_->WinSizeLabel, ui_->WindowsSizeLbx})
        setShown(widget, sizes_count);
}

void HostSetupForm::pageChanged(int page) {
    setProperty(kHelpTopicProperty, ui_->SysSetupTab->widget(page)->objectName());
    const std::string name = trimmed(ui_->HostSetupNameTxt->text().toStdString());
    if (name.empty() && page != 0) {
        ui_->SysSetupTab->setCurrentIndex(0);
        return refuse(BoxIcon::Exclamation, Text::DisplayNameMissing, ui_->HostSetupNameTxt, false);
    }
    for (QLabel* header : {ui_->tbHostSetupName0, ui_->tbHostSetupName1, ui_->tbHostSetupName2,
                           ui_->tbHostSetupName3})
        header->setText(QString::fromStdString(name));
    setRasOnlyVisible(rasOnlyShownOnPageChange(connectUsing()));
}

void HostSetupForm::rasEntryChosen(int position) {
    if (ui_->PhoneEntries->itemData(position).toInt() == kDoNotUseRas)
        ui_->PhoneEntries->setCurrentIndex(-1);
}

void HostSetupForm::chooseModem() {
    ModemForm form(context_, entry_.modem, this);
    form.exec();
    const std::optional<ModemForm::Choice> choice =
        form.result() == QDialog::Accepted ? form.choice() : std::nullopt;
    if (!choice)
        return;
    entry_.modem = choice->modem;
    const int before = ui_->ConnectSpeedLbx->currentIndex();
    SetComSpeeds();
    ui_->InitializationStringTxt->setText(toQString(trimmed(choice->init)));
    ui_->InitializationStringTxt->setCursorPosition(0);
    ui_->CurrentModemCap->setText(toQString(trimmed(entry_.modem.make) + ' ' + entry_.modem.model));
    const auto usable = static_cast<int>(usableSpeeds(lists_.speeds, entry_.modem.max_speed));
    while (ui_->ConnectSpeedLbx->count() > usable)
        ui_->ConnectSpeedLbx->removeItem(ui_->ConnectSpeedLbx->count() - 1);
    ui_->ConnectSpeedLbx->setCurrentIndex(before >= 0 && before < usable ? before : usable - 1);
}

QWidget* HostSetupForm::fieldOf(const RunTimeError& error) const {
    const auto* of_host = dynamic_cast<const HostNumberError*>(&error);
    return of_host ? controlOf(of_host->field(), *ui_) : nullptr;
}

void HostSetupForm::accept() {
    guardEntry(Routine::SaveHost, [&] { save(); });
}

void HostSetupForm::save() {
    HostSaveResult result{};
    {
        const BusyPointer busy(context_.progress);
        result = HostSaver(context_).save(entry(), script_.textToSend());
    }
    switch (result.outcome) {
    case HostSaveOutcome::Refused:
        focusField(controlOf(*result.field, *ui_));
        break;
    case HostSaveOutcome::Stopped:
        break;
    case HostSaveOutcome::LinkFailed:
        context_.showIdle();
        QDialog::reject();
        break;
    case HostSaveOutcome::Saved:
        QDialog::accept();
        break;
    }
}

} // namespace tollwick
