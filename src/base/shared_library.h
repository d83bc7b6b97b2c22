#pragma once

#include <string>

namespace bridge {

// A library that is loaded when it is first wanted, so that until then neither it nor what it stands on takes memory.
// Once loaded it stays, whatever becomes of the object: what it has registered and started can't be taken back.
class SharedLibrary {
public:
    // What is looked up converts to a pointer to any function; the caller knows which it is.
    class Symbol {
    public:
        explicit Symbol(void* address) : m_address(address) {}
        template <typename Function> operator Function*() const { return reinterpret_cast<Function*>(m_address); }

    private:
        void* m_address;
    };

    // A path, or a name that the system finds among its libraries. Throws PlatformError with the system's words.
    explicit SharedLibrary(const std::string& name);

    // Throws PlatformError when there is no such function in it.
    Symbol operator[](const char* function) const;

private:
    void* m_handle;
};

} // namespace bridge
