#include "app/ansi.h"
#include "app/utf8.h"
#include "tests/support/code_page.h"
#include "tests/support/hex.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace tollwick {
namespace {

TEST(Ansi, KnowsWindows1252) {
    if (!ansiIsWindows1252())
        GTEST_SKIP() << "another ANSI code page is active";
    EXPECT_EQ(toHex(toAnsi("Åäö é")), "c5e4f620e9");
    EXPECT_EQ(toHex(toAnsi("€‚ŠŒž™Ÿ")), "80828a8c9e999f");
    EXPECT_EQ(fromAnsi(fromHex("c5e4f6 80 9f 7e")), "Åäö€Ÿ~");
}

TEST(Ansi, EveryByteComesBackAsItWas) {
    if (!ansiIsWindows1252())
        GTEST_SKIP() << "another ANSI code page is active";
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes.push_back(static_cast<char>(byte));
    const std::string utf8 = fromAnsi(bytes);
    EXPECT_TRUE(isValidUtf8(utf8));
    EXPECT_EQ(toHex(toAnsi(utf8)), toHex(bytes));
}

TEST(Ansi, WhatTheCodePageLacksBecomesAQuestionMark) {
    if (!ansiIsWindows1252())
        GTEST_SKIP() << "another ANSI code page is active";
    EXPECT_EQ(toAnsi("aΩb"), "a?b"); // no letter that merely looks alike
    EXPECT_EQ(toAnsi("漢字"), "??");
    EXPECT_EQ(toAnsi("a\xFF"
                     "b"),
              "a?b");
    EXPECT_EQ(toAnsi(""), "");
}

TEST(Utf8, TellsWellFormedFromMalformed) {
    struct {
        std::string_view text;
        bool valid;
    } const cases[] = {
        {"", true},
        {"a\r\n", true},
        {"\xC2\x80", true},
        {"\xED\x9F\xBF", true},
        {"\xEF\xBF\xBD", true}, // the replacement character itself
        {"\xF4\x8F\xBF\xBF", true},
        {"\x80", false},
        {"\xC3", false},
        {"\xC3(", false},
        {"\xC0\xAF", false},         // longer than needed
        {"\xE0\x9F\xBF", false},     // longer than needed
        {"\xED\xA0\x80", false},     // half of a surrogate pair
        {"\xF4\x90\x80\x80", false}, // beyond the last code point
        {"\xF5\x80\x80\x80", false},
        {"\xE2\x82", false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(isValidUtf8(c.text), c.valid) << toHex(c.text);
}

TEST(Utf8, CodePointsComeBackAsTheyWere) {
    for (const char32_t code_point : {0x24, 0x7F, 0x80, 0x7FF, 0x800, 0xFFFF, 0x10000, 0x10FFFF}) {
        std::string utf8;
        appendCodePoint(utf8, code_point);
        std::string_view rest = utf8;
        EXPECT_EQ(takeCodePoint(rest), code_point);
        EXPECT_TRUE(rest.empty());
    }
}

} // namespace
} // namespace tollwick
