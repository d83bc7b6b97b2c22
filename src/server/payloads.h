#pragma once

#include "base/record.h"

namespace bridge {

// For the deletions that name one thing.
struct IdentifierPayload {
    std::string identifier;

    static constexpr auto fields() { return std::tuple{required("identifier", &IdentifierPayload::identifier)}; }
};
static_assert(listsEveryMember<IdentifierPayload>());

struct LimitPayload {
    int64_t limit = 0;

    static constexpr auto fields() { return std::tuple{required("limit", &LimitPayload::limit)}; }
};
static_assert(listsEveryMember<LimitPayload>());

} // namespace bridge
