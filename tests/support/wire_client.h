#pragma once

#include "base/file_descriptor.h"
#include "base/json_value.h"
#include "base/json_writer.h"

#include <optional>
#include <string>
#include <string_view>

namespace bridge {

// A client that is not ours to be polite with: raw bytes to 127.0.0.1:32123 and back.
class WireClient {
public:
    // Throws when nobody listens.
    WireClient();

    // False when the bridge no longer takes bytes.
    bool send(std::string_view bytes);
    void endSending();
    // Everything until the bridge closes. `wasReset` tells whether it did so rudely.
    std::string receiveAll();
    bool wasReset() const { return m_wasReset; }
    // Ends the connection with a reset instead of a good-bye.
    void vanish();

private:
    FileDescriptor m_socket;
    bool m_wasReset = false;
};

struct WireAnswer {
    std::string bytes;
    int status = 0;
    JSONValue body;

    // Of an error envelope; "" otherwise.
    std::string code() const;
    std::string message() const;
    std::optional<std::string> requestId() const;
    // The result of a success envelope; null otherwise.
    JSONValue result() const;
};

WireAnswer readAnswer(std::string bytes);

// The bytes of a request with the credential of the tests.
std::string requestBytes(std::string_view method, std::string_view path, std::string_view body = "");

// One request, bytes in, answer out.
WireAnswer exchange(std::string_view bytes);

// POST /v1/execute with this body; and with an envelope made of these.
WireAnswer execute(std::string_view body);
WireAnswer call(std::string_view operation, std::string_view payload = "", std::optional<bool> confirmed = {});

} // namespace bridge
