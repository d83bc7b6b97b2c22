#pragma once

#include "adapters/eds/call.h"
#include "adapters/eds/eds_patience.h"
#include "adapters/eds/own_context.h"
#include "adapters/eds/source_list.h"
#include "base/offload.h"

namespace bridge {

// The service that knows the accounts and calendars, on a thread of its own. On the main thread; the loop and the
// keeper outlive it.
class Registry {
public:
    Registry(EventLoop& loop, std::shared_ptr<DeadlineKeeper> keeper, EdsPatience patience)
        : m_loop(loop), m_keeper(std::move(keeper)), m_patience(patience) {}

    // Whether the bus knows the services at all.
    Task<bool> isServed();
    Task<SourceList> list();
    // Answers with the sources as they are afterwards.
    Task<SourceList> addCalendar(EntityType type, std::string accountID, std::string title, std::string identifier);
    Task<SourceList> renameCalendar(std::string identifier, std::string title);
    Task<SourceList> removeCalendar(std::string identifier);

private:
    template <typename Job>
    auto run(std::chrono::milliseconds time, Job job) -> Task<decltype(job(std::declval<Call&>()))>;

    EventLoop& m_loop;
    std::shared_ptr<DeadlineKeeper> m_keeper;
    EdsPatience m_patience;
    std::shared_ptr<OwnContext> m_context = std::make_shared<OwnContext>();
    Worker m_worker;
};

} // namespace bridge
