// The requests that fetch whole lists.
#include "link/request_catalogue.h"
#include "link/request_scope.h"
#include "wire/comrecord_moves.h"

#include <limits>
#include <optional>

namespace tollwick {
namespace {

// A list that grows past these is taken for one without an end, and counts as a failed request.
constexpr std::size_t kMostNames = 10'000;
constexpr std::size_t kMostMails = 1'000'000;
constexpr std::size_t kMostSchedules = 10'000;
constexpr std::size_t kMostHosts = 100'000;

// The number behind `number`; after the largest there is none, and the service says so itself.
Long nextNumber(Long number) {
    return number == std::numeric_limits<Long>::max() ? number : number + 1;
}

} // namespace

Integer Requests::endOfList() {
    progress_.setCount({});
    return kFalse;
}

template <class Record>
Integer Requests::getNumberedList(const RequestRow& row, std::vector<Record>& list) {
    constexpr bool is_schedule = std::is_same_v<Record, ScheduleRecord>;
    constexpr std::size_t most = is_schedule ? kMostSchedules : kMostHosts;
    const Waiting waiting(*this);
    list.clear();
    Comrecord& record = begin(row);
    record.RecordNumber = 1;
    std::optional<Long> last;
    while (list.size() <= most) {
        progress_.setCount(WorkCount{list.size(), {}});
        const Integer reply = exchange();
        if (reply == result::EndOfList)
            return endOfList();
        if (reply != result::Done)
            return fail(row);
        Record received;
        unpackRecord(record, received);
        // Schedules follow the number that the record itself carries, from a cleared record; hosts
        // the number in the reply's header, with the last host still in the data block. Wanted.
        Long number = record.RecordNumber;
        if constexpr (is_schedule) {
            number = received.record_number;
            record = EmptyComrecord;
        }
        // A service that has come back to a record which it sent before has no other.
        if (last && number <= *last)
            return endOfList();
        last = number;
        if (list.size() == most)
            break;
        list.push_back(std::move(received));
        record.Operation = static_cast<Integer>(row.operation);
        record.ObjectClass = static_cast<Integer>(row.object_class);
        record.RecordNumber = nextNumber(number);
    }
    return fail(row);
}

template <class Take>
Integer Requests::getList(const RequestRow& row, std::size_t most, Take&& take) {
    const Waiting waiting(*this);
    Comrecord& record = begin(row);
    for (std::size_t count = 0; count <= most;) {
        progress_.setCount(WorkCount{count, {}});
        const Integer reply = exchange();
        if (reply == result::EndOfList)
            return endOfList();
        if (reply != result::Done)
            return fail(row);
        if (count++ < most)
            take(record);
        record = EmptyComrecord;
        record.Operation = static_cast<Integer>(Operation::GetNext);
        record.ObjectClass = static_cast<Integer>(row.object_class);
    }
    return fail(row);
}

Integer Requests::getNames(const RequestRow& row, MoveName move, std::vector<std::string>& names) {
    return getList(row, kMostNames, [&](const Comrecord& record) {
        NameListRecord entry;
        move(record, entry);
        names.push_back(entry.name.text());
    });
}

Integer Requests::txGetAllSchedules() {
    return getNumberedList(catalogue::GetAllSchedules, data_.schedules);
}

Integer Requests::txGetAllHosts() {
    return getNumberedList(catalogue::GetAllHosts, data_.hosts);
}

Integer Requests::txGetAllOutbox() {
    // Windows go on showing the old mails until the new ones are there.
    std::vector<OutboxRecord> outbox;
    const Integer failed =
        getList(catalogue::GetAllOutbox, kMostMails, [&](const Comrecord& record) {
            MoveComrecordToOutboxrecord(record, outbox.emplace_back());
        });
    data_.outbox = std::move(outbox);
    return failed;
}

Integer Requests::txGetAllTapiLocations(std::vector<std::string>& names) {
    return getNames(catalogue::GetAllTapiLocations, MoveComrecordToTapiLocationrecord, names);
}

Integer Requests::txGetAllTapiDevices(std::vector<std::string>& names) {
    return getNames(catalogue::GetAllTapiDevices, MoveComrecordToTapiDevicerecord, names);
}

Integer Requests::txGetAllRasEntries(std::vector<std::string>& names) {
    return getNames(catalogue::GetAllRasEntries, MoveComrecordToRasEntryrecord, names);
}

Integer Requests::txGetAllScriptFile(std::vector<std::string>& names) {
    return getNames(catalogue::GetAllScriptFile, MoveComrecordToScriptlistRecord, names);
}

} // namespace tollwick
