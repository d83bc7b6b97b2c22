#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace bridge {

// An Agent Server as far as pairing goes, on 127.0.0.1, with a thread of its own: it gives out one-time codes and
// trades them for credentials at POST /apple-bridge/native/pair, also below another path. It can be told to misbehave.
// Its functions may be called from any thread.
class StandInAgentServer {
public:
    enum class Behaviour {
        honest,
        silent,            // takes the request and never answers
        dripping,          // answers byte by byte, without end
        redirecting,       // 307 to another port of this machine, which counts its visitors
        failingInText,     // 500, and a body that is no JSON
        withoutCredential, // 200 and {}
        emptyCredential,   // 200 and an empty credential
        flooding,          // 200 and a body without end
        hangingUp,         // closes without an answer
        notHTTP,
        scripted // what answerWith() said
    };

    struct Received {
        std::string method;
        std::string path;
        std::map<std::string, std::string> headers; // names in lower case
        std::string body;
    };

    // Listens on `port`, or on any free one. Throws PlatformError.
    explicit StandInAgentServer(uint16_t port = 0);
    // Hangs up on everybody.
    ~StandInAgentServer();
    StandInAgentServer(const StandInAgentServer&) = delete;
    StandInAgentServer& operator=(const StandInAgentServer&) = delete;

    uint16_t port() const;
    // "http://127.0.0.1:<port>"
    std::string url() const;

    // A code that is good for one pairing.
    std::string issueCode();
    void behave(Behaviour behaviour);
    void answerWith(int status, std::string body);

    // Every request so far that came whole, the oldest first, and the credentials given out.
    std::vector<Received> received() const;
    std::vector<std::string> credentials() const;
    // How many connections came to the place that `redirecting` names.
    int redirectVisits() const;
    // "http://127.0.0.1:<port>" of that place.
    std::string redirectURL() const;

    // Block until so many requests came whole; until so many clients hung up on an answer that was still going on.
    void waitForRequests(size_t count) const;
    void waitForHangUps(size_t count) const;

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace bridge
