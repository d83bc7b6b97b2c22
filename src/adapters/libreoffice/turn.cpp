#include "adapters/libreoffice/turn.h"

#include "base/platform_error.h"

#include <sys/eventfd.h>

namespace bridge::office {

Turns::Turns() : m_free(eventfd(1, EFD_SEMAPHORE | EFD_NONBLOCK | EFD_CLOEXEC)) {
    if (!m_free) throw PlatformError::fromErrno("No event descriptor could be made", errno);
}

Turns::Turn Turns::take(const Patience& patience) const {
    eventfd_t one = 0;
    while (eventfd_read(m_free.get(), &one) != 0)
        waitFor(m_free.get(), Readiness::reading, patience);
    return Turn(*this);
}

Turns::Turn::~Turn() {
    if (m_turns) eventfd_write(m_turns->m_free.get(), 1);
}

} // namespace bridge::office
