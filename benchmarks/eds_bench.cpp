#include "adapters/dbus/glib_pointer.h"
#include "adapters/eds/eds_event_store.h"
#include "benchmarks/calendar_load.h"
#include "benchmarks/eds_contacts.h"
#include "benchmarks/measure.h"

#include <cstdlib>
#include <libecal/libecal.h>

namespace {

using namespace bridge;
using namespace bridge::bench;

void require(bool condition, const char* what) {
    if (condition) return;
    std::fprintf(stderr, "eds_bench: %s\n", what);
    std::exit(1);
}

// Another program's connection to the same calendar.
GObjectPointer<ECalClient> connect(const std::string& calendar) {
    const GObjectPointer<ESourceRegistry> registry(e_source_registry_new_sync(nullptr, nullptr));
    require(registry != nullptr, "no registry");
    const GObjectPointer<ESource> source(e_source_registry_ref_source(registry.get(), calendar.c_str()));
    constexpr auto noWaiting = static_cast<guint32>(-1);
    EClient* client =
        e_cal_client_connect_sync(source.get(), E_CAL_CLIENT_SOURCE_TYPE_EVENTS, noWaiting, nullptr, nullptr);
    require(client != nullptr, "no calendar");
    return GObjectPointer<ECalClient>(E_CAL_CLIENT(client));
}

void fill(ECalClient* client, size_t count) {
    GSList* components = nullptr;
    for (const auto& object : eventLoad(count))
        components = g_slist_prepend(components, i_cal_component_new_from_string(object.componentText(0).c_str()));
    const bool isFilled =
        e_cal_client_create_objects_sync(client, components, E_CAL_OPERATION_FLAG_NONE, nullptr, nullptr, nullptr);
    g_slist_free_full(components, g_object_unref);
    require(isFilled, "the calendar takes no events");
}

// The same question by the library itself: everything in the range, and every series with the times it happens.
size_t searchBare(ECalClient* client, const Month& month) {
    size_t found = 0;
    const ECalRecurInstanceCb count = [](ICalComponent*, ICalTime*, ICalTime*, gpointer number, GCancellable*,
                                         GError**) -> gboolean {
        ++*static_cast<size_t*>(number);
        return TRUE;
    };
    e_cal_client_generate_instances_sync(client, month.start.secondsSince1970, month.end.secondsSince1970, nullptr,
                                         count, &found);
    return found;
}

// What the adapter asks: it can't do with the service's index alone, which knows no moved occurrences.
size_t fetchBare(ECalClient* client, const Month& month) {
    constexpr int64_t day = 24 * 60 * 60;
    const auto time = [](int64_t seconds) {
        const GLibPointer<char> text(isodate_from_time_t(static_cast<time_t>(seconds)));
        return "(make-time \"" + std::string(text.get()) + "\")";
    };
    const auto query = "(or (has-recurrences?) (occur-in-time-range? " + time(month.start.secondsSince1970 - day) +
                       " " + time(month.end.secondsSince1970 + day) + "))";
    GSList* found = nullptr;
    e_cal_client_get_object_list_sync(client, query.c_str(), &found, nullptr, nullptr);
    const size_t count = g_slist_length(found);
    g_slist_free_full(found, g_object_unref);
    return count;
}

void measureCalendars(EventLoop& loop) {
    auto store = loop.runUntilDone(EdsEventStore::open(loop));
    require(store != nullptr, "Evolution Data Server is not here");
    const auto sources = loop.runUntilDone(store->sources());
    require(!sources.empty(), "no account");
    const auto calendar = loop.runUntilDone(store->addCalendar(EntityType::event, "local-stub", "Measured")).id;
    const auto client = connect(calendar);
    fill(client.get(), 5'000);

    const auto month = measuredMonth();
    const std::vector<std::string> calendars{calendar};
    constexpr size_t limit = 500;
    const auto search = [&] {
        return loop.runUntilDone(store->events(month.start, month.end, calendars, limit)).size();
    };
    const auto found = searchBare(client.get(), month);
    require(found == search() && found > 100, "the two searches find different things");
    require(fetchBare(client.get(), month) > found / 2, "the query finds nothing");
    const auto measure = [&](const char* against, size_t (*bare)(ECalClient*, const Month&)) {
        report("events of a month in 5,000, Evolution Data Server",
               compare(
                   11, [&] { return secondsFor([&] { bare(client.get(), month); }) * 1e3; },
                   [&] { return secondsFor([&] { search(); }) * 1e3; }),
               "ms", against);
    };
    measure("against libecal's own search", &searchBare);
    measure("against the same query by libecal", &fetchBare);
    loop.runUntilDone(store->removeCalendar(calendar));
}

} // namespace

// Searches through the adapters, against the same ones made straight with the libraries. Runs on a session bus of its
// own.
int main() {
    EventLoop loop;
    measureCalendars(loop);
    measureContacts(loop);
}
