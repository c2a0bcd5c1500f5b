// Records as lines, made independently of this code.
#pragma once

#include <cstdint>
#include <string_view>

namespace tollwick::vectors {

inline constexpr std::string_view kLineKey =
    "3269294130605a5d74513b2d5f2452586e217a5a437d3e6c2e49242324746622";

inline constexpr struct {
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

} // namespace tollwick::vectors
