// Records in the form that the site file has them in.
#pragma once

#include "site/field_json.h"

#include <QJsonArray>

namespace tollwick::ctl {

template <class Record>
QJsonObject recordJson(const Record& record) {
    QJsonObject object;
    putFields(record, object);
    return object;
}

template <class Records>
QJsonArray recordsJson(const Records& records) {
    QJsonArray array;
    for (const auto& record : records)
        array.append(recordJson(record));
    return array;
}

} // namespace tollwick::ctl
