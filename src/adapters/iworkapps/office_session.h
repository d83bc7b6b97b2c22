#pragma once

#include "adapters/iworkapps/language.h"

#include <condition_variable>
#include <mutex>

namespace bridge::iworkapps {

// The office program that several applications share, which does one thing at a time. A script has it alone from its
// first use until the script ends, whichever of the applications it speaks to. So a program that hangs or crashes takes
// only the documents of the script that it served, and what is open at a script's end is that script's.
//
// Scripts for different applications wait for one another as long as they share a session; who gives each application
// an Office of its own gives it a session of its own.
class OfficeSession {
public:
    explicit OfficeSession(Office& office) : m_office(office) {}

    Office& office() { return m_office; }

    // Once for each application that a script uses, with the one call of that script. Waits as long as the call has
    // time, then throws timedOut. Throws with what to do when there is no office program.
    void enter(ScriptCall& call);
    // Once for each enter, on any thread, before the call is gone. With the last one, whatever is still open is closed
    // without saving.
    void leave() noexcept;

private:
    Office& m_office;
    std::mutex m_mutex;
    std::condition_variable m_isFree;
    const ScriptCall* m_script = nullptr; // that has it now
    int m_entries = 0;
};

} // namespace bridge::iworkapps
