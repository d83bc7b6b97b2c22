#pragma once

#include "adapters/dbus/glib_pointer.h"

#include <cfloat>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace bridge {

// A service of GeoClue's name on the tests' own bus that does what the test wrote down, on a thread of its own.
class ScriptedGeoClue {
public:
    enum class Answer { usual, refusal, never };
    struct Place {
        double latitude = 52.52;
        double longitude = 13.405;
        double accuracy = 10;
        double altitude = -DBL_MAX;
        guint64 seconds = 1786706921;
        bool isGone = false; // told of, but not to be read any more
        bool lacksLongitude = false;
    };
    struct Plan {
        Answer createClient = Answer::usual;
        Answer start = Answer::usual;
        std::vector<Place> places{}; // told of to each client that starts, one after the other
    };

    explicit ScriptedGeoClue(Plan plan);
    ScriptedGeoClue(const ScriptedGeoClue&) = delete;
    ScriptedGeoClue& operator=(const ScriptedGeoClue&) = delete;
    // As one that was killed.
    ~ScriptedGeoClue();

    // Tells the client of this place.
    void tell(Place place);
    // A signal of another shape than it should have.
    void tellNonsense();

    // The calls so far with what was set: "CreateClient", "DesktopId=x", "RequestedAccuracyLevel=8", "Start",
    // "Read" of a location, "DeleteClient".
    std::vector<std::string> calls() const;
    // Blocks until there were so many such calls.
    void waitFor(const std::string& call, ptrdiff_t count = 1);
    // The name of whoever called last.
    std::string caller() const;

private:
    void run();
    void onThread(std::function<void()> action);
    void note(const std::string& call, const char* caller);
    void update(Place place);
    void emit(GVariant* paths);
    static void handleCall(GDBusConnection*, const char* caller, const char*, const char*, const char* method,
                           GVariant*, GDBusMethodInvocation* invocation, gpointer data);
    static gboolean handleSet(GDBusConnection*, const char* caller, const char*, const char*, const char* property,
                              GVariant* value, GError**, gpointer data);
    static GVariant* handleGet(GDBusConnection*, const char*, const char* path, const char*, const char* property,
                               GError** error, gpointer data);
    void registerObject(const std::string& path, GDBusInterfaceInfo* interface);

    const Plan m_plan;
    GLibPointer<GMainContext> m_context{g_main_context_new()};
    GMainLoop* m_loop = g_main_loop_new(m_context.get(), FALSE);
    GObjectPointer<GDBusConnection> m_bus;
    GDBusNodeInfo* m_node = nullptr;
    std::vector<guint> m_objects;
    std::vector<Place> m_places; // location N is the Nth

    mutable std::mutex m_mutex;
    std::condition_variable m_called;
    std::vector<std::string> m_calls;
    std::string m_caller;

    std::thread m_thread; // last, for it uses the rest
};

} // namespace bridge
