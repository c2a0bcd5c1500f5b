// The editor of one transport schedule: works on the current schedule and sends it to the service.
#pragma once

#include "rules/schedule_rules.h"
#include "ui/common/console_dialog.h"

#include <memory>
#include <vector>

namespace Ui {
class ScheduleForm;
}

namespace tollwick {

class ScheduleForm : public ConsoleDialog {
    Q_OBJECT
public:
    ScheduleForm(ConsoleContext& context, QWidget* parent);
    ~ScheduleForm() override;

    // Checks, stores and sends; closes when that is done or the link has failed.
    void accept() override;

protected:
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void show(const ScheduleEntry& entry);
    [[nodiscard]] ScheduleEntry entry() const;
    void enableFields();
    QWidget* widgetOf(ScheduleField field) const;
    void save();
    // The delay is the only number.
    [[nodiscard]] QWidget* fieldOf(const RunTimeError& error) const override;

    std::unique_ptr<Ui::ScheduleForm> ui_;
    std::vector<ScheduleInterval> intervals_;
    ScheduleEntry shown_; // at first
};

} // namespace tollwick
