// The plain types that records are made of, as they stand on the wire.
#pragma once

#include "base/ansi.h"
#include "base/number_types.h"
#include "base/text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace tollwick {

// A fixed field of exactly `N` bytes in the ANSI code page. A fresh one is all NULs; a text that is
// assigned is cut to N bytes or padded with blanks. The bytes of a field that nobody assigns travel
// through unchanged.
template <std::size_t N>
class FixedText {
public:
    static constexpr std::size_t width = N;

    // `utf8` is converted to the ANSI code page; characters that it lacks become "?".
    FixedText& operator=(std::string_view utf8) {
        setBytes(toAnsi(utf8));
        return *this;
    }

    // UTF-8, without trailing NULs and blanks.
    [[nodiscard]] std::string text() const { return fromAnsi(withoutTrailingBlanks(bytes())); }

    [[nodiscard]] std::string_view bytes() const { return {bytes_.data(), N}; }
    [[nodiscard]] char* data() { return bytes_.data(); }

    // Takes ANSI bytes, cut or padded with blanks to the width.
    void setBytes(std::string_view ansi) {
        const std::size_t count = std::min(N, ansi.size());
        std::copy_n(ansi.begin(), count, bytes_.begin());
        std::fill(bytes_.begin() + count, bytes_.end(), ' ');
    }

    bool operator==(const FixedText&) const = default;

private:
    std::array<char, N> bytes_{};
};

// A text of variable length in the ANSI code page; on the wire a 16-bit length and the bytes.
class VarText {
public:
    static constexpr std::size_t max_bytes = 0xFFFF;

    VarText() = default;
    explicit VarText(std::string_view utf8) { *this = utf8; }

    VarText& operator=(std::string_view utf8) {
        bytes_ = toAnsi(utf8);
        return *this;
    }

    // UTF-8, without trailing NULs and blanks.
    [[nodiscard]] std::string text() const { return fromAnsi(withoutTrailingBlanks(bytes_)); }
    // UTF-8, without trailing NULs only: a script may end in blanks.
    [[nodiscard]] std::string scriptText() const { return fromAnsi(withoutTrailingNuls(bytes_)); }

    [[nodiscard]] const std::string& bytes() const { return bytes_; }
    void setBytes(std::string ansi) { bytes_ = std::move(ansi); }

    bool operator==(const VarText&) const = default;

private:
    std::string bytes_;
};

// Bytes without a meaning to the console, carried through unchanged.
template <std::size_t N>
using RawBytes = std::array<char, N>;

} // namespace tollwick
