#pragma once

#include "adapters/libreoffice/patience.h"
#include "base/file_descriptor.h"

namespace bridge::office {

// Lets one thread in at a time, and the others wait no longer than their scripts may.
class Turns {
public:
    Turns();

    // Held as long as this lives.
    class Turn {
    public:
        Turn(Turn&& other) noexcept : m_turns(std::exchange(other.m_turns, nullptr)) {}
        Turn& operator=(Turn&&) = delete;
        ~Turn();

    private:
        friend class Turns;
        explicit Turn(const Turns& turns) : m_turns(&turns) {}
        const Turns* m_turns;
    };
    // Throws PatienceOver.
    Turn take(const Patience& patience) const;

private:
    FileDescriptor m_free; // readable when nobody has the turn
};

} // namespace bridge::office
