#pragma once

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace bridge {

// Each fuzzer defines this. It must come to an end for every input, without an exception.
void fuzz(std::string_view input);

// A property that every input must keep; the fuzzer saves the one that doesn't.
inline void must(bool kept, const char* file = __builtin_FILE(), int line = __builtin_LINE()) {
    if (kept) return;
    std::fprintf(stderr, "%s:%d: not kept\n", file, line);
    std::abort();
}

} // namespace bridge
