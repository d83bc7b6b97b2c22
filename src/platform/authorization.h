#pragma once

#include "base/task.h"

#include <optional>

namespace bridge {

// The services whose use the user grants one by one.
enum class PrivacyService { calendar, reminders, contacts, music, location };

// Each service's authorization status as its platform numbers it, read afresh at every call. Main thread only.
//
//     calendar, reminders   0 not determined, 1 restricted, 2 denied, 3 full access, 4 write only
//     contacts              0 not determined, 1 restricted, 2 denied, 3 authorized, 4 limited
//     music                 0 not determined, 1 denied, 2 restricted, 3 authorized
//     location              0 not determined, 1 restricted, 2 denied, 3 authorized always, 4 authorized when in use
//
// Nothing when the service does not exist here at all. Other numbers may come; they mean nothing known.
class Authorization {
public:
    virtual ~Authorization() = default;
    virtual std::optional<int> status(PrivacyService service) const = 0;

    // Asks the user for full access where that is still open, and answers whether it is granted now. Where the user has
    // answered before nobody is asked again. The task ends once, when the user has answered. Throws PlatformError when
    // nobody can be asked or the answer can't be kept; then nothing changed.
    virtual Task<bool> requestAccess(PrivacyService service) = 0;

    // Whether a user who has answered can be asked anew. Not where the platform keeps the answers and has the switches
    // for them: there the user goes to its settings.
    virtual bool canAskAgain(PrivacyService) const { return false; }

    // As requestAccess(), but the user is also asked who has answered before, unless full access is granted already.
    // Only where canAskAgain() says so; elsewhere it is requestAccess().
    virtual Task<bool> askAgain(PrivacyService service) { return requestAccess(service); }
};

} // namespace bridge
