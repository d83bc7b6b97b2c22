#pragma once

#include "adapters/dbus/glib_pointer.h"

#include <functional>
#include <libedataserver/libedataserver.h>
#include <string>
#include <string_view>
#include <vector>

namespace bridge {

// What another program of the same desktop does with the registered sources of Evolution Data Server. Its own calls,
// nothing of the code under test.
class NeighbourRegistry {
public:
    // Throws what it says, and frees it.
    static void check(GError* error);

    static bool has(const std::string& identifier, const std::string& group);
    static GObjectPointer<ESource> newSource(const char* extension, const char* backend, const char* parent,
                                             std::string_view title);
    // Where its backend fetches what is in it.
    static void setAddress(ESource* source, std::string_view address);
    // Answers with the identifier.
    static std::string create(ESource* source);

    static void setEnabled(const std::string& identifier, bool isEnabled);
    static void rename(const std::string& identifier, std::string_view title);
    // A key of the settings in which the user's choices stand.
    static void setDefault(const char* key, const std::string& identifier);
    static void remove(const std::string& identifier);
    // Those with one of these groups that can go.
    static void removeAll(const std::vector<std::string>& groups);
};

// A connection to what stands behind a source; signals of the library's objects go nowhere.
class NeighbourConnection {
public:
    using Connect = std::function<EClient*(ESource*, GError**)>;
    NeighbourConnection(const std::string& identifier, const Connect& connect);
    NeighbourConnection(const NeighbourConnection&) = delete;
    NeighbourConnection& operator=(const NeighbourConnection&) = delete;
    ~NeighbourConnection();

    EClient* get() const { return m_client.get(); }

private:
    GLibPointer<GMainContext> m_context{g_main_context_new()};
    GObjectPointer<EClient> m_client;
};

} // namespace bridge
