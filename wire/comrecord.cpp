#include "wire/comrecord.h"

#include "base/little_endian.h"
#include "base/text.h"

#include <algorithm>
#include <cstring>

namespace tollwick {
namespace {

constexpr std::size_t kHeaderSize = kComrecordSize - kDataBlockSize;
static_assert(kHeaderSize == 10);

} // namespace

std::string toBytes(const Comrecord& record) {
    const std::string_view block(record.ComrecordData.data(), record.ComrecordData.size());
    const std::string_view data =
        block.substr(0, std::max(withoutTrailingBlanks(block).size(), record.data_end));
    std::string bytes(kHeaderSize + data.size(), '\0');
    storeLittleEndian(record.Operation, bytes.data());
    storeLittleEndian(record.ObjectClass, bytes.data() + 2);
    storeLittleEndian(record.RecordNumber, bytes.data() + 4);
    storeLittleEndian(record.RecordLength, bytes.data() + 8);
    std::memcpy(bytes.data() + kHeaderSize, data.data(), data.size());
    // The header, too, loses what is NUL at its end: a mere result code travels as one byte.
    if (data.empty())
        bytes.resize(withoutTrailingNuls(bytes).size());
    return bytes;
}

void fromBytes(std::string_view bytes, Comrecord& record) {
    std::array<char, kHeaderSize> header{};
    bytes.copy(header.data(), header.size());
    record.Operation = loadLittleEndian<Integer>(header.data());
    record.ObjectClass = loadLittleEndian<Integer>(header.data() + 2);
    record.RecordNumber = loadLittleEndian<Long>(header.data() + 4);
    record.RecordLength = loadLittleEndian<Integer>(header.data() + 8);

    const std::string_view data = bytes.substr(std::min(bytes.size(), kHeaderSize));
    const std::size_t count = data.copy(record.ComrecordData.data(), kDataBlockSize);
    std::memset(record.ComrecordData.data() + count, 0, kDataBlockSize - count);
    record.data_end = count;
}

} // namespace tollwick
