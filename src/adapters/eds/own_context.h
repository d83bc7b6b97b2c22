#pragma once

#include "adapters/dbus/glib_pointer.h"

namespace bridge {

// Where the library's objects of one worker send their signals. Without a context of its own that would be the main
// thread's.
class OwnContext {
public:
    OwnContext() = default;
    OwnContext(const OwnContext&) = delete;
    OwnContext& operator=(const OwnContext&) = delete;
    ~OwnContext() { deliver(); }

    // For the length of one job; what happened since the last one is delivered first.
    class Use {
    public:
        explicit Use(OwnContext& context) : m_context(context) {
            g_main_context_push_thread_default(m_context.m_context.get());
            m_context.deliver();
        }
        Use(const Use&) = delete;
        Use& operator=(const Use&) = delete;
        ~Use() {
            m_context.deliver();
            g_main_context_pop_thread_default(m_context.m_context.get());
        }

    private:
        OwnContext& m_context;
    };

private:
    void deliver() {
        while (g_main_context_iteration(m_context.get(), FALSE)) {
        }
    }

    GLibPointer<GMainContext> m_context{g_main_context_new()};
};

} // namespace bridge
