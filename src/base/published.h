#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace bridge {

// Keeps an observer registered for as long as it lives. It may outlive what it observes.
using Subscription = std::shared_ptr<void>;

// A value that others watch. Main thread only. Observers hear of each change once, after it, in the order in which
// they subscribed; assigning an equal value tells nobody. An observer may subscribe, unsubscribe or set in its turn:
// what it sets is the value at once, and everybody hears of it once all have heard of the change before.
template <typename T> class Published {
public:
    using Observer = std::function<void(const T&)>;

    Published() = default;
    explicit Published(T initial) : m_value(std::move(initial)) {}
    Published(const Published&) = delete;
    Published& operator=(const Published&) = delete;

    const T& get() const { return m_value; }

    void set(T value) {
        if (value == m_value) return;
        m_value = std::move(value);
        std::erase_if(m_observers, [](const auto& entry) { return entry.expired(); });
        m_changes.push_back({m_value, m_observers});
        if (m_changes.size() == 1) notify();
    }

    [[nodiscard]] Subscription observe(Observer observer) const {
        auto entry = std::make_shared<Observer>(std::move(observer));
        m_observers.push_back(entry);
        return entry;
    }

private:
    using Observers = std::vector<std::weak_ptr<Observer>>;

    // Whoever subscribes after a change has read its value already, so each change keeps those it is for.
    struct Change {
        T value;
        Observers observers;
    };

    void notify() {
        // Also when an observer throws: what it leaves unsaid must not be said after a later change.
        struct Clear {
            std::deque<Change>& changes;
            ~Clear() { changes.clear(); }
        } clear{m_changes};
        for (; !m_changes.empty(); m_changes.pop_front())
            for (const auto& entry : m_changes.front().observers)
                if (const auto observer = entry.lock()) (*observer)(m_changes.front().value);
    }

    T m_value{};
    mutable Observers m_observers; // to watch is not to change
    std::deque<Change> m_changes; // the first is being told
};

} // namespace bridge
