#include "base/ansi.h"

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace tollwick {
namespace {

std::string convert(std::string_view text, UINT from, UINT to, DWORD flags,
                    const char* substitute) {
    if (text.empty())
        return {};
    const int length = static_cast<int>(text.size());
    std::wstring wide(
        static_cast<std::size_t>(MultiByteToWideChar(from, 0, text.data(), length, nullptr, 0)),
        L'\0');
    const int wide_length = static_cast<int>(wide.size());
    MultiByteToWideChar(from, 0, text.data(), length, wide.data(), wide_length);
    std::string result(static_cast<std::size_t>(WideCharToMultiByte(
                           to, flags, wide.data(), wide_length, nullptr, 0, substitute, nullptr)),
                       '\0');
    WideCharToMultiByte(to, flags, wide.data(), wide_length, result.data(),
                        static_cast<int>(result.size()), substitute, nullptr);
    return result;
}

} // namespace

std::string toAnsi(std::string_view utf8) {
    // Where UTF-8 itself is the ANSI code page nothing is lacking, and neither may be given.
    // Elsewhere no letter stands in for one that merely looks like it.
    const bool lacks_none = GetACP() == CP_UTF8;
    return convert(utf8, CP_UTF8, CP_ACP, lacks_none ? 0 : WC_NO_BEST_FIT_CHARS,
                   lacks_none ? nullptr : "?");
}

std::string fromAnsi(std::string_view bytes) {
    // CP_UTF8 as the target takes no substitute.
    return convert(bytes, CP_ACP, CP_UTF8, 0, nullptr);
}

} // namespace tollwick
