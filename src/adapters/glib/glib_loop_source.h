#pragma once

#include "base/event_loop.h"

namespace bridge {

// Lets a desktop shell's own loop serve ours: for as long as this lives, `loop` is one source of the default
// GMainContext, which Qt also runs on. Main thread only; `loop` outlives it. The shell must not be entered again from
// inside a turn for the loop's sake: while a callback of the loop runs, the loop waits for it.
class GLibLoopSource {
public:
    explicit GLibLoopSource(EventLoop& loop);
    ~GLibLoopSource();
    GLibLoopSource(const GLibLoopSource&) = delete;
    GLibLoopSource& operator=(const GLibLoopSource&) = delete;

private:
    struct Source;
    Source* m_source; // the context may hold it a little longer
};

} // namespace bridge
