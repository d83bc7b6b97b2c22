#include "server/operation_rows.h"
#include "server/operation_tables.h"
#include "server/permission_snapshot.h"

namespace bridge {

namespace {

constexpr std::array rows{
    operation<&BridgeStatus::permissions>("permissions.get", std::nullopt),
};
static_assert(wellFormed(rows));

} // namespace

std::span<const Operation> statusOperations() {
    return rows;
}

} // namespace bridge
