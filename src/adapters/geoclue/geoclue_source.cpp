#include "adapters/geoclue/geoclue_source.h"

#include "adapters/dbus/session_bus.h"
#include "adapters/dbus/waiting.h"
#include "adapters/geoclue/geoclue_names.h"
#include "adapters/geoclue/geoclue_session.h"
#include "base/offload.h"
#include "base/timer.h"

namespace bridge {

Task<std::unique_ptr<LocationSource>> GeoClueSource::open(EventLoop& loop, Patience patience) {
    std::unique_ptr<GeoClueSource> source(new GeoClueSource(loop, patience));
    const bool isServed = co_await source->isServed();
    if (!isServed) co_return nullptr;
    co_return source;
}

Task<bool> GeoClueSource::isServed() {
    const Waiting waiting;
    Timer timer(m_loop);
    timer.start(m_patience.opening, [cancellable = waiting.cancellable()] { g_cancellable_cancel(cancellable.get()); });
    auto looking = offload(m_loop, m_worker, [cancellable = waiting.cancellable()] {
        const auto bus = openSystemBus(cancellable.get(), nullptr);
        return bus && isNameServed(bus.get(), geoclue::service, cancellable.get());
    });
    const bool isServed = co_await looking;
    co_return isServed;
}

Task<LocationFix> GeoClueSource::locate() {
    const Waiting waiting;
    auto locating = offload(m_loop, m_worker, [cancellable = waiting.cancellable(), settling = m_patience.settling] {
        return GeoClueSession(cancellable.get()).locate(settling);
    });
    const auto fix = co_await locating;
    co_return fix;
}

} // namespace bridge
