#include "app/dashboard/actions.h"

#include "base/log.h"

#include <algorithm>

namespace bridge {

struct Actions::Action {
    QString name;
    Work work;
    std::function<void()> ended;
    bool isOver = false;
    Task<> task;
};

Actions::Actions() = default;
Actions::~Actions() = default;

void Actions::start(const QString& name, Work work) {
    if (isUnderWay(name)) return;
    m_repeat = [this, name, work] { start(name, work); };
    begin({name, std::move(work), {}, false, {}});
}

void Actions::startAlways(const QString& name, Work work) {
    m_repeat = [this, name, work] { startAlways(name, work); };
    begin({name, std::move(work), {}, false, {}});
}

void Actions::startUnrepeated(const QString& name, Work work, std::function<void()> ended) {
    if (!isUnderWay(name)) begin({name, std::move(work), std::move(ended), false, {}});
}

bool Actions::repeatLast() {
    // A copy: what it starts is the last thing in its turn.
    const auto repeat = m_repeat;
    if (repeat) repeat();
    return repeat != nullptr;
}

void Actions::begin(Action wanted) {
    auto& action = m_actions.emplace_back(std::move(wanted));
    action.task = run(this, &action);
    emit changed();
    action.task.start();
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
    std::erase_if(m_actions, [](const Action& action) { return action.task.done(); });
}

} // namespace bridge
