#pragma once

#include <set>
#include <string>
#include <vector>

namespace bridge {

// What the Agent Server knows of pairing: the codes it gave out and the credentials it traded for them.
class PairingDesk {
public:
    struct Answer {
        int status;
        std::string body;
    };

    // A new code that is good for one pairing.
    std::string issueCode();

    // Answers the JSON body of one pairing request: 200 with a new credential, 403 for a code that was not issued or
    // was used, 400 for what is no pairing request.
    Answer pair(const std::string& body);

    const std::vector<std::string>& credentials() const { return m_credentials; }

private:
    std::set<std::string> m_codes;
    std::vector<std::string> m_credentials;
};

} // namespace bridge
