#include "link/link_receiver.h"
#include "link/record_packing.h"
#include "tests/support/hex.h"

#include <gtest/gtest.h>

#include <random>

namespace tollwick {
namespace {

using Arrival = LinkReceiver::Arrival;

// Records as lines, made independently of this code.
constexpr std::string_view kLineKey =
    "3269294130605a5d74513b2d5f2452586e217a5a437d3e6c2e49242324746622";

constexpr struct {
    std::uint8_t start;
    std::string_view comrecord; // hex, without trailing NULs and blanks
    std::string_view line;
} kLineSamples[] = {{127, "46007800000000000800050061646d696e0600736563726574", // authenticate
                     "7FF79E3F7E4E2E74294514220F2FB776879B80FA37DF3F8F9822\r\n"},
                    {184, "32001e0001", "B8D8B1E6A798\r\n"}, // first schedule asked for
                    {16, "03", "1021\r\n"},                  // end of list
                    {97, "01000000ffffffff", "6150391051603F643E\r\n"},
                    {163, "0100000000000000000008004f6666696365", // a name ending in blanks
                     "A396FFD697A7C79DC0B4E5D6FB155F9758D51B\r\n"}};

const std::string kKey = fromHex(kLineKey);
const std::string kEnd = "1021\r\n"; // the line of the record that follows
const std::string kLongest(kMaxLineSize, '0');

Comrecord recordWith(std::string_view bytes) {
    Comrecord record;
    fromBytes(bytes, record);
    return record;
}
const Comrecord kEndRecord = recordWith("\x03");

// A receiver that has its key.
class LinkReceiverTest : public testing::Test {
protected:
    LinkReceiverTest() { restart(); }
    void restart() {
        receiver.reset();
        EXPECT_EQ(arrive(kKey), Arrival::Key);
        records.clear();
    }
    Arrival arrive(std::string_view bytes) { return receiver.DataArrival(bytes, record); }
    // Feeds one arrival and then looks for as long as a line is there; keeps the records.
    void feed(std::string_view bytes) {
        Arrival arrival = arrive(bytes);
        for (; arrival == Arrival::Record; arrival = arrive({})) {
            records.push_back(record);
            if (!receiver.hasLine())
                return;
        }
        EXPECT_EQ(arrival, Arrival::Nothing);
    }

