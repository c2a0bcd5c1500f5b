// The About box: the program's title, its version and the note that came with it.
#pragma once

#include "ui/common/console_dialog.h"

namespace tollwick {

class AboutForm : public ConsoleDialog {
    Q_OBJECT
public:
    AboutForm(ConsoleContext& context, QWidget* parent);
};

} // namespace tollwick
