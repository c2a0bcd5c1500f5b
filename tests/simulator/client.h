// Building requests and reading replies in the tests.
#pragma once

#include "wire/record_packing.h"

namespace tollwick::simulator {

inline Comrecord request(Operation operation, ObjectClass object_class, Long number = 0) {
    return {static_cast<Integer>(operation), static_cast<Integer>(object_class), number, 0, {}};
}
template <class Record>
Comrecord requestWith(Operation operation, ObjectClass object_class, const Record& record) {
    Comrecord with = request(operation, object_class);
    packRecord(record, with);
    return with;
}
inline Comrecord loginRequest(const char* user_id, const char* password) {
    return requestWith(Operation::Authenticate, ObjectClass::Login,
                       LoginRecord{VarText(user_id), VarText(password)});
}
template <class Record>
Record recordIn(const Comrecord& reply) {
    Record record;
    unpackRecord(reply, record);
    return record;
}

} // namespace tollwick::simulator
