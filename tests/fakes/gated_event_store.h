#pragma once

#include "tests/base/gate.h"
#include "tests/fakes/watched_event_store.h"

#include <algorithm>
#include <list>

namespace bridge {

// An event store whose calls can be held up, as those of a slow account are: before they have their effect, or when
// only the answer is on its way.
class GatedEventStore : public WatchedEventStore {
public:
    enum class When { beforeEffect, afterEffect };

    using WatchedEventStore::WatchedEventStore;

    // From now on every such call waits for release().
    void hold(std::string name, std::string about, When when) {
        m_held.push_back({{std::move(name), std::move(about)}, when});
    }
    void holdNoMore() { m_held.clear(); }

    // The longest waiting call goes on.
    void release() {
        const auto gate = std::ranges::find_if(m_gates, &Gate::isAwaited);
        if (gate != m_gates.end()) gate->open();
    }
    size_t waiting() const { return static_cast<size_t>(std::ranges::count_if(m_gates, &Gate::isAwaited)); }

protected:
    Task<> before(Call call) override { return pass(std::move(call), When::beforeEffect); }
    Task<> after(Call call) override { return pass(std::move(call), When::afterEffect); }

private:
    struct Held {
        Call call;
        When when;
        bool operator==(const Held&) const = default;
    };

    Task<> pass(Call call, When when) {
        const Held passing{std::move(call), when};
        if (std::ranges::find(m_held, passing) == m_held.end()) co_return;
        auto& gate = m_gates.emplace_back();
        co_await gate.opened();
    }

    std::vector<Held> m_held;
    std::list<Gate> m_gates; // one for each call that ever waited
};

} // namespace bridge
