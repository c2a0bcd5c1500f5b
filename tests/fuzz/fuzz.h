// What the fuzz targets share: the fuzzer's bytes piece by piece, and checks that end the program.
#pragma once

#include "base/prompter.h"
#include "base/run_time_error.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace tollwick {

struct Input {
    std::string take(std::size_t count) {
        const std::string_view taken = rest.substr(0, count);
        rest.remove_prefix(taken.size());
        return std::string(taken);
    }
    template <class Number = std::uint8_t>
    Number number() {
        Number number{};
        take(sizeof number).copy(reinterpret_cast<char*>(&number), sizeof number);
        return number;
    }
    // One byte says how long it is, three when it is long.
    std::string text() {
        const std::size_t size = number();
        return take(size < 255 ? size : number<std::uint16_t>());
    }

    std::string_view rest;
};

struct SilentPrompter : Prompter {
    void tell(BoxIcon, std::string_view) override { ++boxes; }
    Answer ask(BoxIcon, std::string_view, Answer usual) override { return usual; }
    void beep() override {}
    int boxes = 0;
};

inline void check(bool holds, const char* file = __builtin_FILE(), int line = __builtin_LINE()) {
    if (!holds)
        std::fprintf(stderr, "%s:%d: this does not hold\n", file, line), std::abort();
}

void fuzz(Input& input);

} // namespace tollwick

// A run-time error is the only exception that may come out of a target.
extern "C" int LLVMFuzzerTestOneInput(const char* data, std::size_t size) {
    try {
        tollwick::Input input{{data, size}};
        tollwick::fuzz(input);
    } catch (const tollwick::RunTimeError&) {
    }
    return 0;
}
