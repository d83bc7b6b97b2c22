#include "app/dashboard/actions.h"

#include "base/log.h"

#include <algorithm>

namespace bridge {

struct Actions::Action {
    QString name;
    Work work;
    std::function<void()> ended;
    std::function<void()> repeat;
    uint64_t number = 0; // as it is counted; none while nothing of it is
    bool isOver = false;
    Task<> task;
};

Actions::Actions(Count count) : m_count(std::move(count)) {}
Actions::~Actions() = default;

void Actions::start(const QString& name, Work work) {
    if (isUnderWay(name)) return;
    begin({name, work, {}, [this, name, work] { start(name, work); }, 0, false, {}});
}

void Actions::startAlways(const QString& name, Work work) {
    begin({name, work, {}, [this, name, work] { startAlways(name, work); }, 0, false, {}});
}

void Actions::startUnrepeated(const QString& name, Work work, std::function<void()> ended) {
    if (!isUnderWay(name)) begin({name, std::move(work), std::move(ended), {}, 0, false, {}});
}

bool Actions::repeatFailed() {
    // A copy: what it starts may fail in its turn. One that has failed may still be reading what there is now.
    auto repeat = m_count.failed() == m_failed ? m_repeat : nullptr;
    for (const auto& action : m_actions)
        if (hasFailed(action)) repeat = action.repeat;
    if (repeat) repeat();
    return repeat != nullptr;
}

bool Actions::hasFailed(const Action& action) const {
    return action.number != 0 && m_count.failed() == action.number;
}

void Actions::begin(Action wanted) {
    auto& action = m_actions.emplace_back(std::move(wanted));
    action.task = run(this, &action);
    emit changed();
    const auto before = m_count.begun();
    action.task.start();
    if (m_count.begun() != before) action.number = before + 1;
}

bool Actions::isUnderWay(const QString& name) const {
    return std::ranges::any_of(m_actions, [&](const Action& action) { return !action.isOver && action.name == name; });
}

Task<> Actions::run(Actions* actions, Action* action) {
    try {
        co_await action->work();
    } catch (const std::exception& error) {
        log::note(std::string("What the user asked for failed: ") + error.what());
    }
    action->isOver = true;
    emit actions->changed();
    if (action->ended) action->ended();
    // Later: a task can't be destroyed from inside.
    QMetaObject::invokeMethod(actions, &Actions::sweep, Qt::QueuedConnection);
}

void Actions::sweep() {
    for (const auto& action : m_actions) {
        if (!action.task.done() || !hasFailed(action)) continue;
        m_failed = action.number;
        m_repeat = action.repeat;
    }
    std::erase_if(m_actions, [](const Action& action) { return action.task.done(); });
}

} // namespace bridge
