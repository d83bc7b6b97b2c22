#pragma once

#include <cerrno>
#include <cstddef>
#include <exception>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <thread>

namespace bridge {

// Runs `action` on a thread for which the kernel answers one system call with `error`, as an older kernel or a sandbox
// does. False when the kernel lets no filter be set.
template <typename Action> bool withoutSystemCall(unsigned number, int error, Action action) {
    bool filtered = false;
    std::exception_ptr failure;
    std::thread([&] {
        sock_filter program[] = {
            BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
            BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, number, 0, 1),
            BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | static_cast<unsigned>(error)),
            BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
        };
        const sock_fprog filter{sizeof program / sizeof program[0], program};
        filtered =
            prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
        if (!filtered) return;
        try {
            action();
        } catch (...) {
            failure = std::current_exception();
        }
    }).join();
    if (failure) std::rethrow_exception(failure);
    return filtered;
}

} // namespace bridge
