#pragma once

#include "base/published.h"
#include "platform/consent_prompt.h"

#include <coroutine>
#include <deque>
#include <functional>
#include <optional>
#include <string>

namespace bridge {

// The questions whether a service may be used, one after the other, for a dashboard to put to the user. Made before the
// model that asks through it; where no dashboard is there nor can be brought, nobody can be asked.
class ConsentQuestion : public ConsentPrompt {
public:
    enum class Answer { allow, dontAllow };

    // A question that nobody can be asked throws; one that waits when the dashboard goes is answered by a throw, too.
    Task<bool> ask(PrivacyService service) override;

    // The question that the user is to be shown now.
    Published<std::optional<PrivacyService>> current;
    // Answers it; the next one takes its place. Nothing when there is none.
    void answer(Answer answer);

    // The dashboard is there and can't be shown. All who wait are told so by a throw: nothing is allowed, and nothing
    // is taken for the user's answer, so that he can be asked another time. Not from an observer of `current`.
    void cannotBeShown(const std::string& reason);

    // Puts a dashboard before the user, making it if need be; called for each question before it is asked.
    std::function<void()> bringDashboard;
    void attachDashboard();
    void detachDashboard();

private:
    struct Waiting;
    void showFirst();
    void failAll(const std::string& reason);

    bool m_hasDashboard = false;
    std::deque<Waiting*> m_waiting; // the first is the current one
};

} // namespace bridge
