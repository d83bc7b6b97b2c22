#pragma once

#include "base/event_loop.h"
#include "base/worker.h"
#include "platform/local_search.h"

#include <memory>

namespace bridge {

// Towns and villages of the whole world, from GeoNames, in a file on this computer: no network, nobody is told what was
// looked for. It knows no streets, shops, phones or web addresses. Made by brindlefox-gazetteer; opened at the first
// search, on a thread of its own. Without the file every search fails and says how to get it.
class Gazetteer : public LocalSearch {
public:
    // `loop` must outlive it, and it its tasks.
    Gazetteer(EventLoop& loop, std::string path);
    ~Gazetteer() override;

    Task<std::vector<MapItem>> search(LocalSearchQuery query) override;
    std::string description() const override;

private:
    struct State;

    EventLoop& m_loop;
    std::shared_ptr<State> m_state;
    Worker m_worker;
};

} // namespace bridge
