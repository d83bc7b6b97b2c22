#include "base/apple_bridge_error.h"

#include <gtest/gtest.h>

namespace bridge {
namespace {

using Case = AppleBridgeError::Case;

struct Row {
    AppleBridgeError error;
    Case kind;
    const char* message;
};

TEST(AppleBridgeError, HasAFinishedMessageForEachCase) {
    const Row rows[] = {
        {AppleBridgeError::permissionDenied("Calendar"), Case::permissionDenied,
         "Full access to Calendar has not been granted."},
        {AppleBridgeError::calendarNotFound("C-1"), Case::calendarNotFound, "Calendar not found: C-1"},
        {AppleBridgeError::eventNotFound("E-1"), Case::eventNotFound, "Calendar event not found: E-1"},
        {AppleBridgeError::listNotFound("L-1"), Case::listNotFound, "Reminder list not found: L-1"},
        {AppleBridgeError::reminderNotFound("R-1"), Case::reminderNotFound, "Reminder not found: R-1"},
        {AppleBridgeError::operationNotSupported("x.y"), Case::operationNotSupported,
         "Unsupported bridge operation: x.y"},
        {AppleBridgeError::confirmationRequired("files.move"), Case::confirmationRequired,
         "Explicit confirmation is required for files.move."},
        {AppleBridgeError::malformedRequest("no title"), Case::malformedRequest, "Malformed bridge request: no title"},
        {AppleBridgeError::resourceAccessDenied("not yours"), Case::resourceAccessDenied,
         "Brindlefox resource access denied: not yours"},
        {AppleBridgeError::resourceNotFound("a/b"), Case::resourceNotFound, "Resource not found: a/b"},
        {AppleBridgeError::capabilityUnavailable("no player"), Case::capabilityUnavailable,
         "Capability unavailable: no player"},
        {AppleBridgeError::capabilityDenied("files.read"), Case::capabilityDenied,
         "Brindlefox capability is disabled: files.read"},
        {AppleBridgeError::unsafePath("../x"), Case::unsafePath, "Path is outside the authorized roots: ../x"},
        {AppleBridgeError::operationFailed("disk full"), Case::operationFailed, "Operation failed: disk full"},
        {AppleBridgeError::outcomeUnknown("no answer"), Case::outcomeUnknown,
         "Operation outcome is unknown: no answer"},
        {AppleBridgeError::invalidDateRange(), Case::invalidDateRange,
         "The end date must be later than the start date."},
    };
    EXPECT_EQ(std::size(rows), 16u);
    for (size_t index = 0; index < std::size(rows); ++index) {
        EXPECT_STREQ(rows[index].error.what(), rows[index].message);
        EXPECT_EQ(rows[index].error.kind(), rows[index].kind);
        EXPECT_EQ(rows[index].kind, static_cast<Case>(index));
    }
}

TEST(AppleBridgeError, CarriesItsDetailUnchanged) {
    EXPECT_STREQ(AppleBridgeError::resourceNotFound("").what(), "Resource not found: ");
    EXPECT_STREQ(AppleBridgeError::unsafePath("ünï/😀 %s {}").what(),
                 "Path is outside the authorized roots: ünï/😀 %s {}");
}

TEST(AppleBridgeError, IsCaughtAsAnException) {
    try {
        throw AppleBridgeError::operationFailed("x");
    } catch (const std::exception& error) {
        EXPECT_STREQ(error.what(), "Operation failed: x");
    }
}

} // namespace
} // namespace bridge
