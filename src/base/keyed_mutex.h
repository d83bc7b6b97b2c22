#pragma once

#include "base/async_mutex.h"
#include "base/task.h"

#include <map>
#include <memory>
#include <string>

namespace bridge {

// A mutex for each name, made when somebody asks and gone when nobody uses it. Each is an AsyncMutex. It outlives every
// task that uses it.
//
//     auto locking = locks.lock(name);
//     const auto guard = co_await std::move(locking);
class KeyedMutex {
public:
    class [[nodiscard]] Guard {
    private:
        friend class KeyedMutex;
        Guard(std::shared_ptr<AsyncMutex> mutex, AsyncMutex::Guard guard)
            : m_mutex(std::move(mutex)), m_guard(std::move(guard)) {}

        std::shared_ptr<AsyncMutex> m_mutex; // before the guard, which needs it to the end
        AsyncMutex::Guard m_guard;
    };

    Task<Guard> lock(std::string key) {
        const auto mutex = mutexOf(key);
        auto guard = co_await mutex->lock();
        co_return Guard(mutex, std::move(guard));
    }

    // Names that somebody holds or waits for, as of the last lock().
    size_t size() const { return m_mutexes.size(); }

private:
    std::shared_ptr<AsyncMutex> mutexOf(const std::string& key) {
        std::erase_if(m_mutexes, [](const auto& entry) { return entry.second.expired(); });
        auto& known = m_mutexes[key];
        auto mutex = known.lock();
        if (!mutex) known = mutex = std::make_shared<AsyncMutex>();
        return mutex;
    }

    std::map<std::string, std::weak_ptr<AsyncMutex>> m_mutexes;
};

} // namespace bridge
