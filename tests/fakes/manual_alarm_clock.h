#pragma once

#include "platform/alarm_clock.h"

#include <algorithm>
#include <vector>

namespace bridge {

// Alarms that ring when a test lets time pass, the earliest first.
class ManualAlarmClock : public AlarmClock {
public:
    // Alarms that were silenced ring all the same, as if each had been on its way already.
    bool ringsSilenced = false;

    std::unique_ptr<PendingAlarm> set(std::chrono::milliseconds delay, std::function<void()> action) override {
        m_entries.push_back(std::make_shared<Entry>(m_now + delay, std::move(action)));
        return std::make_unique<Handle>(m_entries.back());
    }

    void advance(std::chrono::milliseconds time) {
        const auto until = m_now + time;
        for (auto entry = next(until); entry; entry = next(until)) {
            std::erase(m_entries, entry);
            m_now = entry->due;
            if (ringsSilenced || !entry->isSilenced) entry->action();
        }
        m_now = until;
    }
    // How many are set and not silenced.
    size_t waiting() const {
        return static_cast<size_t>(
            std::ranges::count_if(m_entries, [](const auto& each) { return !each->isSilenced; }));
    }

private:
    struct Entry {
        Entry(std::chrono::milliseconds time, std::function<void()> what) : due(time), action(std::move(what)) {}
        std::chrono::milliseconds due;
        std::function<void()> action;
        bool isSilenced = false;
    };
    struct Handle : PendingAlarm {
        explicit Handle(std::shared_ptr<Entry> set) : entry(std::move(set)) {}
        ~Handle() override { entry->isSilenced = true; }
        std::shared_ptr<Entry> entry;
    };

    std::shared_ptr<Entry> next(std::chrono::milliseconds until) const {
        const auto first = std::ranges::min_element(m_entries, {}, [](const auto& each) { return each->due; });
        return first != m_entries.end() && (*first)->due <= until ? *first : nullptr;
    }

    std::chrono::milliseconds m_now{};
    std::vector<std::shared_ptr<Entry>> m_entries;
};

} // namespace bridge
