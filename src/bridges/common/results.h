#pragma once

#include "base/record.h"

namespace bridge {

// What every deletion answers with.
struct BridgeDeleteResult {
    bool deleted = false;
    std::string identifier;

    static constexpr auto fields() {
        return std::tuple{required("deleted", &BridgeDeleteResult::deleted),
                          required("identifier", &BridgeDeleteResult::identifier)};
    }
};
static_assert(listsEveryMember<BridgeDeleteResult>());

// For an operation that has nothing to tell but that it was done.
struct BridgeOperationResult {
    bool success = false;
    std::string operation;

    static constexpr auto fields() {
        return std::tuple{required("success", &BridgeOperationResult::success),
                          required("operation", &BridgeOperationResult::operation)};
    }
};
static_assert(listsEveryMember<BridgeOperationResult>());

} // namespace bridge
