#include "adapters/eds/registry_worker.h"

#include "adapters/dbus/session_bus.h"
#include "adapters/eds/eds_names.h"

namespace bridge {

Task<bool> RegistryWorker::isServed(const char* factory) {
    const auto look = [factory](Call& call) {
        const auto bus = sessionBus(call.cancellable());
        return bus && isNameServed(bus.get(), registryName, call.cancellable()) &&
               isNameServed(bus.get(), factory, call.cancellable());
    };
    auto looking = run(m_setting.patience.reading, look);
    const bool isServed = co_await std::move(looking);
    co_return isServed;
}

} // namespace bridge
