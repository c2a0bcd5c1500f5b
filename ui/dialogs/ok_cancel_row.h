// The buttons Ok and Cancel at the foot of a small dialog.
#pragma once

#include "ui/main/console_context.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QPushButton>

namespace tollwick {

// A row with both, named and captioned, that accept and reject the dialog; Ok is its default button.
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
    row->addStretch();
    row->addWidget(ok);
    row->addWidget(cancel);
    return row;
}

} // namespace tollwick
