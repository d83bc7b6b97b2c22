#pragma once

#include <cerrno>
#include <unistd.h>
#include <utility>

namespace bridge {

// Owns an open descriptor and closes it. Empty when negative.
class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int descriptor) : m_descriptor(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        if (this != &other) {
            close();
            m_descriptor = std::exchange(other.m_descriptor, -1);
        }
        return *this;
    }
    ~FileDescriptor() { close(); }

    int get() const { return m_descriptor; }
    explicit operator bool() const { return m_descriptor >= 0; }
    int release() { return std::exchange(m_descriptor, -1); }

private:
    void close() {
        if (m_descriptor < 0) return;
        const int before = errno; // a destructor runs between a failing call and whoever asks why
        ::close(m_descriptor);
        errno = before;
    }

    int m_descriptor = -1;
};

} // namespace bridge
