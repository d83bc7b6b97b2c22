#pragma once

#include "adapters/eds/eds_error.h"

#include <atomic>
#include <libedataserver/libedataserver.h>
#include <string>

namespace bridge {

// A conversation with what stands behind one source, on one thread whose default context stays the same. It blocks; the
// cancellable ends each call at once. Every function throws PlatformError. The connection is made when it is first
// needed and again when it was lost: what only reads is then tried again, what changes something never.
class SourceClient {
public:
    SourceClient(const SourceClient&) = delete;
    SourceClient& operator=(const SourceClient&) = delete;

    bool isReadOnly(GCancellable* cancellable);
    // The backends themselves let many a change pass.
    void requireWritable(GCancellable* cancellable);

protected:
    // `subject` is for the beginning of a sentence.
    SourceClient(std::string source, std::string subject)
        : m_source(std::move(source)), m_subject(std::move(subject)) {}
    virtual ~SourceClient() { disconnect(); }

    virtual EClient* connect(ESource* source, GCancellable* cancellable, GError** error) const = 0;
    // What was learnt over a connection that is gone.
    virtual void forget() {}

    const std::string& subject() const { return m_subject; }
    void setSubject(std::string subject) { m_subject = std::move(subject); }

    EClient* client(GCancellable* cancellable);
    template <typename Read> auto reading(GCancellable* cancellable, Read read) {
        // The service is several processes, which die and are found dead one after the other.
        constexpr int furtherAttempts = 3;
        for (int attempt = 0; attempt < furtherAttempts; ++attempt) {
            try {
                return read(client(cancellable));
            } catch (const EdsError& error) {
                if (error.fault != EdsFault::lost) throw;
                drop();
            }
        }
        return read(client(cancellable));
    }

private:
    void disconnect();
    void drop();

    std::string m_source;
    std::string m_subject;
    GObjectPointer<EClient> m_client;
    gulong m_watch = 0;
    std::atomic<bool> m_died = false;
};

} // namespace bridge
