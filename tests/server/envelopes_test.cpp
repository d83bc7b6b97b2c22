#include "server/envelopes.h"

#include "base/platform_error.h"

#include <gtest/gtest.h>
#include <limits>

namespace bridge {
namespace {

class FixedClock : public Clock {
public:
    Date now() const override { return {1786706921}; } // 2026-08-14T11:28:41Z
    std::chrono::milliseconds uptime() const override { return {}; }
};

const FixedClock clock;

TEST(SuccessEnvelope, HasItsKeysSortedAndNoIdUnlessGiven) {
    const auto with = Responder("r-1", clock).success(std::vector<std::string>{"a"});
    EXPECT_EQ(with.status, 200);
    EXPECT_EQ(with.body, R"({"completedAt":"2026-08-14T11:28:41Z","requestId":"r-1","result":["a"]})");
    const auto without = Responder(std::nullopt, clock).success(true);
    EXPECT_EQ(without.body, R"({"completedAt":"2026-08-14T11:28:41Z","result":true})");
}

TEST(SuccessEnvelope, ResultThatJSONCannotSayIsAnEncodingError) {
    const auto response = Responder("r", clock).success(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(response.status, 500);
    EXPECT_EQ(response.body, R"({"completedAt":"2026-08-14T11:28:41Z","error":{"code":"encoding_error",)"
                             R"("message":"JSON has no way to write the number nan."},"requestId":"r"})");
}

TEST(ErrorEnvelope, HasCodeBeforeMessage) {
    const auto response = Responder(std::nullopt, clock).error(serverErrors::requestTooLarge, "Request exceeds 1 MB.");
    EXPECT_EQ(response.status, 413);
    EXPECT_EQ(
        response.body,
        R"({"completedAt":"2026-08-14T11:28:41Z","error":{"code":"request_too_large","message":"Request exceeds 1 MB."}})");
}

TEST(ErrorEnvelope, SurvivesAMessageThatIsNotUTF8) {
    const auto response = Responder("\xff", clock).error(serverErrors::internalError, "caf\xe9");
    EXPECT_EQ(response.body, "{\"completedAt\":\"2026-08-14T11:28:41Z\",\"error\":{\"code\":\"internal_error\","
                             "\"message\":\"caf\xEF\xBF\xBD\"},\"requestId\":\"\xEF\xBF\xBD\"}");
}

struct WireCode {
    AppleBridgeError error;
    int status;
    const char* code;
    const char* message;
};

TEST(BridgeErrors, HaveTheirCodesStatusesAndMessages) {
    const WireCode table[] = {
        {AppleBridgeError::permissionDenied("Calendar"), 403, "permission_denied",
         "Full access to Calendar has not been granted."},
        {AppleBridgeError::calendarNotFound("c"), 400, "calendar_not_found", "Calendar not found: c"},
        {AppleBridgeError::eventNotFound("e"), 400, "event_not_found", "Calendar event not found: e"},
        {AppleBridgeError::listNotFound("l"), 400, "list_not_found", "Reminder list not found: l"},
        {AppleBridgeError::reminderNotFound("r"), 400, "reminder_not_found", "Reminder not found: r"},
        {AppleBridgeError::operationNotSupported("x.y"), 400, "unsupported_operation",
         "Unsupported bridge operation: x.y"},
        {AppleBridgeError::confirmationRequired("files.delete"), 400, "confirmation_required",
         "Explicit confirmation is required for files.delete."},
        {AppleBridgeError::malformedRequest("d"), 400, "malformed_request", "Malformed bridge request: d"},
        {AppleBridgeError::resourceAccessDenied("d"), 403, "resource_access_denied",
         "Brindlefox resource access denied: d"},
        {AppleBridgeError::resourceNotFound("p"), 400, "resource_not_found", "Resource not found: p"},
        {AppleBridgeError::capabilityUnavailable("d"), 400, "capability_unavailable", "Capability unavailable: d"},
        {AppleBridgeError::capabilityDenied("contacts.read"), 403, "capability_denied",
         "Brindlefox capability is disabled: contacts.read"},
        {AppleBridgeError::unsafePath("../x"), 400, "unsafe_path", "Path is outside the authorized roots: ../x"},
        {AppleBridgeError::operationFailed("d"), 400, "operation_failed", "Operation failed: d"},
        {AppleBridgeError::outcomeUnknown("d"), 400, "outcome_unknown", "Operation outcome is unknown: d"},
        {AppleBridgeError::invalidDateRange(), 400, "invalid_date_range",
         "The end date must be later than the start date."},
    };
    for (const auto& row : table) {
        EXPECT_EQ(errorCode(&row.error), row.code);
        EXPECT_EQ(errorStatus(&row.error), row.status) << row.code;
        EXPECT_STREQ(row.error.what(), row.message);
    }
}

TEST(OtherErrors, AreInternalWithTheirOwnDescription) {
    const auto response =
        Responder(std::nullopt, clock).failure(std::make_exception_ptr(PlatformError("The disk is full.")));
    EXPECT_EQ(response.status, 500);
    EXPECT_EQ(
        response.body,
        R"({"completedAt":"2026-08-14T11:28:41Z","error":{"code":"internal_error","message":"The disk is full."}})");
}

TEST(ReasonPhrases, KnowTheirStatuses) {
    EXPECT_EQ(reasonPhrase(200), "OK");
    EXPECT_EQ(reasonPhrase(400), "Bad Request");
    EXPECT_EQ(reasonPhrase(401), "Unauthorized");
    EXPECT_EQ(reasonPhrase(403), "Forbidden");
    EXPECT_EQ(reasonPhrase(404), "Not Found");
    EXPECT_EQ(reasonPhrase(413), "Payload Too Large");
    EXPECT_EQ(reasonPhrase(500), "Internal Server Error");
    EXPECT_EQ(reasonPhrase(418), "Internal Server Error");
}

TEST(ResponseHead, IsFixedToTheByte) {
    EXPECT_EQ(responseHead({404, "{}é", {}}),
              "HTTP/1.1 404 Not Found\r\nContent-Type: application/json; charset=utf-8\r\n"
              "Content-Length: 4\r\nConnection: close\r\nCache-Control: no-store\r\n\r\n");
}

std::string payloadFault(std::optional<JSONValue> payload) {
    try {
        decodePayload<std::vector<int64_t>>(payload);
    } catch (const AppleBridgeError& error) {
        return error.what();
    }
    return "decoded";
}

TEST(Payload, MissingOrMisshapenIsAMalformedRequest) {
    EXPECT_EQ(payloadFault(std::nullopt), "Malformed bridge request: Missing payload.");
    EXPECT_EQ(payloadFault(parseJSON("[5,true]")), "Malformed bridge request: [1]: expected an integer");
    EXPECT_EQ(payloadFault(parseJSON("[5.0]")), "decoded");
}

} // namespace
} // namespace bridge
