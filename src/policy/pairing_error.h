#pragma once

#include <cstdint>
#include <exception>
#include <string>

namespace bridge {

// Why pairing failed, with a finished English message for the dashboard.
class PairingError : public std::exception {
public:
    enum class Case { server, keychain, invalidServerURL, invalidCode, invalidResponse };

    // The Agent Server's own words, or those of the failed connection.
    static PairingError server(std::string message);
    // The secure store's own numeric status.
    static PairingError keychain(int32_t status);
    static PairingError invalidServerURL();
    static PairingError invalidCode();
    static PairingError invalidResponse();

    Case kind() const noexcept { return m_kind; }
    const char* what() const noexcept override { return m_message.c_str(); }

private:
    PairingError(Case kind, std::string message) : m_kind(kind), m_message(std::move(message)) {}

    Case m_kind;
    std::string m_message;
};

} // namespace bridge
