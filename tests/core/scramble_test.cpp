#include "app/ansi.h"
#include "link/scramble.h"
#include "tests/core/scramble_vectors.h"
#include "tests/support/code_page.h"
#include "tests/support/hex.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <set>

namespace tollwick {
namespace {

std::string lowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

TEST(Scramble, GivesTheKnownTextsInBothDirections) {
    for (const vectors::ScrambleSample& sample : vectors::kScrambleSamples) {
        SCOPED_TRACE(sample.scrambled);
        const std::string key = fromHex(sample.key);
        const std::string plain = fromHex(sample.plain);
        EXPECT_EQ(scramble(key, plain, sample.start), sample.scrambled);
        EXPECT_EQ(toHex(unscramble(key, sample.scrambled)), sample.plain);
        EXPECT_EQ(toHex(unscramble(key, lowerCase(std::string(sample.scrambled)))), sample.plain);
    }
}

TEST(Scramble, TakesTextsThatAreNotWellFormed) {
    for (const vectors::UnscrambleSample& sample : vectors::kUnscrambleSamples)
        EXPECT_EQ(toHex(unscramble(fromHex(sample.key), sample.scrambled)), sample.plain)
            << sample.scrambled;
    // Blanks around a digit are ignored, wherever the pair stands.
    EXPECT_EQ(unscramble("k", "054 "), unscramble("k", "0504"));
    EXPECT_EQ(unscramble("k", "05 4"), unscramble("k", "0504"));
    EXPECT_EQ(unscramble("k", "5 04"), unscramble("k", "0504"));
    EXPECT_EQ(unscramble("k", "05  "), unscramble("k", "0500"));
    EXPECT_EQ(unscramble("k", std::string_view("05\0\xFF", 4)), unscramble("k", "0500"));
    EXPECT_EQ(unscramble("k", "0"), "");
}

TEST(Scramble, AnEmptyKeyIsNoFault) {
    EXPECT_EQ(unscramble("", scramble("", "secret", 200)), "secret");
}

TEST(ScrambleField, ModeIsTakenWithoutRegardToCase) {
    for (const char* mode : {"E", "e"}) {
        const std::string scrambled = ScrambleField(mode, "key", "secret");
        EXPECT_EQ(scrambled.size(), 14U);
        EXPECT_EQ(ScrambleField("D", "key", scrambled), "secret");
        EXPECT_EQ(ScrambleField("d", "key", scrambled), "secret");
    }
    for (const char* mode : {"", "x", "ED", "DE"})
        EXPECT_EQ(ScrambleField(mode, "key", "secret"), "") << mode;
}

TEST(ScrambleField, StartsDifferentlyAndNeverAtZero) {
    std::set<std::string> starts;
    for (int i = 0; i < 2000; ++i)
        starts.insert(ScrambleField("E", "key", ""));
    EXPECT_FALSE(starts.contains("00"));
    EXPECT_GT(starts.size(), 200U);
}

TEST(HostPasswordKey, IsTheKnownOne) {
    EXPECT_EQ(toHex(HostPasswordKey), vectors::kPasswordKey);
    if (ansiIsWindows1252()) {
        EXPECT_EQ(fromAnsi(HostPasswordKey), "q4m´!kr3..-p.618¤(%w27bh41?~+?/cc572t-.xe-.jvhk");
    }
}

} // namespace
} // namespace tollwick
