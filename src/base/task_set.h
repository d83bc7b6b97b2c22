#pragma once

#include "base/task.h"

#include <vector>

namespace bridge {

// Owns tasks that nobody waits for, such as what a click began, until they are done; whoever destroys it drops the
// rest. A task that ends with an exception takes it along unseen. On the loop's thread only.
class TaskSet {
public:
    TaskSet() = default;
    TaskSet(const TaskSet&) = delete;
    TaskSet& operator=(const TaskSet&) = delete;
    // The latest first: one that queues behind another must not get its turn by the other's end.
    ~TaskSet() {
        while (!m_tasks.empty())
            m_tasks.pop_back();
    }

    void start(Task<> task) {
        std::erase_if(m_tasks, [](const Task<>& each) { return each.done(); });
        task.start();
        if (!task.done()) m_tasks.push_back(std::move(task));
    }

    bool isEmpty() const {
        for (const auto& task : m_tasks)
            if (!task.done()) return false;
        return true;
    }

private:
    std::vector<Task<>> m_tasks;
};

} // namespace bridge
