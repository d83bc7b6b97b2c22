#include "adapters/eds/source_client.h"

namespace bridge {

void SourceClient::disconnect() {
    if (m_client) g_signal_handler_disconnect(m_client.get(), m_watch);
    m_client.reset();
    m_died = false;
}

void SourceClient::drop() {
    disconnect();
    forget();
}

EClient* SourceClient::client(GCancellable* cancellable) {
    if (m_died) drop();
    if (m_client) return m_client.get();
    // It only has to say which one is meant.
    Outcome named;
    const GObjectPointer<ESource> source(e_source_new_with_uid(m_source.c_str(), nullptr, named.out()));
    named.check(m_subject);
    Outcome connected;
    EClient* const made = connect(source.get(), cancellable, connected.out());
    connected.check(m_subject);
    m_client.reset(made);
    const auto died = [](EClient*, gpointer data) { static_cast<SourceClient*>(data)->m_died = true; };
    m_watch = g_signal_connect(made, "backend-died", G_CALLBACK(+died), this);
    return made;
}

bool SourceClient::isReadOnly(GCancellable* cancellable) {
    return reading(cancellable, [&](EClient* client) -> bool {
        // What the client says by itself is as old as the last notice, and wrong for one that has just been opened.
        Outcome asked;
        e_client_retrieve_properties_sync(client, cancellable, asked.out());
        asked.check(m_subject);
        return e_client_is_readonly(client);
    });
}

void SourceClient::requireWritable(GCancellable* cancellable) {
    if (isReadOnly(cancellable)) throw PlatformError(m_subject + " is read-only.");
}

} // namespace bridge
