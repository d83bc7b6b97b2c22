#include "adapters/iworkapps/office_session.h"

#include "adapters/iworkapps/refusals.h"

#include <algorithm>

namespace bridge::iworkapps {

namespace {

// A script that is given up while it waits shows it in a descriptor, which can't be waited for together with the
// condition. Only scripts that wait for another one look so often.
constexpr std::chrono::milliseconds glance{50};

} // namespace

void OfficeSession::enter(ScriptCall& call) {
    if (const auto reason = m_office.whyUnavailable()) fails(*reason);
    std::unique_lock lock(m_mutex);
    while (m_script && m_script != &call) {
        call.check();
        m_isFree.wait_for(lock, std::min(call.remaining(), glance));
    }
    m_script = &call;
    ++m_entries;
}

void OfficeSession::leave() noexcept {
    // Under the lock: nobody else opens anything before everything is closed.
    const std::lock_guard lock(m_mutex);
    if (--m_entries > 0) return;
    m_office.closeAll();
    m_script = nullptr;
    m_isFree.notify_all();
}

} // namespace bridge::iworkapps
