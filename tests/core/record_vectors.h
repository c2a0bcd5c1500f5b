// One sub-record of each kind field by field, packed independently of this code: what each field
// holds, and its bytes in hex ("20*12" is the byte 20 twelve times).
#pragma once

#include "link/record_packing.h"
#include "tests/support/hex.h"

#include <variant>

namespace tollwick::vectors {

struct FieldSample {
    std::variant<std::int32_t, float, std::string_view> value; // UTF-8; raw bytes as hex
    std::string_view bytes;

    template <class Type>
    void assignTo(Type& field) const {
        if constexpr (std::is_integral_v<Type>)
            field = static_cast<Type>(std::get<std::int32_t>(value));
        else if constexpr (std::is_same_v<Type, Single>)
            field = std::get<float>(value);
        else if constexpr (requires { field.text(); })
            field = std::get<std::string_view>(value);
        else
            fromHex(std::get<std::string_view>(value)).copy(field.data(), field.size());
    }
};

// clang-format off
inline constexpr FieldSample kSchedule[] = {
    {1, "0100"}, {-1, "ffff"}, {0, "0000"}, {-7886, "32e1"}, {0, "0000"}, {".01 Z", "2e3031205a"},
    {-1, "ffff"}, {"18-", "31382d2020"}, {"ÅZ", "c55a202020"}, {14018, "c236"}, {0, "0000"},
    {1155635617, "a199e144"}, {"8Xa", "385861 20*39"},
};
inline constexpr FieldSample kHost[] = {
    {-23987, "4da2"}, {-2062695028, "8cc50d85"}, {"cä_", "63e45f 20*509"}, {"11_", "31315f 20*57"},
    {"ÖåX", "d6e558 20*57"}, {-20440, "28b0"}, {-1, "ffff"}, {"9Öä", "39d6e4 20*27"},
    {"-Ö€", "2dd680 20*27"}, {"8", "38 20*29"}, {"_€9", "5f8039 20*27"}, {"c-b", "632d62 20*57"},
    {"-", "2d 20*59"}, {"Ä80", "c43830 20*57"}, {".Ö-", "2ed62d 20*57"}, {1, "0100"}, {1, "0100"},
    {"ÖÅ-", "d6c52d 20*97"}, {"cca", "636361 20*150"}, {2474, "aa09"}, {1, "0100"},
    {"9äÅ", "39e4c5 20*252"}, {0, "0000"}, {"ÖXZ", "d6585a 20*57"}, {1, "0100"}, {-1, "ffff"},
    {"äÅä", "e4c5e4 20*27"}, {"Y18", "593138 20*27"}, {"åöä", "e5f6e4 20*27"},
    {"åZX", "e55a58 20*57"}, {"1YY", "315959 20*27"}, {"YYÖ", "5959d6 20*27"},
    {"ö0b", "f63062 20*27"}, {"._€", "2e5f80 20*27"}, {"8Å1", "38c531 20*27"},
    {"Y11", "593131 20*27"}, {-1, "ffff"}, {0, "00*4"}, {0, "0000"}, {-6762, "96e5"}, {-1, "ffff"},
    {27591, "c76b"}, {"c_c", "635f63 20*27"}, {1, "0100"}, {"Z08", "5a3038 20*27"}, {0, "0000"},
    {0, "00*4"}, {0, "0000"}, {-1, "ffff"}, {-5522, "6eea"}, {"äÖY", "e4d659 20*57"}, {-1, "ffff"},
    {16783, "8f41"}, {".01", "2e3031 20*27"}, {"€aÅ", "8061c5 20*47"}, {"bö", "62f6 20*28"},
    {-1, "ffff"}, {-1, "ffff"}, {1, "0100"}, {-1, "ffff"}, {"-c9", "2d6339 20*105"},
};
inline constexpr FieldSample kSettings[] = {
    {-1, "ffff"}, {0.0F, "00*4"}, {0, "0000"}, {".bå", "03002e62e5"}, {"åÖ0", "0300e5d630"},
    {589511200, "203a2323"}, {"9cc", "0300396363"}, {0, "00*4"}, {"a", "010061"}, {0, "00*4"},
    {1, "0100"}, {"8X0", "0300385830"}, {-1, "ffff"}, {"a€1", "0300618031"}, {"Y09", "0300593039"},
    {"8ä8", "030038e438"}, {0, "0000"}, {-5121, "ffeb"}, {0, "0000"}, {1, "0100"}, {-1, "ffff"},
    {0, "0000"}, {23604, "345c"}, {-1, "ffff"}, {0, "0000"}, {-1, "ffff"}, {-1, "ffff"},
    {11521, "012d"}, {1, "0100"}, {-1, "ffff"}, {1, "0100"}, {1, "0100"}, {"-0ä", "03002d30e4"},
    {"ab128dab4255dc9f", "ab128dab4255dc9f"}, {"0Ää", "030030c4e4"}, {0, "0000"},
};
inline constexpr FieldSample kOutbox[] = {
    {"ZÅä", "03005ac5e4"}, {"1ä1", "030031e431"}, {"-Z9", "03002d5a39"}, {"ÅXö", "0300c558f6"},
    {0, "00*4"},
};
inline constexpr FieldSample kUucpStatus[] = {
    {0, "00*4"}, {-1, "ff*4"}, {-1, "ff*4"}, {-1, "ff*4"}, {1, "0100"}, {-1, "ff*4"},
    {"ÅÄZ", "0300c5c45a"}, {"ö0Ö", "0300f630d6"},
};
inline constexpr FieldSample kLogin[] = {{"Z0c", "03005a3063"}, {"€aX", "0300806158"}};
inline constexpr FieldSample kScript[] = {{"Äöö", "0300c4f6f6"}, {"_Ä-", "03005fc42d"}};
inline constexpr FieldSample kNameList[] = {{"1Z-", "0300315a2d"}};
inline constexpr FieldSample kUucpCommand[] = {{1, "0100"}, {0, "0000"}};
// clang-format on

} // namespace tollwick::vectors