    LinkReceiver receiver;
    Comrecord record;
    std::vector<Comrecord> records;
};

TEST_F(LinkReceiverTest, KnownLinesAreMadeAndTakenOnePerCall) {
    std::string stream;
    for (const auto& sample : kLineSamples) {
        SCOPED_TRACE(sample.line);
        EXPECT_EQ(encodeLine(recordWith(fromHex(sample.comrecord)), kKey, sample.start),
                  sample.line);
        Comrecord read = recordWith(std::string(kComrecordSize, 'x'));
        decodeLine(sample.line.substr(0, sample.line.size() - 2), kKey, read);
        EXPECT_EQ(toHex(toBytes(read)), sample.comrecord);
        stream += sample.line;
    }
    for (const auto& sample : kLineSamples) {
        EXPECT_EQ(arrive(stream), Arrival::Record);
        EXPECT_EQ(toHex(toBytes(record)), sample.comrecord);
        stream.clear();
    }
    EXPECT_EQ(arrive({}), Arrival::Nothing);
}

TEST_F(LinkReceiverTest, AnySplitGivesTheSameRecords) {
    const std::vector<Comrecord> expected{recordWith("first"), recordWith("the second")};
    const std::string stream =
        encodeLine(expected[0], kKey, 1) + encodeLine(expected[1], kKey, 255);
    for (std::size_t split = 0; split <= stream.size(); ++split) {
        restart();
        feed(stream.substr(0, split));
        feed(stream.substr(split));
        EXPECT_EQ(records, expected) << split;
        EXPECT_FALSE(receiver.hasLine());
    }
    restart();
    for (const char byte : stream)
        feed({&byte, 1});
    EXPECT_EQ(records, expected);
}

TEST_F(LinkReceiverTest, TheFirstPacketIsAKeyOnlyAtItsExactSize) {
    EXPECT_EQ(receiver.KeyReceived, kTrue);
    EXPECT_EQ(receiver.SessionKey, kKey);
    for (const std::string& packet : {kKey.substr(1), kKey + "x", std::string("x"), kKey + kEnd}) {
        receiver.reset();
        EXPECT_EQ(arrive({}), Arrival::Nothing);
        EXPECT_EQ(receiver.KeyReceived, 0);
        EXPECT_EQ(arrive(packet), Arrival::Nothing);
        // A second packet does not become the key, either: both are read as lines.
        EXPECT_EQ(arrive(kKey), packet.ends_with("\n") ? Arrival::Record : Arrival::Nothing);
        EXPECT_EQ(receiver.KeyReceived, 1);
        EXPECT_EQ(receiver.SessionKey, "");
        EXPECT_EQ(arrive("\r\n"), Arrival::Record);
    }
    // NULs and line ends may be part of a key; a new connection starts with its own.
    const std::string odd_key = std::string("\0\r\n", 3) + std::string(29, '\0');
    restart();
    EXPECT_EQ(arrive("10"), Arrival::Nothing);
    receiver.close();
    EXPECT_EQ(receiver.KeyReceived, 0);
    EXPECT_EQ(receiver.SessionKey, kKey);
    EXPECT_EQ(arrive(odd_key), Arrival::Key);
    EXPECT_EQ(receiver.SessionKey, odd_key);
    receiver.reset();
    EXPECT_EQ(receiver.SessionKey, "");
}

TEST_F(LinkReceiverTest, TheLongestValidLineIsTakenAndALongerOneRefused) {
    const Comrecord full = recordWith(std::string(kComrecordSize, 'x'));
    const std::string line = encodeLine(full, kKey, 7);
    ASSERT_EQ(line.size(), kMaxLineSize);
    for (const std::size_t split :
         {std::size_t{0}, std::size_t{1}, line.size() - 2, line.size() - 1, line.size()}) {
        restart();
        for (int round = 0; round < 2; ++round) {
            feed(line.substr(0, split));
            feed(line.substr(split) + line + kEnd);
        }
        EXPECT_EQ(records, (std::vector{full, full, kEndRecord, full, full, kEndRecord})) << split;
    }
    EXPECT_EQ(arrive(kLongest), Arrival::Nothing);
    EXPECT_EQ(arrive("0"), Arrival::TooLong);
    EXPECT_EQ(arrive("\r\n"), Arrival::TooLong);
    restart(); // a line end that comes too late does not help
    EXPECT_EQ(arrive(kLongest + "\r\n"), Arrival::TooLong);
    restart(); // nor does a valid line before it
    EXPECT_EQ(arrive(kEnd + kLongest + '0'), Arrival::Record);
    EXPECT_EQ(arrive({}), Arrival::TooLong);
    receiver.reset(); // without a key, too
    EXPECT_EQ(arrive(kLongest + '0'), Arrival::Nothing);
    EXPECT_EQ(arrive("0"), Arrival::TooLong);
}

TEST_F(LinkReceiverTest, GarbageIsUnpackedAsFarAsItGoes) {
    for (const char* line : {"\r\n", "1\r\n", "10\r\n"})
        feed(line);
    EXPECT_EQ(records, std::vector<Comrecord>(3));
    // Lone halves of a line end belong to the line.
    EXPECT_EQ(arrive("\n\r"), Arrival::Nothing);
    EXPECT_EQ(arrive("\r\n"), Arrival::Record);
    // NULs neither end a line nor hide the line behind it.
    records.clear();
    feed(std::string("10\0\0zz\r\n", 8) + kEnd);
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[1], kEndRecord);

    std::mt19937 random(2);
    for (int round = 0; round < 60; ++round) {
        std::string noise(1000, '\0');
        for (char& byte : noise)
            byte = "\r\n\0 0123456789ABCDEFabcdefxyz\xFF"[random() % 31];
        feed(noise);
    }
    feed("\r\n" + kEnd);
    EXPECT_EQ(records.back(), kEndRecord);
}

} // namespace
} // namespace tollwick
