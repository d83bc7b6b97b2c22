#pragma once

#include "adapters/dbus/glib_pointer.h"
#include "tests/support/private_bus.h"

#include <functional>
#include <future>
#include <mutex>
#include <thread>

namespace bridge {

// What a portal that opens its dialog was asked, and how it talks.
struct PortalCall {
    std::string parentWindow;
    std::string title;
    std::string acceptLabel;
    std::string handleToken;
    bool directory = false;
    bool modal = false;
};

// xdg-desktop-portal's file chooser at its own door on the bus, with a thread of its own.
class FakePortal {
public:
    enum class Manners {
        usual,
        answersBeforeItReturns, // the user was quick: the answer is there before the call's
        refuses
    };

    // Returns when it has its name. `version` is that of its file chooser.
    FakePortal(const PrivateBus& bus, Manners manners, unsigned version = 3);
    ~FakePortal();

    // The dialog that is open; its call.
    bool isOpen() const;
    PortalCall call() const;

    void respond(unsigned response, const std::vector<std::string>& uris);
    // Gives up its name, as when it crashes.
    void vanish();

private:
    void run(std::promise<void>& ready);
    void onThread(std::function<void()> action);
    void openFile(GVariant* parameters, GDBusMethodInvocation* invocation);
    void close();
    void emitResponse();
    static void handleCall(GDBusConnection* bus, const char* sender, const char* path, const char* interface,
                           const char* method, GVariant* parameters, GDBusMethodInvocation* invocation, void* self);
    static GVariant* version(GDBusConnection* bus, const char* sender, const char* path, const char* interface,
                             const char* property, GError** error, void* self);

    const PrivateBus& m_onBus;
    const Manners m_manners;
    const unsigned m_version;
    GMainContext* m_context;
    GMainLoop* m_loop;
    GObjectPointer<GDBusConnection> m_bus;
    std::string m_handle; // of the open dialog
    std::string m_caller;
    guint m_request = 0;
    guint m_name = 0;

    mutable std::mutex m_mutex; // guards what follows
    PortalCall m_call;
    bool m_isOpen = false;
    unsigned m_response = 0;
    std::vector<std::string> m_uris;

    std::thread m_thread;
};

} // namespace bridge
