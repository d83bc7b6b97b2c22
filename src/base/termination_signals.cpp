#include "base/termination_signals.h"

#include <csignal>
#include <uv.h>

namespace bridge {

struct TerminationSignals::State {
    std::function<void()> action;
    uv_signal_t signals[3];
    int open = 3;

    static void heard(uv_signal_t* signal, int) { static_cast<State*>(signal->data)->action(); }
    static void closed(uv_handle_t* handle) {
        auto* state = static_cast<State*>(handle->data);
        if (--state->open == 0) delete state;
    }
};

TerminationSignals::TerminationSignals(EventLoop& loop, std::function<void()> action) : m_state(new State{}) {
    m_state->action = std::move(action);
    const int numbers[] = {SIGTERM, SIGINT, SIGHUP};
    for (int index = 0; index < 3; ++index) {
        uv_signal_init(loop.handle(), &m_state->signals[index]);
        m_state->signals[index].data = m_state;
        // Whoever started us may have had a reason to have it ignored, as nohup does.
        struct sigaction former {};
        if (sigaction(numbers[index], nullptr, &former) == 0 && former.sa_handler == SIG_IGN) continue;
        uv_signal_start(&m_state->signals[index], &State::heard, numbers[index]);
    }
}

TerminationSignals::~TerminationSignals() {
    for (auto& signal : m_state->signals)
        uv_close(reinterpret_cast<uv_handle_t*>(&signal), &State::closed);
}

} // namespace bridge
