#pragma once

#include "app/bridge_model.h"
#include "options.h"

#include <filesystem>

namespace bridge::playground {

// The folder in which everything of one run lies. A throw-away one goes with this object.
class Profile {
public:
    explicit Profile(const std::optional<std::string>& keptFolder);
    ~Profile();
    Profile(const Profile&) = delete;
    Profile& operator=(const Profile&) = delete;

    const std::filesystem::path& folder() const { return m_folder; }

private:
    std::filesystem::path m_folder;
    bool m_isKept;
};

// Does in the model what the options say that the user has done: switches, sample folder, calendars, contacts, pairing.
// The bridge serves. Returns the credential, "" when unpaired. Throws std::runtime_error when the server does not come
// up.
std::string prepare(EventLoop& loop, BridgeModel& model, Platform& platform, const Options& options,
                    const std::filesystem::path& folder);

} // namespace bridge::playground
