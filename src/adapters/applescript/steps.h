#pragma once

#include "adapters/applescript/errors.h"
#include "adapters/applescript/heap.h"
#include "adapters/applescript/script_call.h"

namespace bridge::applescript {

// Counted by everything that a script can make take long, and looks at the time now and then.
class Steps {
public:
    explicit Steps(const ScriptCall& call) : m_call(call) {}

    void take() {
        if (++m_taken % between == 0) m_call.check();
    }

    // One level deeper in a list of lists, which may contain itself.
    class Level {
    public:
        explicit Level(Steps& steps) : m_steps(steps) {
            steps.take();
            if (steps.m_depth == deepest) throw tooDeep();
            ++steps.m_depth;
        }
        Level(const Level&) = delete;
        Level& operator=(const Level&) = delete;
        ~Level() { --m_steps.m_depth; }

    private:
        Steps& m_steps;
    };

    // A copy that leaves the script's memory can be larger than what it was made from, because lists may be shared.
    class Copy {
    public:
        explicit Copy(Steps& steps) : m_steps(steps) {}
        operator Steps&() { return m_steps; }
        void take(size_t bytes) {
            m_steps.take();
            if (bytes > m_left) throw memoryExhausted();
            m_left -= bytes;
        }

    private:
        Steps& m_steps;
        size_t m_left = Heap::largest;
    };

private:
    static constexpr unsigned between = 256;
    static constexpr int deepest = 100;

    const ScriptCall& m_call;
    unsigned m_taken = 0;
    int m_depth = 0;
};

} // namespace bridge::applescript
