#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace bridge {

constexpr int64_t maximumSearchLimit = 500;

// How many finds a search answers with: at least one, at most 500.
constexpr size_t searchLimit(std::optional<int64_t> asked, int64_t unlessAsked) {
    return static_cast<size_t>(std::clamp<int64_t>(asked.value_or(unlessAsked), 1, maximumSearchLimit));
}

} // namespace bridge
