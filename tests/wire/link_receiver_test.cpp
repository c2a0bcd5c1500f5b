// Lines as they travel: scrambled, cut out of a stream, taken apart.
#include "tests/support/hex.h"
#include "wire/link_receiver.h"
#include "wire/record_packing.h"
#include "wire/scramble.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <set>

namespace tollwick {
namespace {

// Made independently of this code. Keys and plain texts are ANSI bytes in hex.
constexpr std::string_view kKeyHex =
    "3269294130605a5d74513b2d5f2452586e217a5a437d3e6c2e49242324746622";
constexpr std::string_view kPasswordKey = "71346db4216b72332e2e2d702e363138a4282577323762683"
                                          "4313f7e2b3f2f6363353732742d2e78652d2e6a76686b";
constexpr struct {
    std::string_view key;
    std::uint8_t start;
    std::string_view plain, scrambled;
} kScrambled[] = {
    {kKeyHex, 210, // longer than the key
     "000102030405060708090a0b0c0d0e0f101112131415161718191a1b1c1d1e1f2021222324252627",
     "D2E088A3E7DB80DCBEB2EACFF75C4D09403E6EFA5728406813055755534B1C5C594B050E70A4A995E1"},
    {"f1e262b038f96dba", 229, "", "E5"},
    {"f1e262b038f96dba", 145, "736563726574", "91F5B8795BF895"},
    {"6b", 214, "736563726574", "D622EC24FD0916"},
    {kPasswordKey, 154, "736563726574", "9A7CD55573F906"}};
constexpr struct {
    std::uint8_t start;
    std::string_view comrecord; // without trailing NULs and blanks
    std::string_view line;
} kLines[] = {{127, "46007800000000000800050061646d696e0600736563726574", // authenticate
               "7FF79E3F7E4E2E74294514220F2FB776879B80FA37DF3F8F9822\r\n"},
              {184, "32001e0001", "B8D8B1E6A798\r\n"}, // first schedule asked for
              {16, "03", "1021\r\n"},                  // end of list
              {97, "01000000ffffffff", "6150391051603F643E\r\n"}};
// Texts that scrambling does not make, but unscrambling takes, and what they give.
constexpr std::pair<std::string_view, std::string_view> kOddTexts[] = {
    {"", ""},           {"41", ""},         {"4142F", "2f24"},
    {"zz4142", "73ea"}, {"41zz42", "f12b"}, {"41 142", "f22a"}};

const std::string kKey = fromHex(kKeyHex);
const std::string kEnd = "1021\r\n";
const std::string kLongest(kMaxLineSize, '0');

Comrecord recordWith(std::string_view bytes) {
    Comrecord record;
    fromBytes(bytes, record);
    return record;
}

TEST(Scramble, GivesTheKnownTextsInBothDirections) {
    for (const auto& sample : kScrambled) {
        const std::string key = fromHex(sample.key);
        EXPECT_EQ(scramble(key, fromHex(sample.plain), sample.start), sample.scrambled);
        EXPECT_EQ(toHex(unscramble(key, sample.scrambled)), sample.plain);
        std::string lower(sample.scrambled);
        std::ranges::transform(lower, lower.begin(), tolower);
        EXPECT_EQ(toHex(unscramble(key, lower)), sample.plain);
    }
    EXPECT_EQ(toHex(HostPasswordKey), kPasswordKey);
    EXPECT_EQ(unscramble("", scramble("", "secret", 200)), "secret"); // an empty key is no fault
    for (const auto& [scrambled, plain] : kOddTexts)
        EXPECT_EQ(toHex(unscramble(kKey, scrambled)), plain) << scrambled;
    // Blanks around a digit are ignored, wherever the pair stands.
    for (const char* text : {"054 ", "05 4", "5 04"})
        EXPECT_EQ(unscramble("k", text), unscramble("k", "0504")) << text;
}

TEST(ScrambleField, TakesItsModeWithoutCaseAndStartsDifferentlyButNeverAtZero) {
    EXPECT_EQ(ScrambleField("ED", "key", "secret"), "");
    EXPECT_EQ(ScrambleField("D", "key", ScrambleField("e", "key", "secret")), "secret");
    EXPECT_EQ(ScrambleField("d", "key", ScrambleField("E", "key", "secret")), "secret");
    std::set<std::string> starts;
    for (int i = 0; i < 2000; ++i)
        starts.insert(ScrambleField("E", "key", ""));
    EXPECT_FALSE(starts.contains("00"));
    EXPECT_GT(starts.size(), 200U);
}

// A receiver that has its key.
class LinkReceiverTest : public testing::Test {
protected:
    using enum LinkReceiver::Arrival;

