#pragma once

#include "adapters/eds/call.h"
#include "adapters/eds/eds_patience.h"
#include "adapters/eds/own_context.h"
#include "base/offload.h"

#include <algorithm>
#include <map>

namespace bridge {

// What every worker of a store has in common. The loop outlives it.
struct WorkerSetting {
    EventLoop& loop;
    EdsPatience patience;
    std::shared_ptr<DeadlineKeeper> keeper = std::make_shared<DeadlineKeeper>();
};

// One source with a thread of its own, so that one that does not answer costs its own calls their time and no others.
// `Client` is a SourceClient, made of a `Client::Place` and told by becomes() when that was listed anew. On the main
// thread.
template <typename Client> class SourceWorker {
public:
    using Place = typename Client::Place;

    explicit SourceWorker(WorkerSetting setting) : m_setting(std::move(setting)) {}

    // Runs job(client, call) on the thread. It owns what it uses and answers with a value.
    template <typename Job>
    auto read(Place place, Job job) -> Task<decltype(job(std::declval<Client&>(), std::declval<Call&>()))> {
        return run(std::move(place), m_setting.patience.reading, std::move(job));
    }
    template <typename Job>
    auto write(Place place, Job job) -> Task<decltype(job(std::declval<Client&>(), std::declval<Call&>()))> {
        return run(std::move(place), m_setting.patience.writing, std::move(job));
    }

private:
    // The thread's own.
    struct Session {
        OwnContext context;
        std::optional<Client> client;

        Client& clientOf(const Place& place) {
            if (client)
                client->becomes(place);
            else
                client.emplace(place);
            return *client;
        }
    };

    template <typename Job>
    auto run(Place place, std::chrono::milliseconds time, Job job)
        -> Task<decltype(job(std::declval<Client&>(), std::declval<Call&>()))> {
        const Waiting waiting;
        auto call = offload(m_setting.loop, m_worker,
                            [session = m_session, keeper = m_setting.keeper, time, cancellable = waiting.cancellable(),
                             place = std::move(place), job = std::move(job)] {
                                const OwnContext::Use context(session->context);
                                // Time begins with its turn.
                                Call limits(*keeper, time, cancellable);
                                return job(session->clientOf(place), limits);
                            });
        auto answer = co_await call;
        co_return answer;
    }

    WorkerSetting m_setting;
    std::shared_ptr<Session> m_session = std::make_shared<Session>();
    Worker m_worker;
};

// The workers of the sources that were listed last, by identifier.
template <typename Worker> class SourceWorkers {
public:
    explicit SourceWorkers(WorkerSetting setting) : m_setting(std::move(setting)) {}

    // Lives as long as somebody holds it, also when its source is gone.
    std::shared_ptr<Worker> of(const std::string& identifier) {
        auto& worker = m_workers[identifier];
        if (!worker) worker = std::make_shared<Worker>(m_setting);
        return worker;
    }
    template <typename List> void forgetAllBut(const List& listed) {
        std::erase_if(m_workers, [&](const auto& entry) { return !listed.find(entry.first); });
    }

private:
    WorkerSetting m_setting;
    std::map<std::string, std::shared_ptr<Worker>> m_workers;
};

} // namespace bridge
