#pragma once

#include <exception>
#include <string>
#include <string_view>

namespace bridge {

// The one error of the data bridges, the router and the script runner. Each case carries a finished English message
// for the user; what it becomes on the wire is the server's affair.
class AppleBridgeError : public std::exception {
public:
    enum class Case {
        permissionDenied,
        calendarNotFound,
        eventNotFound,
        listNotFound,
        reminderNotFound,
        operationNotSupported,
        confirmationRequired,
        malformedRequest,
        resourceAccessDenied,
        resourceNotFound,
        capabilityUnavailable,
        capabilityDenied,
        unsafePath,
        operationFailed,
        outcomeUnknown,
        invalidDateRange,
    };
    static constexpr Case lastCase = Case::invalidDateRange;

    static AppleBridgeError permissionDenied(std::string_view service);
    static AppleBridgeError calendarNotFound(std::string_view identifier);
    static AppleBridgeError eventNotFound(std::string_view identifier);
    static AppleBridgeError listNotFound(std::string_view identifier);
    static AppleBridgeError reminderNotFound(std::string_view identifier);
    static AppleBridgeError operationNotSupported(std::string_view operation);
    static AppleBridgeError confirmationRequired(std::string_view operation);
    static AppleBridgeError malformedRequest(std::string_view detail);
    static AppleBridgeError resourceAccessDenied(std::string_view detail);
    static AppleBridgeError resourceNotFound(std::string_view identifierOrPath);
    static AppleBridgeError capabilityUnavailable(std::string_view detail);
    static AppleBridgeError capabilityDenied(std::string_view capability);
    static AppleBridgeError unsafePath(std::string_view path);
    static AppleBridgeError operationFailed(std::string_view detail);
    static AppleBridgeError outcomeUnknown(std::string_view detail);
    static AppleBridgeError invalidDateRange();

    Case kind() const noexcept { return m_kind; }
    // The message as the user reads it. what() has it only up to its first zero byte, should a detail hold one.
    const std::string& message() const noexcept { return m_message; }
    const char* what() const noexcept override { return m_message.c_str(); }

private:
    AppleBridgeError(Case kind, std::string message) : m_kind(kind), m_message(std::move(message)) {}

    Case m_kind;
    std::string m_message;
};

} // namespace bridge
