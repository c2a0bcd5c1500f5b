#include "link/scramble.h"
#include "tests/core/scramble_vectors.h"
#include "tests/support/hex.h"

#include <gtest/gtest.h>

#include <cctype>
#include <set>

namespace tollwick {
namespace {

TEST(Scramble, GivesTheKnownTextsInBothDirections) {
    for (const vectors::ScrambleSample& sample : vectors::kScrambleSamples) {
        SCOPED_TRACE(sample.scrambled);
        const std::string key = fromHex(sample.key);
        EXPECT_EQ(scramble(key, fromHex(sample.plain), sample.start), sample.scrambled);
        EXPECT_EQ(toHex(unscramble(key, sample.scrambled)), sample.plain);
        std::string lower(sample.scrambled);
        for (char& c : lower)
            c = static_cast<char>(std::tolower(c));
        EXPECT_EQ(toHex(unscramble(key, lower)), sample.plain);
    }
    EXPECT_EQ(toHex(HostPasswordKey), vectors::kPasswordKey);
    EXPECT_EQ(unscramble("", scramble("", "secret", 200)), "secret"); // an empty key is no fault
}

TEST(Scramble, TakesTextsThatAreNotWellFormed) {
    for (const auto& [scrambled, plain] : vectors::kUnscrambleSamples)
        EXPECT_EQ(toHex(unscramble(fromHex(vectors::kKey1), scrambled)), plain) << scrambled;
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
