#include "app/ansi.h"
#include "app/utf8.h"
#include "tests/support/code_page.h"
#include "tests/support/hex.h"

#include <gtest/gtest.h>

namespace tollwick {
namespace {

TEST(Ansi, ConvertsBothWaysAndMakesAQuestionMarkOfWhatTheCodePageLacks) {
    if (!ansiIsWindows1252())
        GTEST_SKIP() << "another ANSI code page is active";
    EXPECT_EQ(toHex(toAnsi("Åäö é €‚ŠŒž™Ÿ")), "c5e4f620e92080828a8c9e999f");
    EXPECT_EQ(fromAnsi(fromHex("c5e4f6 80 9f 7e")), "Åäö€Ÿ~");
    EXPECT_EQ(toAnsi("aΩb漢字"), "a?b??"); // no letter that merely looks alike
    EXPECT_EQ(toAnsi(fromHex("61 ff 62")), "a?b");
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes.push_back(static_cast<char>(byte));
    EXPECT_TRUE(isValidUtf8(fromAnsi(bytes)));
    EXPECT_EQ(toHex(toAnsi(fromAnsi(bytes))), toHex(bytes));
}

TEST(Utf8, TellsWellFormedFromMalformed) {
    for (const char* valid : {"", "61 0d 0a", "c2 80", "ed 9f bf", "ef bf bd", "f4 8f bf bf"})
        EXPECT_TRUE(isValidUtf8(fromHex(valid))) << valid;
    // Cut, longer than needed, half of a surrogate pair, beyond the last code point.
    for (const char* invalid : {"80", "c3", "c3 28", "e2 82", "c0 af", "e0 9f bf", "ed a0 80",
                                "f4 90 80 80", "f5 80 80 80"})
        EXPECT_FALSE(isValidUtf8(fromHex(invalid))) << invalid;
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
