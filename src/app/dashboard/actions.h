#pragma once

#include "base/task.h"

#include <QObject>
#include <QString>

#include <functional>
#include <list>

namespace bridge {

// Work without waiting, which its maker has done already.
inline Task<> done() {
    co_return;
}

// What the user has set going and what is not over yet, several at once. It all ends with this object.
class Actions : public QObject {
    Q_OBJECT

public:
    Actions();
    ~Actions() override;

    using Work = std::function<Task<>()>;

    // Starts what the user wants, unless something of that name is under way already: the second click of a double
    // click means the first.
    void start(const QString& name, Work work);
    // Also while something of that name is under way, where the last click counts.
    void startAlways(const QString& name, Work work);
    // As start(), for what is not to be repeated: the user did not ask for it, or is told elsewhere that it failed.
    // `ended` is called when the work is over, however it went.
    void startUnrepeated(const QString& name, Work work, std::function<void()> ended = {});

    bool isUnderWay(const QString& name) const;

    // The last thing that the user wanted and that can be repeated, once more; false when there is none.
    bool repeatLast();

signals:
    // Something has begun or ended.
    void changed();

private:
    struct Action;
    static Task<> run(Actions* actions, Action* action);
    void begin(Action action);
    void sweep();

    std::list<Action> m_actions;
    std::function<void()> m_repeat;
};

} // namespace bridge
