#include "adapters/glib/glib_loop_source.h"

#include <glib.h>

namespace bridge {

struct GLibLoopSource::Source {
    GSource base; // first, as GLib allocates the whole and sees only this
    EventLoop* loop;
    gpointer watch;

    static Source& from(GSource* source) { return *reinterpret_cast<Source*>(source); }

    bool isReady() { return g_source_query_unix_fd(&base, watch) != 0 || loop->backendTimeout() == 0; }

    // The shell is about to wait, perhaps after callbacks of its own that gave the loop something to send.
    static gboolean prepare(GSource* source, gint* timeout) {
        EventLoop& loop = *from(source).loop;
        loop.aboutToWait();
        *timeout = loop.backendTimeout();
        return *timeout == 0;
    }
    static gboolean check(GSource* source) { return from(source).isReady(); }
    static gboolean dispatch(GSource* source, GSourceFunc, gpointer) {
        from(source).loop->turn();
        return G_SOURCE_CONTINUE;
    }
};

GLibLoopSource::GLibLoopSource(EventLoop& loop) {
    static GSourceFuncs functions{Source::prepare, Source::check, Source::dispatch, nullptr, nullptr, nullptr};
    GSource* source = g_source_new(&functions, sizeof(Source));
    m_source = &Source::from(source);
    m_source->loop = &loop;
    m_source->watch =
        g_source_add_unix_fd(source, loop.backendDescriptor(), static_cast<GIOCondition>(G_IO_IN | G_IO_ERR));
    g_source_set_name(source, "bridge loop");
    g_source_attach(source, nullptr);
}

GLibLoopSource::~GLibLoopSource() {
    g_source_destroy(&m_source->base);
    g_source_unref(&m_source->base);
}

} // namespace bridge
