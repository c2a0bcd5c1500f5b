// What a service sends, in any pieces: cut into lines, unscrambled, unpacked as every record,
// packed again.
#include "tests/fuzz/fuzz.h"
#include "wire/link_receiver.h"
#include "wire/record_packing.h"
#include "wire/scramble.h"

namespace tollwick {

template <class Record>
Comrecord packedAgain(const Comrecord& received) {
    Record record;
    unpackRecord(received, record);
    Comrecord packed = received;
    packRecord(record, packed);
    const std::size_t size = packedSize(record);
    auto* const end = packed.ComrecordData.begin() + std::min(size, kDataBlockSize);
    check(std::equal(end, packed.ComrecordData.end(), EmptyComrecord.ComrecordData.begin()));
    // Only a length that points past the block comes back changed.
    check(size > wireSize<Record>() ||
          std::equal(packed.ComrecordData.begin(), end, received.ComrecordData.begin()));
    return packed;
}

template <class... Records>
void packEach(const Comrecord& record) {
    (check(packedAgain<Records>(packedAgain<Records>(record)) == packedAgain<Records>(record)),
     ...);
}

void checkRecord(const Comrecord& record, const std::string& line, const std::string& key) {
    std::string plain = unscramble(key, line).substr(0, kComrecordSize);
    if (plain.size() <= kComrecordSize - kDataBlockSize)
        plain.resize(withoutTrailingNuls(plain).size());
    const std::string sent = encodeLine(record, key, 255);
    check(sent == scramble(key, plain, 255).append(kLineEnd) && sent.size() <= kMaxLineSize);
    packEach<ScheduleRecord, HostRecord, SettingsRecord, OutboxRecord, UucpStatusRecord,
             LoginRecord, ScriptRecord, NameListRecord, UucpCommandRecord>(record);
}

void fuzz(Input& input) {
    using enum LinkReceiver::Arrival;
    LinkReceiver receiver;
    Comrecord record;
    std::string stream; // what has arrived and is not taken yet
    while (!input.rest.empty()) {
        const bool first = receiver.KeyReceived == 0;
        const std::uint8_t kind = input.number();
        std::string piece = kind % 4 == 1 ? input.take(kSessionKeySize) : input.text();
        if (kind % 4 == 2)
            piece = scramble(receiver.SessionKey, piece, kind).append(kLineEnd);
        for (std::size_t more = kind % 4 == 3 ? kind : 0; more > 0; --more)
            piece.append(piece, 0, 64);
        const std::size_t end = stream.append(piece).find(kLineEnd);
        const LinkReceiver::Arrival arrival = receiver.DataArrival(piece, record);
        if (arrival == Record) {
            check(!first && end <= kMaxLineSize);
            checkRecord(record, stream.substr(0, end), receiver.SessionKey);
            stream.erase(0, end + kLineEnd.size());
        } else if (arrival == Nothing) {
            check(first || (end == std::string::npos && stream.size() <= kMaxLineSize));
        } else {
            check(arrival == Key ? receiver.SessionKey == stream : stream.size() > kMaxLineSize);
            stream.clear();
        }
        if (arrival == TooLong)
            receiver.close();
        check(receiver.hasLine() == (receiver.KeyReceived != 0 && stream.find(kLineEnd) + 1 > 0));
    }
}

} // namespace tollwick
