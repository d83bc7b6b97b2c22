#pragma once

#include "base/task.h"

#include <QObject>
#include <QString>

#include <functional>
#include <list>
#include <optional>

namespace bridge {

// Work without waiting, which its maker has done already.
inline Task<> done() {
    co_return;
}

// What the user has set going and what is not over yet, several at once. It all ends with this object.
class Actions : public QObject {
    Q_OBJECT

public:
    // How whoever does the work counts it, a work being counted as it begins, and which of it was the last to fail,
    // where that is not mended yet.
    struct Count {
        std::function<uint64_t()> begun;
        std::function<std::optional<uint64_t>()> failed;
    };

    explicit Actions(Count count);
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

    // What has failed, once more, as it was started; false when there is no such thing.
    bool repeatFailed();

signals:
    // Something has begun or ended.
    void changed();

private:
    struct Action;
    static Task<> run(Actions* actions, Action* action);
    void begin(Action action);
    void sweep();
    bool hasFailed(const Action& action) const;

    Count m_count;
    std::list<Action> m_actions;
    // Of the last that had failed when it ended.
    uint64_t m_failed = 0;
    std::function<void()> m_repeat;
};

} // namespace bridge
