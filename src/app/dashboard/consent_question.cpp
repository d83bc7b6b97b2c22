#include "app/dashboard/consent_question.h"

#include "base/platform_error.h"

#include <algorithm>

namespace bridge {

// One question, for as long as its asker waits.
struct ConsentQuestion::Waiting {
    ConsentQuestion& questions;
    PrivacyService service;
    std::coroutine_handle<> asker;
    std::optional<Answer> answer;
    std::string whyNone;

    Waiting(ConsentQuestion& all, PrivacyService asked) : questions(all), service(asked) {}
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;
    ~Waiting() { withdraw(); }

    bool await_ready() const { return false; }
    void await_suspend(std::coroutine_handle<> waiter) {
        asker = waiter;
        questions.m_waiting.push_back(this);
        questions.showFirst();
    }
    void await_resume() const {}

    void withdraw() {
        const auto place = std::ranges::find(questions.m_waiting, this);
        if (place == questions.m_waiting.end()) return;
        questions.m_waiting.erase(place);
        questions.showFirst();
    }
};

Task<bool> ConsentQuestion::ask(PrivacyService service) {
    if (bringDashboard) bringDashboard();
    if (!m_hasDashboard) throw PlatformError("You can't be asked for access: the dashboard can't be shown here.");
    Waiting question(*this, service);
    co_await question;
    if (!question.answer) throw PlatformError(question.whyNone);
    co_return *question.answer == Answer::allow;
}

void ConsentQuestion::answer(Answer answer) {
    if (m_waiting.empty()) return;
    auto& first = *m_waiting.front();
    first.answer = answer;
    first.withdraw();
    first.asker.resume();
}

void ConsentQuestion::attachDashboard() {
    m_hasDashboard = true;
}

void ConsentQuestion::detachDashboard() {
    m_hasDashboard = false;
    failAll("The dashboard was closed before you answered.");
}

void ConsentQuestion::cannotBeShown(const std::string& reason) {
    failAll("You can't be asked for access. " + reason);
}

void ConsentQuestion::failAll(const std::string& reason) {
    // Not those who ask anew when they hear of it: they would ask for ever.
    for (auto asked = m_waiting; !asked.empty(); asked.pop_front()) {
        auto* const first = asked.front();
        if (std::ranges::find(m_waiting, first) == m_waiting.end()) continue;
        first->whyNone = reason;
        first->withdraw();
        first->asker.resume();
    }
}

void ConsentQuestion::showFirst() {
    current.set(m_waiting.empty() ? std::nullopt : std::optional(m_waiting.front()->service));
}

} // namespace bridge
