// The button that every dialog has for its help page.
#pragma once

#include "ui/common/console_context.h"
#include "ui/help/help_desk.h"

#include <QApplication>
#include <QDialog>
#include <QPushButton>

namespace tollwick {

// Pixels between the buttons at the foot of a dialog. A layout within a grid of unequal spacing has
// none of its own on Windows.
inline constexpr int kButtonGap = 6;

inline QPushButton* helpButton(const ConsoleContext& context, QDialog* dialog) {
    auto* button = new QPushButton(context.caption(Text::HelpButton), dialog);
    button->setObjectName("HelpButton");
    button->setAutoDefault(false);
    QObject::connect(button, &QPushButton::clicked, dialog,
                     [&help = context.help, dialog] { help.showPageOf(dialog); });
    return button;
}

} // namespace tollwick
