#pragma once

#include "adapters/eds/source_registry.h"
#include "adapters/eds/source_worker.h"

namespace bridge {

// The service that knows the accounts and sources, on a thread of its own. On the main thread.
class RegistryWorker {
public:
    explicit RegistryWorker(WorkerSetting setting) : m_setting(std::move(setting)) {}

    // Whether the bus knows it at all, and the service that keeps the items.
    Task<bool> isServed(const char* factory);

    // Runs job(registry) on the thread. It owns what it uses and answers with a value.
    template <typename Job> auto read(Job job) -> Task<decltype(job(std::declval<const SourceRegistry&>()))> {
        return ask(m_setting.patience.reading, std::move(job));
    }
    template <typename Job> auto write(Job job) -> Task<decltype(job(std::declval<const SourceRegistry&>()))> {
        return ask(m_setting.patience.writing, std::move(job));
    }

private:
    template <typename Job>
    auto ask(std::chrono::milliseconds time, Job job) -> Task<decltype(job(std::declval<const SourceRegistry&>()))> {
        return run(time, [job = std::move(job)](Call& call) { return job(SourceRegistry(call.cancellable())); });
    }
    template <typename Job>
    auto run(std::chrono::milliseconds time, Job job) -> Task<decltype(job(std::declval<Call&>()))> {
        const Waiting waiting;
        auto call = offload(m_setting.loop, m_worker,
                            [context = m_context, keeper = m_setting.keeper, time, cancellable = waiting.cancellable(),
                             job = std::move(job)] {
                                const OwnContext::Use use(*context);
                                Call limits(*keeper, time, cancellable);
                                return job(limits);
                            });
        auto answer = co_await call;
        co_return answer;
    }

    WorkerSetting m_setting;
    std::shared_ptr<OwnContext> m_context = std::make_shared<OwnContext>();
    Worker m_worker;
};

} // namespace bridge
