#pragma once

#include "adapters/libreoffice/helper/uno.h"
#include "base/file_descriptor.h"

#include <com/sun/star/frame/XComponentLoader.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>

#include <chrono>
#include <string>
#include <sys/types.h>

namespace bridge::office {

// LibreOffice as a child process, and the connection to it.
class SOffice {
public:
    // Returns when it can be asked. Throws ScriptError when it doesn't come.
    explicit SOffice(const std::string& home);
    SOffice(const SOffice&) = delete;
    SOffice& operator=(const SOffice&) = delete;
    ~SOffice();

    Ref<css::frame::XComponentLoader> desktop() const { return m_desktop; }
    // An object of one of its services.
    template <typename T> Ref<T> create(const char* service) const { return as<T>(createInstance(service)); }

    // Becomes readable when it has ended.
    int endDescriptor() const { return m_end.get(); }
    // Waits a moment, because its connection may be closed before it has ended.
    bool hasEnded() const;
    int64_t residentBytes() const;

private:
    void start();
    bool mustStartAgain() const;
    void connect();
    Ref<css::uno::XInterface> createInstance(const char* service) const;

    std::string m_home;
    pid_t m_pid = 0;
    FileDescriptor m_end;
    Ref<css::uno::XComponentContext> m_context;
    Ref<css::frame::XComponentLoader> m_desktop;
};

} // namespace bridge::office
