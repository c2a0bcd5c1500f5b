// Ties the plain controls of the host dialog to the entry that they show: texts, numbers, check
// boxes and lists without rules of their own.
#pragma once

#include "rules/host_entry.h"

class QWidget;

namespace Ui {
class HostSetupForm;
}

namespace tollwick {

void showFields(const HostEntry& entry, const Ui::HostSetupForm& ui);

// Takes what the controls hold. `entry` is what they showed at first: a position that its list
// could not show stays as it was.
void takeFields(const Ui::HostSetupForm& ui, HostEntry& entry);

// The control of a field.
QWidget* controlOf(const HostField& field, const Ui::HostSetupForm& ui);

} // namespace tollwick
