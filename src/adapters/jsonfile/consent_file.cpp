#include "adapters/jsonfile/consent_file.h"

#include "base/log.h"
#include "base/platform_error.h"
#include "base/record.h"
#include "platform/privacy_service_names.h"

#include <algorithm>
#include <climits>

namespace bridge {

namespace {

std::map<PrivacyService, std::optional<int>> readAnswers(const std::string& text) {
    std::map<PrivacyService, std::optional<int>> answers;
    const auto stored = decode<std::map<std::string, JSONValue>>(parseJSON(text));
    for (const auto& known : privacyServices) {
        const auto found = stored.find(std::string(known.name));
        if (found == stored.end()) continue;
        std::optional<int> status;
        // Clamped: cut off, a number without meaning could turn into one that grants.
        if (!found->second.isNull())
            status = static_cast<int>(std::clamp<int64_t>(decode<int64_t>(found->second), INT_MIN, INT_MAX));
        answers.emplace(known.service, status);
    }
    return answers;
}

constexpr int fullAccess = 3;

int denied(PrivacyService service) {
    return service == PrivacyService::music ? 1 : 2;
}

int restricted(PrivacyService service) {
    return service == PrivacyService::music ? 2 : 1;
}

// Whether the user still has to decide about full access: nothing was asked yet, or only for the right to add.
bool isOpen(PrivacyService service, std::optional<int> status) {
    const bool knowsWriteOnly = service == PrivacyService::calendar || service == PrivacyService::reminders;
    return status == 0 || (knowsWriteOnly && status == 4);
}

} // namespace

ConsentFile::ConsentFile(std::string path, ConsentPrompt& prompt)
    : m_path(std::move(path)), m_file(m_path, Trust::oursOnly), m_prompt(prompt) {
    const auto text = m_file.read();
    if (!text) return;
    try {
        m_answers = readAnswers(*text);
    } catch (const std::runtime_error& fault) {
        log::note(std::string("The file of the user's consent is damaged and grants nothing: ") + fault.what());
    }
}

std::optional<int> ConsentFile::status(PrivacyService service) const {
    const auto found = m_answers.find(service);
    return found == m_answers.end() ? std::optional(0) : found->second;
}

Task<bool> ConsentFile::requestAccess(PrivacyService service) {
    if (isOpen(service, status(service))) {
        const auto guard = co_await m_asking.lock();
        // Whoever held the lock before may have asked the same.
        if (isOpen(service, status(service))) co_await ask(service);
    }
    co_return status(service) == fullAccess;
}

bool ConsentFile::canAskAgain(PrivacyService service) const {
    const auto present = status(service);
    return present && present != restricted(service);
}

Task<bool> ConsentFile::askAgain(PrivacyService service) {
    const auto before = m_answersGiven[service];
    const auto guard = co_await m_asking.lock();
    if (status(service) != fullAccess && canAskAgain(service) && m_answersGiven[service] == before)
        co_await ask(service);
    co_return status(service) == fullAccess;
}

Task<> ConsentFile::ask(PrivacyService service) {
    const bool allowed = co_await m_prompt.ask(service);
    setStatus(service, allowed ? fullAccess : denied(service));
}

void ConsentFile::setStatus(PrivacyService service, std::optional<int> status) {
    auto answers = m_answers;
    answers[service] = status;
    JSONValue::Object stored;
    for (const auto& [each, answer] : answers)
        stored.emplace(nameOf(each), answer ? JSONValue{static_cast<double>(*answer)} : JSONValue{nullptr});
    try {
        m_file.write(writeJSON({std::move(stored)}));
    } catch (const PlatformError& error) {
        throw PlatformError("The answer could not be saved, so nothing has changed. See that " + m_path +
                            " can be written, then try again. " + error.what());
    }
    m_answers = std::move(answers);
    ++m_answersGiven[service];
}

} // namespace bridge