    LinkReceiverTest() { restart(); }
    void restart() {
        receiver.reset();
        EXPECT_EQ(arrive(kKey), Key);
        records.clear();
    }
    LinkReceiver::Arrival arrive(std::string_view bytes) {
        return receiver.DataArrival(bytes, record);
    }
    // Feeds one arrival and then looks for as long as a line is there; keeps the records in hex.
    void feed(std::string_view bytes) {
        LinkReceiver::Arrival arrival = arrive(bytes);
        for (; arrival == Record; arrival = receiver.hasLine() ? arrive({}) : Nothing)
            records.push_back(toHex(toBytes(record)));
        EXPECT_EQ(arrival, Nothing);
    }

    LinkReceiver receiver;
    Comrecord record;
    std::vector<std::string> records;
};

TEST_F(LinkReceiverTest, KnownLinesAreMadeAndTakenHoweverTheyAreSplit) {
    std::string stream;
    std::vector<std::string> expected;
    for (const auto& sample : kLines) {
        EXPECT_EQ(encodeLine(recordWith(fromHex(sample.comrecord)), kKey, sample.start),
                  sample.line);
        stream += sample.line;
        expected.emplace_back(sample.comrecord);
    }
    for (std::size_t split = 0; split <= stream.size(); ++split) {
        restart();
        feed(stream.substr(0, split));
        feed(stream.substr(split));
        EXPECT_EQ(records, expected) << split;
    }
    restart();
    for (const char byte : stream)
        feed({&byte, 1});
    EXPECT_EQ(records, expected);
}

TEST_F(LinkReceiverTest, TheFirstPacketIsAKeyOnlyAtItsExactSize) {
    for (const std::string& packet : {kKey.substr(1), kKey + kEnd}) {
        receiver.reset();
        EXPECT_EQ(arrive({}), Nothing);
        EXPECT_EQ(receiver.KeyReceived, 0);
        EXPECT_EQ(arrive(packet), Nothing);
        // A second packet does not become the key, either: both are read as lines.
        EXPECT_EQ(arrive(kKey), packet.ends_with("\n") ? Record : Nothing);
        EXPECT_EQ(receiver.KeyReceived, 1);
        EXPECT_EQ(receiver.SessionKey, "");
        EXPECT_EQ(arrive("\r\n"), Record);
    }
    // NULs and line ends may be part of a key; a new connection starts with its own.
    const std::string odd_key = std::string("\0\r\n", 3) + std::string(29, '\0');
    restart();
    EXPECT_EQ(receiver.KeyReceived, kTrue);
    EXPECT_EQ(arrive("10"), Nothing);
    receiver.close();
    EXPECT_EQ(receiver.KeyReceived, 0);
    EXPECT_EQ(receiver.SessionKey, kKey);
    EXPECT_EQ(arrive(odd_key), Key);
    EXPECT_EQ(receiver.SessionKey, odd_key);
}

TEST_F(LinkReceiverTest, TheLongestValidLineIsTakenAndALongerOneRefused) {
    const std::string full(kComrecordSize, 'x');
    const std::string line = encodeLine(recordWith(full), kKey, 7);
    ASSERT_EQ(line.size(), kMaxLineSize);
    for (const std::size_t split : {std::size_t{0}, line.size() - 1, line.size()}) {
        restart();
        feed(line.substr(0, split));
        feed(line.substr(split) + line + kEnd);
        EXPECT_EQ(records, (std::vector<std::string>{toHex(full), toHex(full), "03"})) << split;
    }
    EXPECT_EQ(arrive(kLongest), Nothing);
    EXPECT_EQ(arrive("0"), TooLong);
    EXPECT_EQ(arrive("\r\n"), TooLong);
    restart(); // a line end that comes too late does not help
    EXPECT_EQ(arrive(kLongest + "\r\n"), TooLong);
    restart(); // nor does a valid line before it
    EXPECT_EQ(arrive(kEnd + kLongest + '0'), Record);
    EXPECT_EQ(arrive({}), TooLong);
    receiver.reset(); // without a key, too
    EXPECT_EQ(arrive(kLongest + '0'), Nothing);
    EXPECT_EQ(arrive("0"), TooLong);
}

TEST_F(LinkReceiverTest, LoneHalvesOfALineEndAndNulsBelongToTheLine) {
    EXPECT_EQ(arrive("\n\r"), Nothing);
    EXPECT_EQ(arrive("\r\n"), Record);
    feed(std::string("10\0\0zz\r\n", 8) + kEnd);
    EXPECT_EQ(records.back(), "03");
}

} // namespace
} // namespace tollwick
