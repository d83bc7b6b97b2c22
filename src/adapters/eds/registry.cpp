#include "adapters/eds/registry.h"

#include "adapters/dbus/session_bus.h"
#include "adapters/eds/eds_names.h"
#include "adapters/eds/source_changes.h"

namespace bridge {

namespace {

Calendar require(const SourceRegistry& registry, const std::string& identifier) {
    const auto list = listed(registry.sources());
    const auto* calendar = list.find(identifier);
    if (!calendar) throw PlatformError("There is no such calendar.");
    return *calendar;
}

} // namespace

template <typename Job>
auto Registry::run(std::chrono::milliseconds time, Job job) -> Task<decltype(job(std::declval<Call&>()))> {
    const Waiting waiting;
    auto call = offload(
        m_loop, m_worker,
        [context = m_context, keeper = m_keeper, time, cancellable = waiting.cancellable(), job = std::move(job)] {
            const OwnContext::Use use(*context);
            Call limits(*keeper, time, cancellable);
            return job(limits);
        });
    auto answer = co_await call;
    co_return answer;
}

Task<bool> Registry::isServed() {
    const auto ask = [](Call& call) {
        const auto bus = sessionBus(call.cancellable());
        return bus && isNameServed(bus.get(), registryName, call.cancellable()) &&
               isNameServed(bus.get(), factoryName, call.cancellable());
    };
    auto asking = run(m_patience.reading, ask);
    const bool isServed = co_await std::move(asking);
    co_return isServed;
}

Task<SourceList> Registry::list() {
    const auto read = [](Call& call) { return listed(SourceRegistry(call.cancellable()).sources()); };
    auto reading = run(m_patience.reading, read);
    auto list = co_await std::move(reading);
    co_return list;
}

Task<SourceList> Registry::addCalendar(EntityType type, std::string accountID, std::string title,
                                       std::string identifier) {
    auto add = [type, accountID = std::move(accountID), title = std::move(title),
                identifier = std::move(identifier)](Call& call) {
        const SourceRegistry registry(call.cancellable());
        bridge::addCalendar(registry, {type, accountID, title, identifier});
        return listed(registry.sources());
    };
    auto adding = run(m_patience.writing, std::move(add));
    auto list = co_await std::move(adding);
    co_return list;
}

Task<SourceList> Registry::renameCalendar(std::string identifier, std::string title) {
    auto rename = [identifier = std::move(identifier), title = std::move(title)](Call& call) {
        const SourceRegistry registry(call.cancellable());
        bridge::renameCalendar(registry, require(registry, identifier), title);
        return listed(registry.sources());
    };
    auto renaming = run(m_patience.writing, std::move(rename));
    auto list = co_await std::move(renaming);
    co_return list;
}

Task<SourceList> Registry::removeCalendar(std::string identifier) {
    auto remove = [identifier = std::move(identifier)](Call& call) {
        const SourceRegistry registry(call.cancellable());
        bridge::removeCalendar(registry, require(registry, identifier));
        return listed(registry.sources());
    };
    auto removing = run(m_patience.writing, std::move(remove));
    auto list = co_await std::move(removing);
    co_return list;
}

} // namespace bridge
