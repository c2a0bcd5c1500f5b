#include "site/site.h"

#include <QString>

namespace tollwick {
namespace {

template <class Record>
void assignNumbersOf(std::vector<Record>& records) {
    for (auto record = records.begin(); record != records.end(); ++record) {
        if (record->record_number < 1 || findNumber(records, record->record_number) != record)
            record->record_number = nextRecordNumber(records);
    }
}

} // namespace

void Site::assignRecordNumbers() {
    assignNumbersOf(schedules);
    assignNumbersOf(hosts);
}

const HostRecord* Site::hostOfNode(const VarText& node) const {
    const QString name = QString::fromStdString(node.text());
    for (const HostRecord& host : hosts) {
        const QString of_host = QString::fromStdString(host.remote_uucp_name.text());
        if (of_host.compare(name, Qt::CaseInsensitive) == 0)
            return &host;
    }
    return nullptr;
}

} // namespace tollwick
