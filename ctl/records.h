// Records in the form that the site file has them in.
#pragma once

#include "simulator/field_json.h"

namespace tollwick::ctl {

template <class Record>
QJsonObject recordJson(const Record& record) {
    QJsonObject object;
    simulator::putFields(record, object);
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
