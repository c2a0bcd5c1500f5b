// The About box: the program's title, its version and the note that came with it.
#pragma once

#include "ui/common/console_context.h"

#include <QDialog>

namespace tollwick {

class AboutForm : public QDialog {
    Q_OBJECT
public:
    AboutForm(const ConsoleContext& context, QWidget* parent);
};

} // namespace tollwick
