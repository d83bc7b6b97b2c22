#pragma once

#include "adapters/jsonfile/private_file.h"
#include "base/async_mutex.h"
#include "platform/consent_prompt.h"

#include <cstdint>
#include <map>
#include <string>

namespace bridge {

// What the user answered for each service, on a desktop whose platform has no privacy settings of its own to ask:
//
//     {"calendar":3,"location":0,"music":null}
//
// A number is the status as the port counts it, null says that the service does not exist here, a service without an
// entry was never asked about. A damaged file grants nothing.
class ConsentFile : public Authorization {
public:
    // `path` is absolute, `prompt` outlives the object. Throws PlatformError when there is a file that can't be read.
    ConsentFile(std::string path, ConsentPrompt& prompt);

    std::optional<int> status(PrivacyService service) const override;
    // One question at a time; who asks for the same meanwhile gets the same answer.
    Task<bool> requestAccess(PrivacyService service) override;
    // The answers are ours to ask for, but not where the service does not exist or somebody else restricted it. An
    // answer that comes while this waits for its turn is good for this, too.
    bool canAskAgain(PrivacyService service) const override;
    Task<bool> askAgain(PrivacyService service) override;
    // Kept for the next start. Throws PlatformError when it can't be saved; then nothing changed.
    void setStatus(PrivacyService service, std::optional<int> status);

private:
    Task<> ask(PrivacyService service);

    const std::string m_path;
    PrivateFile m_file;
    ConsentPrompt& m_prompt;
    AsyncMutex m_asking;
    std::map<PrivacyService, std::optional<int>> m_answers;
    std::map<PrivacyService, uint64_t> m_answersGiven; // since the start
};

} // namespace bridge
