#include "ui/dialogs/schedule_form.h"

#include "base/text.h"
#include "ui_schedule_form.h"

#include <QFocusEvent>
#include <QTimer>

namespace tollwick {
namespace {

constexpr Caption kCaptions[] = {{"DaySelCap", Text::DaySelCap},
                                 {"TimedOption", Text::TimedOption},
                                 {"IntervalOption", Text::IntervalOption},
                                 {"BetweenTxt1", Text::BetweenTxt1},
                                 {"BetweenTxt2", Text::BetweenTxt2},
                                 {"DelayTxt1", Text::DelayTxt1},
                                 {"DelayTxt2", Text::DelayTxt2}};

} // namespace

ScheduleForm::ScheduleForm(ConsoleContext& context, QWidget* parent)
    : ConsoleDialog(context, parent), ui_(std::make_unique<Ui::ScheduleForm>()),
      intervals_(scheduleIntervals(context.texts)) {
    ui_->setupUi(this);
    ui_->buttonLayout->addWidget(makeHelpButton());
    connectOkCancel(ui_->OkButton, ui_->CancelButton);
    dress(Text::ScheduleForm, kCaptions);
    showIcon(ui_->Image1, "schedule32");
    ui_->Timed->setAccessibleName(context.caption(Text::TimedOption));
    ui_->IntervalCombo->setAccessibleName(context.caption(Text::IntervalOption));

    for (const std::string& day : scheduleDays(context.texts))
        ui_->DayCombo->addItem(QString::fromStdString(day));
    for (const ScheduleInterval& interval : intervals_)
        ui_->IntervalCombo->addItem(QString::fromStdString(interval.text));
    for (QLineEdit* field : {ui_->Timed, ui_->BetweenFirst, ui_->BetweenSecond, ui_->Delay})
        field->installEventFilter(this);

    connect(ui_->TimedOption, &QRadioButton::toggled, this, &ScheduleForm::enableFields);
    takeCodePageInLines();
    shown_ = entryOf(context.data.current_schedule).value_or(ScheduleEntry());
    show(shown_);
}

ScheduleForm::~ScheduleForm() = default;

void ScheduleForm::show(const ScheduleEntry& entry) {
    ui_->DayCombo->setCurrentIndex(entry.day);
    (entry.is_interval ? ui_->IntervalOption : ui_->TimedOption)->setChecked(true);
    ui_->IntervalCombo->setCurrentIndex(entry.interval);
    ui_->Timed->setText(QString::fromStdString(entry.timed));
    ui_->BetweenFirst->setText(QString::fromStdString(entry.between_first));
    ui_->BetweenSecond->setText(QString::fromStdString(entry.between_second));
    ui_->Delay->setText(QString::fromStdString(entry.delay));
    enableFields();
}

ScheduleEntry ScheduleForm::entry() const {
    ScheduleEntry entry;
    // A position that its list does not have stays until another is selected.
    const auto position = [](const QComboBox* list, int shown) {
        return list->currentIndex() >= 0 ? list->currentIndex() : shown;
    };
    entry.day = position(ui_->DayCombo, shown_.day);
    entry.is_interval = ui_->IntervalOption->isChecked();
    entry.interval = position(ui_->IntervalCombo, shown_.interval);
    entry.timed = ui_->Timed->text().toStdString();
    entry.between_first = ui_->BetweenFirst->text().toStdString();
    entry.between_second = ui_->BetweenSecond->text().toStdString();
    entry.delay = ui_->Delay->text().toStdString();
    return entry;
}

void ScheduleForm::enableFields() {
    const bool timed = ui_->TimedOption->isChecked();
    ui_->Timed->setEnabled(timed);
    for (QWidget* widget : std::initializer_list<QWidget*>{
             ui_->IntervalCombo, ui_->BetweenTxt1, ui_->BetweenTxt2, ui_->BetweenFirst,
             ui_->BetweenSecond, ui_->DelayTxt1, ui_->DelayTxt2, ui_->Delay})
        widget->setEnabled(!timed);
}

QWidget* ScheduleForm::widgetOf(ScheduleField field) const {
    switch (field) {
    case ScheduleField::Day:
        return ui_->DayCombo;
    case ScheduleField::Timed:
        return ui_->Timed;
    case ScheduleField::BetweenFirst:
        return ui_->BetweenFirst;
    case ScheduleField::BetweenSecond:
        return ui_->BetweenSecond;
    case ScheduleField::Delay: // which is disabled beside a time
        return ui_->Delay->isEnabled() ? static_cast<QWidget*>(ui_->Delay) : ui_->IntervalOption;
    }
    return nullptr;
}

QWidget* ScheduleForm::fieldOf(const RunTimeError&) const {
    return widgetOf(ScheduleField::Delay);
}

void ScheduleForm::accept() {
    const bool is_new = context_.data.current_schedule.identity == 0;
    guardEntry(is_new ? Routine::AddSchedule : Routine::EditSchedule, [&] { save(); });
}

void ScheduleForm::save() {
    ScheduleEntry entered = entry();
    const std::optional<ScheduleProblem> problem = checkSchedule(entered, intervals_);
    // What passed is shown as it was completed, also when something behind it did not.
    ui_->Timed->setText(QString::fromStdString(entered.timed));
    ui_->BetweenFirst->setText(QString::fromStdString(entered.between_first));
    ui_->BetweenSecond->setText(QString::fromStdString(entered.between_second));
    if (problem)
        return refuse(BoxIcon::Exclamation, problem->text, widgetOf(problem->field),
                      problem->beeps);

    ServiceData& service = context_.data;
    const ScheduleRecord before = service.current_schedule;
    const bool is_new = before.identity == 0;
    storeSchedule(entered, service.current_schedule);
    if (is_new && scheduleExists(service.current_schedule, service.schedules))
        return refuse(BoxIcon::Critical, Text::ScheduleExists, ui_->DayCombo);
    const BusyPointer busy(context_.progress);
    if (hasFailed(context_.requests.txSaveSchedule(is_new))) {
        service.current_schedule = before;
        QDialog::reject();
        return;
    }
    if (is_new && service.current_schedule.record_number == 0)
        context_.requests.txGetAllSchedules(); // the reply did not say what the service made of it
    else if (is_new)
        service.schedules.push_back(service.current_schedule);
    QDialog::accept();
}

void ScheduleForm::showEvent(QShowEvent* event) {
    if (isBlank(windowTitle().toStdString()))
        setWindowTitle(context_.caption(Text::ScheduleCaption));
    QDialog::showEvent(event);
}

bool ScheduleForm::eventFilter(QObject* watched, QEvent* event) {
    // A field that gets the focus has its text selected, so that typing replaces it. Keys do that
    // by themselves; a click puts its cursor after this event.
    auto* field = qobject_cast<QLineEdit*>(watched);
    if (field && event->type() == QEvent::FocusIn) {
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason == Qt::MouseFocusReason)
            QTimer::singleShot(0, field, &QLineEdit::selectAll);
        else if (reason == Qt::OtherFocusReason)
            field->selectAll();
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace tollwick
