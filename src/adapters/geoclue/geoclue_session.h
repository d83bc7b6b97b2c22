#pragma once

#include "adapters/dbus/glib_pointer.h"
#include "platform/location_manager.h"

#include <chrono>
#include <string>
#include <vector>

namespace bridge {

// Sources that are attached on this thread, as those of signals are, come to a context of its own for as long as this
// lives.
class ThreadContext {
public:
    ThreadContext() { g_main_context_push_thread_default(m_context.get()); }
    ThreadContext(const ThreadContext&) = delete;
    ThreadContext& operator=(const ThreadContext&) = delete;
    ~ThreadContext();

    // Calls the function when the source is ready.
    void attach(GSource* source, GSourceFunc function, void* data) const;
    // Blocks until something has happened, or wakeUp() was called, by any thread.
    void wait() const { g_main_context_iteration(m_context.get(), TRUE); }
    void wakeUp() const { g_main_context_wakeup(m_context.get()); }

private:
    GLibPointer<GMainContext> m_context{g_main_context_new()};
};

// One client of GeoClue, from its making to its end, over a connection of its own: whatever happens to us, GeoClue sees
// the connection end and looks no further. It blocks its thread. What fails, or is cancelled, throws PlatformError.
class GeoClueSession {
public:
    explicit GeoClueSession(GCancellable* cancellable);
    GeoClueSession(const GeoClueSession&) = delete;
    GeoClueSession& operator=(const GeoClueSession&) = delete;
    ~GeoClueSession();

    // The first fix that is good to a hundred metres, or the best that came within `settling` of the first one. Once.
    LocationFix locate(std::chrono::milliseconds settling);

private:
    GLibPointer<GVariant> call(const std::string& path, const char* interface, const char* method, GVariant* arguments,
                               const char* type, GError** error) const;
    GLibPointer<GVariant> call(const std::string& path, const char* interface, const char* method, GVariant* arguments,
                               const char* type) const;
    void watchService();
    void createClient();
    void startClient();
    std::optional<LocationFix> nextFix();
    void settleWithin(std::chrono::milliseconds time);

    GCancellable* m_cancellable;
    ThreadContext m_context;
    gulong m_waking = 0; // of the context, when we are cancelled
    GObjectPointer<GDBusConnection> m_bus;
    std::vector<guint> m_subscriptions;
    std::string m_client; // its path, once there is one
    std::string m_update; // the path of a location that was not looked at yet
    bool m_isGone = false;
    bool m_isClosed = false;
    bool m_isSettled = false;
};

} // namespace bridge
