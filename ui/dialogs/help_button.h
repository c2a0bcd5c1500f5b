// The button that every dialog has for its help page.
#pragma once

#include "ui/main/console_context.h"
#include "ui/main/help_desk.h"

#include <QApplication>
#include <QDialog>
#include <QPushButton>

namespace tollwick {

inline QPushButton* helpButton(const ConsoleContext& context, QDialog* dialog) {
    auto* button = new QPushButton(context.caption(Text::HelpButton), dialog);
    button->setObjectName("HelpButton");
    button->setAutoDefault(false);
    QObject::connect(button, &QPushButton::clicked, dialog,
                     [&help = context.help, dialog] { help.showPageOf(dialog); });
    return button;
}

} // namespace tollwick
