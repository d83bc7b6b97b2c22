#pragma once

#include "adapters/dbus/glib_pointer.h"
#include "base/platform_error.h"

#include <utility>

namespace bridge {

// What is to be known about a refusal besides its words.
enum class EdsFault {
    lost,     // whoever was asked is gone; another attempt may find a new one
    notFound, // no such item
    exists,   // the UID is taken
    other
};

class EdsError : public PlatformError {
public:
    EdsError(EdsFault kind, const std::string& description) : PlatformError(description), fault(kind) {}
    const EdsFault fault;
};

// In words for the user. `subject` begins a sentence: "The calendar “Garden”".
EdsError translate(const GError& error, const std::string& subject);

// Filled by the library, thrown by check().
class Outcome {
public:
    Outcome() = default;
    Outcome(const Outcome&) = delete;
    Outcome& operator=(const Outcome&) = delete;
    ~Outcome() { g_clear_error(&m_error); }

    GError** out() { return &m_error; }
    void check(const std::string& subject) {
        if (m_error) throw translate(*m_error, subject);
    }

private:
    GError* m_error = nullptr;
};

} // namespace bridge
