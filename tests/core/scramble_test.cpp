#include "link/scramble.h"
#include "tests/support/hex.h"

#include <gtest/gtest.h>

#include <cctype>
#include <set>

namespace tollwick {
namespace {

// Scrambled texts, made independently of this code. Keys and plain texts are ANSI bytes in hex.
constexpr std::string_view kKey1 =
    "3269294130605a5d74513b2d5f2452586e217a5a437d3e6c2e49242324746622";
constexpr std::string_view kKey2 =
    "f1e262b038f96dba088839c471f17f8e3c593cae39c376f44bee066bd7eb8fed";
constexpr std::string_view kOneByteKey = "6b";
constexpr std::string_view kPasswordKey = "71346db4216b72332e2e2d702e363138a4282577323762683"
                                          "4313f7e2b3f2f6363353732742d2e78652d2e6a76686b";
constexpr std::string_view kAllBytes =
    "000102030405060708090a0b0c0d0e0f101112131415161718191a1b1c1d1e1f202122232425262728292a2b2c2d2e"
    "2f303132333435363738393a3b3c3d3e3f404142434445464748494a4b4c4d4e4f505152535455565758595a5b5c5d"
    "5e5f606162636465666768696a6b6c6d6e6f707172737475767778797a7b7c7d7e7f808182838485868788898a8b8c"
    "8d8e8f909192939495969798999a9b9c9d9e9fa0a1a2a3a4a5a6a7a8a9aaabacadaeafb0b1b2b3b4b5b6b7b8b9babb"
    "bcbdbebfc0c1c2c3c4c5c6c7c8c9cacbcccdcecfd0d1d2d3d4d5d6d7d8d9dadbdcdddedfe0e1e2e3e4e5e6e7e8e9ea"
    "ebecedeeeff0f1f2f3f4f5f6f7f8f9fafbfcfdfeff";

struct ScrambleSample {
    std::string_view key;
    std::uint8_t start;
    std::string_view plain, scrambled;
};

constexpr ScrambleSample kScrambleSamples[] = {
    {kKey1, 111, "736563726574", "6FD05C96499E72"},
    {kKey1, 210, kAllBytes,
     "D2E088A3E7DB80DCBEB2EACFF75C4D09403E6EFA5728406813055755534B1C5C594B050E70A4A995E17DF71A68CBD"
     "C58DF61B39F88FF49411462D2284058E1799AE840ABAFC368F466DA7287FF1445C148F666C24FE048A09BDD7FFD7B"
     "F324E461F33DB6588C91AD49C57FD21023B47087992BE70037D1799C3AFA50E840C9218230D873B70BF02CEE02DA5"
     "FC70CBD19F0EE5E8A479850D803B5078503BB2CAC693BB57E6034B905F1EDC74AD8DBAC08EFF1834F584F7911A472"
     "6238D0A811A94A38907B7F735844566A6217CFC4B5D1F8A656527F1098504B0DAFADABA3F4B4B1A3EDE6885C215D1"
     "9750FC2803304A0D7A9BBD790C7C189ECCA8AA0B890F991B2"},
    {kKey2, 229, "", "E5"},
    {kKey2, 145, "736563726574", "91F5B8795BF895"},
    {kOneByteKey, 214, "736563726574", "D622EC24FD0916"},
    {kPasswordKey, 154, "736563726574", "9A7CD55573F906"},
};

// Texts that scrambling does not make, but unscrambling with the first key takes, and what they
// give.
constexpr std::pair<std::string_view, std::string_view> kUnscrambleSamples[] = {
    {"", ""},           {"41", ""},         {"4142F", "2f24"},
    {"zz4142", "73ea"}, {"41zz42", "f12b"}, {"41 142", "f22a"}};

TEST(Scramble, GivesTheKnownTextsInBothDirections) {
    for (const ScrambleSample& sample : kScrambleSamples) {
        SCOPED_TRACE(sample.scrambled);
        const std::string key = fromHex(sample.key);
        EXPECT_EQ(scramble(key, fromHex(sample.plain), sample.start), sample.scrambled);
        EXPECT_EQ(toHex(unscramble(key, sample.scrambled)), sample.plain);
        std::string lower(sample.scrambled);
        for (char& c : lower)
            c = static_cast<char>(std::tolower(c));
        EXPECT_EQ(toHex(unscramble(key, lower)), sample.plain);
    }
    EXPECT_EQ(toHex(HostPasswordKey), kPasswordKey);
    EXPECT_EQ(unscramble("", scramble("", "secret", 200)), "secret"); // an empty key is no fault
}

TEST(Scramble, TakesTextsThatAreNotWellFormed) {
    for (const auto& [scrambled, plain] : kUnscrambleSamples)
        EXPECT_EQ(toHex(unscramble(fromHex(kKey1), scrambled)), plain) << scrambled;
    // Blanks around a digit are ignored, wherever the pair stands.
    for (const char* text : {"054 ", "05 4", "5 04"})
        EXPECT_EQ(unscramble("k", text), unscramble("k", "0504")) << text;
    EXPECT_EQ(unscramble("k", "05  "), unscramble("k", "0500"));
    EXPECT_EQ(unscramble("k", std::string_view("05\0\xFF", 4)), unscramble("k", "0500"));
}

TEST(ScrambleField, TakesItsModeWithoutCaseAndStartsDifferentlyButNeverAtZero) {
    for (const char* mode : {"", "x", "ED", "DE"})
        EXPECT_EQ(ScrambleField(mode, "key", "secret"), "") << mode;
    const std::string scrambled = ScrambleField("e", "key", "secret");
    EXPECT_EQ(scrambled.size(), 14U);
    EXPECT_EQ(ScrambleField("D", "key", scrambled), "secret");
    EXPECT_EQ(ScrambleField("d", "key", scrambled), "secret");
    std::set<std::string> starts;
    for (int i = 0; i < 2000; ++i)
        starts.insert(ScrambleField("E", "key", ""));
    EXPECT_FALSE(starts.contains("00"));
    EXPECT_GT(starts.size(), 200U);
}

} // namespace
} // namespace tollwick
