#include "adapters/libreoffice/office_client.h"

#include <algorithm>

namespace bridge::office {

Patience patienceOf(const Office::Call& call) {
    constexpr std::chrono::milliseconds longest = std::chrono::hours(24);
    return {Patience::Clock::now() + std::min(call.remaining(), longest), call.cancelDescriptor()};
}

void timeIsOver(const Office::Call& call) {
    call.check();
    throw ScriptError(ScriptError::timedOut, "AppleEvent timed out.");
}

namespace {

bool isFarewell(const JSONValue& reply) {
    return reply.object() && reply.object()->contains("leaving");
}

} // namespace

std::optional<std::string> OfficeClient::whyUnavailable() const {
    const std::lock_guard lock(m_mutex);
    if (m_isAvailable) return std::nullopt;
    auto missing = missingForSandbox(m_options.programs);
    m_isAvailable = missing.empty();
    if (m_isAvailable) return std::nullopt;
    return missing;
}

bool OfficeClient::isRunning() const {
    const std::lock_guard lock(m_mutex);
    return m_process && m_process->channel().isConnected();
}

int64_t OfficeClient::generation() {
    // Between two requests the helper says nothing but farewell.
    if (m_process && !m_process->channel().isSilent()) forget();
    return m_generation;
}

void OfficeClient::end() {
    if (m_process) forget();
}

void OfficeClient::forget() {
    const std::lock_guard lock(m_mutex);
    m_process.reset();
    ++m_generation;
}

void OfficeClient::fail(const Failure& failure) {
    if (failure.number == connectionInvalid) end();
    throw ScriptError(static_cast<int>(failure.number), failure.message);
}

void OfficeClient::failWithNonsense() {
    end();
    throw ScriptError(connectionInvalid, "LibreOffice's answer could not be understood.");
}

WorkFolder& OfficeClient::folder() {
    if (!m_folder) m_folder.emplace(m_options.folder);
    return *m_folder;
}

void OfficeClient::start(Office::Call& call) {
    if (const auto reason = whyUnavailable()) throw ScriptError(notStarted, *reason);
    const std::vector arguments{m_options.programs.home, std::to_string(m_options.idle.count()),
                                std::to_string(m_options.residentBytes), std::to_string(m_options.documents)};
    auto process = std::make_unique<OfficeProcess>(
        sandboxedCommand(m_options.programs, folder().documents(), arguments), folder().logFile());
    {
        const std::lock_guard lock(m_mutex);
        m_process = std::move(process);
    }
    try {
        result<bool>(parseJSON(m_process->channel().receive(patienceOf(call))));
    } catch (const ChannelClosed&) {
        end();
        throw ScriptError(notStarted, "LibreOffice could not be started.");
    } catch (const ScriptError&) {
        end();
        throw;
    }
}

// Nothing when the helper was about to leave and has not looked at the request.
std::optional<JSONValue> OfficeClient::tryExchange(const std::string& request, Office::Call& call) {
    if (!m_process) start(call);
    auto& channel = m_process->channel();
    try {
        channel.send(request, patienceOf(call));
    } catch (const ChannelClosed&) {
        // It may have said farewell before it went.
    }
    auto reply = parseJSON(channel.receive(patienceOf(call)));
    if (!isFarewell(reply)) return reply;
    forget();
    return std::nullopt;
}

JSONValue OfficeClient::exchange(const std::string& request, Office::Call& call) {
    try {
        call.check();
        while (true)
            if (auto reply = tryExchange(request, call)) return std::move(*reply);
    } catch (const PatienceOver&) {
        end();
        timeIsOver(call);
    } catch (const ChannelClosed&) {
        end();
        throw ScriptError(connectionInvalid, "LibreOffice ended unexpectedly.");
    } catch (const JSONError&) {
        failWithNonsense();
    }
}

} // namespace bridge::office
