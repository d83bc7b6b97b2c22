#pragma once

#include <functional>
#include <list>
#include <memory>
#include <utility>

namespace bridge {

// Keeps an observer registered for as long as it lives. It may outlive what it observes.
using Subscription = std::shared_ptr<void>;

// A value that others watch. Main thread only. Observers hear of each change once, after it, in the order in which
// they subscribed; assigning an equal value tells nobody. An observer may subscribe, unsubscribe or set in its turn.
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
        notify();
    }

    [[nodiscard]] Subscription observe(Observer observer) {
        auto entry = std::make_shared<Observer>(std::move(observer));
        m_observers.push_back(entry);
        return entry;
    }

private:
    void notify() {
        std::erase_if(m_observers, [](const std::weak_ptr<Observer>& entry) { return entry.expired(); });
        for (const auto& entry : std::list(m_observers))
            if (const auto observer = entry.lock()) (*observer)(m_value);
    }

    T m_value{};
    std::list<std::weak_ptr<Observer>> m_observers;
};

} // namespace bridge
