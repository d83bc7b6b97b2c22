#pragma once

#include "adapters/eds/calendar_client.h"
#include "adapters/eds/call.h"
#include "adapters/eds/eds_patience.h"
#include "adapters/eds/own_context.h"
#include "adapters/eds/together.h"
#include "base/offload.h"

namespace bridge {

// One calendar with a thread of its own, so that one that does not answer costs its own calls their time and no others.
// On the main thread; the loop and the keeper outlive it.
class CalendarWorker {
public:
    CalendarWorker(EventLoop& loop, std::shared_ptr<DeadlineKeeper> keeper, EdsPatience patience)
        : m_loop(loop), m_keeper(std::move(keeper)), m_patience(patience) {}

    // Runs job(client, call) on the thread. It owns what it uses and answers with a value.
    template <typename Job>
    auto read(Calendar calendar, Job job)
        -> Task<decltype(job(std::declval<CalendarClient&>(), std::declval<Call&>()))> {
        return run(std::move(calendar), m_patience.reading, std::move(job));
    }
    template <typename Job>
    auto write(Calendar calendar, Job job)
        -> Task<decltype(job(std::declval<CalendarClient&>(), std::declval<Call&>()))> {
        return run(std::move(calendar), m_patience.writing, std::move(job));
    }

    // Read-only until it is known better.
    bool isKnownWritable() const { return m_isWritable; }
    // Asks, in the background, and counts down when that has ended in whatever way.
    void learn(const Calendar& calendar, Latch latch);

private:
    // The thread's own.
    struct Session {
        OwnContext context;
        std::optional<CalendarClient> client;

        CalendarClient& clientOf(const Calendar& calendar) {
            if (client)
                client->becomes(calendar);
            else
                client.emplace(calendar);
            return *client;
        }
    };

    template <typename Job>
    auto run(Calendar calendar, std::chrono::milliseconds time, Job job)
        -> Task<decltype(job(std::declval<CalendarClient&>(), std::declval<Call&>()))> {
        const Waiting waiting;
        auto call = offload(m_loop, m_worker,
                            [session = m_session, keeper = m_keeper, time, cancellable = waiting.cancellable(),
                             calendar = std::move(calendar), job = std::move(job)] {
                                const OwnContext::Use context(session->context);
                                // Time begins with its turn.
                                Call limits(*keeper, time, cancellable);
                                return job(session->clientOf(calendar), limits);
                            });
        auto answer = co_await call;
        co_return answer;
    }
    Task<> askWhetherWritable(Calendar calendar);

    EventLoop& m_loop;
    std::shared_ptr<DeadlineKeeper> m_keeper;
    EdsPatience m_patience;
    bool m_isWritable = false;
    std::vector<Latch> m_learning; // who waits for the answer; empty when nobody asks
    std::shared_ptr<Session> m_session = std::make_shared<Session>();
    Worker m_worker;
    Task<> m_asking;
};

} // namespace bridge
