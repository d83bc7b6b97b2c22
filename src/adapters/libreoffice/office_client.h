#pragma once

#include "adapters/libreoffice/libreoffice.h"
#include "adapters/libreoffice/office_process.h"
#include "adapters/libreoffice/protocol.h"
#include "adapters/libreoffice/work_folder.h"

#include <mutex>
#include <optional>

namespace bridge::office {

Patience patienceOf(const Office::Call& call);
[[noreturn]] void timeIsOver(const Office::Call& call);

// Asks the helper, and starts it when it isn't there. One thread at a time, but for the two marked.
class OfficeClient {
public:
    explicit OfficeClient(const LibreOfficeOptions& options) : m_options(options) {}

    // The reply. Throws ScriptError for what the helper says, timedOut when that takes too long, in which case the
    // helper and LibreOffice are killed, and connectionInvalid when they end by themselves.
    template <typename Arguments> typename Arguments::Result ask(const Arguments& arguments, Office::Call& call) {
        const Request<Arguments> request{std::string(Arguments::operation), arguments};
        return result<typename Arguments::Result>(exchange(encodeJSON(request), call));
    }

    // Counts the programs that were started. What an earlier one knew is gone. Looks whether the last is still there.
    int64_t generation();
    void end();

    // Where the helper finds documents; made when it is first asked for. Throws PlatformError.
    WorkFolder& folder();

    std::optional<std::string> whyUnavailable() const; // any thread
    bool isRunning() const;                            // any thread

private:
    JSONValue exchange(const std::string& request, Office::Call& call);
    std::optional<JSONValue> tryExchange(const std::string& request, Office::Call& call);
    void start(Office::Call& call);
    void forget();
    [[noreturn]] void fail(const Failure& failure);
    [[noreturn]] void failWithNonsense();

    template <typename Result> Result result(const JSONValue& value) {
        try {
            auto reply = decode<Reply<Result>>(value);
            if (reply.failure) fail(*reply.failure);
            if (reply.result) return std::move(*reply.result);
        } catch (const DecodingError&) {
        }
        failWithNonsense();
    }

    LibreOfficeOptions m_options;
    std::optional<WorkFolder> m_folder;
    int64_t m_generation = 0;
    mutable std::mutex m_mutex; // of the two below, as seen from other threads
    std::unique_ptr<OfficeProcess> m_process;
    mutable bool m_isAvailable = false;
};

} // namespace bridge::office
