// The buttons Ok, Cancel and Help at the foot of a small dialog.
#pragma once

#include "ui/help/help_button.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QPushButton>

namespace tollwick {

// A row with all three, named and captioned; the first two accept and reject the dialog, and Ok is
// its default button.
inline QHBoxLayout* okCancelRow(const ConsoleContext& context, QDialog* dialog) {
    auto* ok = new QPushButton(context.caption(Text::Ok), dialog);
    ok->setObjectName("OkButton");
    ok->setDefault(true);
    auto* cancel = new QPushButton(context.caption(Text::Cancel), dialog);
    cancel->setObjectName("CancelButton");
    cancel->setAutoDefault(false);
    QObject::connect(ok, &QPushButton::clicked, dialog, &QDialog::accept);
    QObject::connect(cancel, &QPushButton::clicked, dialog, &QDialog::reject);
    auto* row = new QHBoxLayout;
    row->setSpacing(kButtonGap);
    row->addStretch();
    row->addWidget(ok);
    row->addWidget(cancel);
    row->addWidget(helpButton(context, dialog));
    return row;
}

} // namespace tollwick
