// File filters of the string table as Qt's file dialogs want them.
#pragma once

#include "ui/common/to_qstring.h"

#include <QStringList>

namespace tollwick {

// A name filter such as "Scripts(*.scp)|*.scp|All(*.*)|*.*" as file dialogs here take it.
inline QString fileFilter(std::string_view filter) {
    const QStringList parts = toQString(filter).split('|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2)
        filters << parts[i].section('(', 0, 0) + " (" + QString(parts[i + 1]).replace("*.*", "*") +
                       ')';
    return filters.join(";;");
}

} // namespace tollwick
