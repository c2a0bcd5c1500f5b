#include "link/link_receiver.h"
#include "link/record_packing.h"
#include "tests/core/line_vectors.h"
#include "tests/support/hex.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace tollwick {
namespace {

using Arrival = LinkReceiver::Arrival;

const std::string kKey = fromHex(vectors::kLineKey);

Comrecord recordWith(std::string_view bytes) {
    Comrecord record;
    fromBytes(bytes, record);
    return record;
}

Comrecord fullRecord() {
    return recordWith(std::string(kComrecordSize, 'x'));
}

// A receiver that has its key, and the record that it unpacks into.
struct Link {
    Link() { EXPECT_EQ(receiver.DataArrival(kKey, record), Arrival::Key); }

    // Feeds one arrival and then looks for as long as a line is there; the records in their order.
    void feed(std::string_view bytes, std::vector<Comrecord>& records) {
        Arrival arrival = receiver.DataArrival(bytes, record);
        while (arrival == Arrival::Record) {
            records.push_back(record);
            if (!receiver.hasLine())
                return;
            arrival = receiver.DataArrival({}, record);
        }
        EXPECT_EQ(arrival, Arrival::Nothing);
    }

    LinkReceiver receiver;
    Comrecord record;
};

TEST(Line, HasTheKnownTextInBothDirections) {
    for (const vectors::LineSample& sample : vectors::kLineSamples) {
        SCOPED_TRACE(sample.what);
        const Comrecord record = recordWith(fromHex(sample.comrecord));
        EXPECT_EQ(toHex(toBytes(record)), sample.comrecord);
        EXPECT_EQ(encodeLine(record, kKey, sample.start), sample.line);
        Comrecord read = fullRecord();
        decodeLine(sample.line.substr(0, sample.line.size() - 2), kKey, read);
        EXPECT_EQ(read, record);
    }
}

TEST(Line, AuthenticationIsPackedAsKnown) {
    LoginRecord login;
    login.user_id = "admin";
    login.password = "secret";
    Comrecord record;
    record.Operation = static_cast<Integer>(Operation::Authenticate);
    record.ObjectClass = static_cast<Integer>(ObjectClass::Login);
    record.RecordLength = 8;
    packRecord(login, record);
    EXPECT_EQ(toHex(toBytes(record)), vectors::kLineSamples[0].comrecord);
}

TEST(LinkReceiver, AnySplitGivesTheSameRecords) {
    const Comrecord first = recordWith("first");
    const Comrecord second = recordWith("the second");
    const std::string stream = encodeLine(first, kKey, 1) + encodeLine(second, kKey, 255);
    const std::vector<Comrecord> expected{first, second};
    for (std::size_t split = 0; split <= stream.size(); ++split) {
        SCOPED_TRACE(split);
        Link link;
        std::vector<Comrecord> records;
        link.feed(stream.substr(0, split), records);
        link.feed(stream.substr(split), records);
        EXPECT_EQ(records, expected);
        EXPECT_FALSE(link.receiver.hasLine());
    }
    Link link;
    std::vector<Comrecord> records;
    for (const char byte : stream)
        link.feed({&byte, 1}, records);
    EXPECT_EQ(records, expected);
}

TEST(LinkReceiver, LinesOfOneArrivalAreTakenOnePerCall) {
    Link link;
    std::string stream;
    for (const vectors::LineSample& sample : vectors::kLineSamples)
        stream += sample.line;
    for (const vectors::LineSample& sample : vectors::kLineSamples) {
        EXPECT_EQ(link.receiver.DataArrival(stream, link.record), Arrival::Record);
        EXPECT_EQ(toHex(toBytes(link.record)), sample.comrecord);
        stream.clear();
    }
    EXPECT_EQ(link.receiver.DataArrival({}, link.record), Arrival::Nothing);
}

TEST(LinkReceiver, TheFirstPacketIsAKeyOnlyAtItsExactSize) {
    Link link;
    EXPECT_EQ(link.receiver.KeyReceived, kTrue);
    EXPECT_EQ(link.receiver.SessionKey, kKey);

    for (const std::string& packet :
         {kKey.substr(1), kKey + "x", std::string("x"), kKey + "1021\r\n"}) {
        LinkReceiver receiver;
        Comrecord record;
        EXPECT_EQ(receiver.DataArrival({}, record), Arrival::Nothing);
        EXPECT_EQ(receiver.KeyReceived, 0);
        EXPECT_EQ(receiver.DataArrival(packet, record), Arrival::Nothing);
        EXPECT_EQ(receiver.KeyReceived, 1);
        EXPECT_EQ(receiver.SessionKey, "");
        // A second packet does not become the key, either: both are read as lines.
        EXPECT_EQ(receiver.DataArrival(kKey, record),
                  packet.ends_with("\r\n") ? Arrival::Record : Arrival::Nothing);
        EXPECT_EQ(receiver.KeyReceived, 1);
        EXPECT_EQ(receiver.DataArrival("\r\n", record), Arrival::Record);
    }
    // NULs and line ends may be part of a key.
    LinkReceiver receiver;
    const std::string odd_key = std::string("\0\r\n", 3) + std::string(29, '\0');
    EXPECT_EQ(receiver.DataArrival(odd_key, link.record), Arrival::Key);
    EXPECT_EQ(receiver.SessionKey, odd_key);
}

TEST(LinkReceiver, ANewConnectionStartsWithItsKey) {
    Link link;
    EXPECT_EQ(link.receiver.DataArrival("10", link.record), Arrival::Nothing);
    link.receiver.close();
    EXPECT_EQ(link.receiver.KeyReceived, 0);
    EXPECT_EQ(link.receiver.SessionKey, kKey);
    const std::string next_key(kSessionKeySize, 'k');
    EXPECT_EQ(link.receiver.DataArrival(next_key, link.record), Arrival::Key);
    EXPECT_EQ(link.receiver.SessionKey, next_key);
    link.receiver.reset();
    EXPECT_EQ(link.receiver.KeyReceived, 0);
    EXPECT_EQ(link.receiver.SessionKey, "");
}

TEST(LinkReceiver, TheLongestValidLineIsTaken) {
    const std::string line = encodeLine(fullRecord(), kKey, 7);
    ASSERT_EQ(line.size(), kMaxLineSize);
    for (const std::size_t split : {std::size_t{0}, std::size_t{1}, line.size() / 2,
                                    line.size() - 2, line.size() - 1, line.size()}) {
        SCOPED_TRACE(split);
        Link link;
        std::vector<Comrecord> records;
        for (int round = 0; round < 3; ++round) {
            link.feed(line.substr(0, split), records);
            link.feed(line.substr(split) + line + "1021\r\n", records);
        }
        ASSERT_EQ(records.size(), 9U);
        for (std::size_t i = 0; i < records.size(); ++i)
            EXPECT_EQ(records[i], i % 3 == 2 ? recordWith("\x03") : fullRecord());
    }
}

TEST(LinkReceiver, AnOverlongLineIsRefused) {
    const std::string longest(kMaxLineSize, '0');
    {
        Link link;
        EXPECT_EQ(link.receiver.DataArrival(longest, link.record), Arrival::Nothing);
        EXPECT_EQ(link.receiver.DataArrival("0", link.record), Arrival::TooLong);
        EXPECT_EQ(link.receiver.DataArrival("\r\n", link.record), Arrival::TooLong);
    }
    {
        Link link; // a line end that comes too late does not help
        EXPECT_EQ(link.receiver.DataArrival(longest + "\r\n", link.record), Arrival::TooLong);
    }
    {
        Link link; // nor does a valid line before it
        EXPECT_EQ(link.receiver.DataArrival("1021\r\n" + longest + '0', link.record),
                  Arrival::Record);
        EXPECT_EQ(link.receiver.DataArrival({}, link.record), Arrival::TooLong);
    }
    {
        LinkReceiver receiver; // without a key, too
        Comrecord record;
        EXPECT_EQ(receiver.DataArrival(longest + '0', record), Arrival::Nothing);
        EXPECT_EQ(receiver.DataArrival("0", record), Arrival::TooLong);
    }
}

TEST(LinkReceiver, GarbageIsUnpackedAsFarAsItGoes) {
    Link link;
    std::vector<Comrecord> records;
    link.feed("\r\n", records);
    link.feed("1\r\n", records);
    link.feed("10\r\n", records);
    EXPECT_EQ(records, std::vector<Comrecord>(3));
    // Lone halves of a line end belong to the line.
    EXPECT_EQ(link.receiver.DataArrival("\n\r", link.record), Arrival::Nothing);
    EXPECT_EQ(link.receiver.DataArrival("\r\n", link.record), Arrival::Record);
    // NULs neither end a line nor hide the line behind it.
    records.clear();
    link.feed(std::string_view("10\0\0zz\r\n1021\r\n", 14), records);
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[1], recordWith("\x03"));

    std::mt19937 random(2);
    std::string noise(60000, '\0');
    for (char& byte : noise)
        byte = "\r\n\0 0123456789ABCDEFabcdefxyz\xFF"[random() % 31];
    for (std::size_t i = 0; i < noise.size(); i += 1000) {
        records.clear();
        link.feed(std::string_view(noise).substr(i, 1000), records);
    }
    records.clear();
    link.feed("\r\n1021\r\n", records);
    EXPECT_EQ(records.back(), recordWith("\x03"));
}

} // namespace
} // namespace tollwick
