#include "adapters/eds/source_list.h"

#include "adapters/dbus/session_bus.h"
#include "adapters/eds/eds_error.h"
#include "adapters/eds/eds_names.h"
#include "adapters/eds/source_kind.h"

#include <algorithm>
#include <tuple>

namespace bridge {

namespace {

using Sources = std::vector<std::shared_ptr<ESource>>;

Sources takeList(GList* list) {
    Sources sources;
    for (const GList* entry = list; entry; entry = entry->next)
        sources.emplace_back(static_cast<ESource*>(entry->data), GObjectRelease());
    g_list_free(list);
    return sources;
}

std::string textOf(const char* text) {
    return text ? text : "";
}

std::string backendOf(ESource* source, const char* extension) {
    return textOf(e_source_backend_get_backend_name(E_SOURCE_BACKEND(e_source_get_extension(source, extension))));
}

// The account that a calendar without one belongs to is the calendar itself.
std::shared_ptr<ESource> accountOf(ESourceRegistry* registry, const std::shared_ptr<ESource>& source) {
    const char* parent = e_source_get_parent(source.get());
    ESource* account = parent ? e_source_registry_ref_source(registry, parent) : nullptr;
    return account ? std::shared_ptr<ESource>(account, GObjectRelease()) : source;
}

CalendarSource describe(ESource* account, const std::string& calendarBackend) {
    const bool isCollection = e_source_has_extension(account, E_SOURCE_EXTENSION_COLLECTION);
    const auto backend = isCollection ? backendOf(account, E_SOURCE_EXTENSION_COLLECTION) : calendarBackend;
    return {textOf(e_source_get_uid(account)), textOf(e_source_get_display_name(account)), sourceTypeOf(backend)};
}

bool isBefore(const CalendarSource& left, const CalendarSource& right) {
    return std::tie(left.title, left.id) < std::tie(right.title, right.id);
}

void addAccount(SourceList& list, const CalendarSource& account) {
    const auto isThis = [&](const CalendarSource& other) { return other.id == account.id; };
    if (std::none_of(list.accounts.begin(), list.accounts.end(), isThis)) list.accounts.push_back(account);
}

// Those without a calendar too, as far as they take new ones.
void addOpenAccounts(SourceList& list, ESourceRegistry* registry) {
    if (const GObjectPointer<ESource> local(e_source_registry_ref_source(registry, localAccount)); local)
        addAccount(list, describe(local.get(), "local"));
    for (const auto& account : takeList(e_source_registry_list_enabled(registry, E_SOURCE_EXTENSION_COLLECTION)))
        if (e_source_get_remote_creatable(account.get())) addAccount(list, describe(account.get(), ""));
}

void addCalendars(SourceList& list, ESourceRegistry* registry, EntityType type) {
    const auto* extension = extensionOf(type);
    for (auto& source : takeList(e_source_registry_list_enabled(registry, extension))) {
        const auto account = describe(accountOf(registry, source).get(), backendOf(source.get(), extension));
        const auto identifier = textOf(e_source_get_uid(source.get()));
        // One that holds both kinds is shown as what it was listed as first.
        if (list.find(identifier)) continue;
        addAccount(list, account);
        const Calendar calendar{identifier, type, textOf(e_source_get_display_name(source.get())), account, false};
        list.calendars.push_back({calendar, std::move(source)});
    }
}

std::string identifierOf(ESource* source) {
    const GObjectPointer<ESource> owned(source);
    return owned ? textOf(e_source_get_uid(owned.get())) : "";
}

bool has(ESourceRegistry* registry, const char* identifier) {
    return GObjectPointer<ESource>(e_source_registry_ref_source(registry, identifier)) != nullptr;
}

// Starts it when it isn't running. The library's own first question to the registry can't be cancelled, so one that
// hangs has to show before.
void requireAnswer(GDBusConnection* bus, GCancellable* cancellable) {
    constexpr int usualTimeout = -1;
    Outcome asked;
    const GLibPointer<GVariant> answer(g_dbus_connection_call_sync(
        bus, registryName, "/org/gnome/evolution/dataserver/SourceManager", "org.freedesktop.DBus.Peer", "Ping",
        nullptr, nullptr, G_DBUS_CALL_FLAGS_NONE, usualTimeout, cancellable, asked.out()));
    asked.check(serverName);
}

} // namespace

std::string ListedCalendar::subject() const {
    return (calendar.entityType == EntityType::event ? "The calendar “" : "The list “") + calendar.title + "”";
}

const ListedCalendar* SourceList::find(const std::string& identifier) const {
    const auto isThis = [&](const ListedCalendar& listed) { return listed.calendar.id == identifier; };
    const auto found = std::find_if(calendars.begin(), calendars.end(), isThis);
    return found == calendars.end() ? nullptr : &*found;
}

GObjectPointer<ESourceRegistry> openRegistry(GCancellable* cancellable) {
    const auto bus = sessionBus(cancellable);
    if (!bus) throw PlatformError("There is no session bus.");
    if (!isNameServed(bus.get(), registryName, cancellable))
        throw PlatformError(std::string(serverName) + " is not there.");
    requireAnswer(bus.get(), cancellable);
    Outcome opened;
    GObjectPointer<ESourceRegistry> registry(e_source_registry_new_sync(cancellable, opened.out()));
    opened.check(serverName);
    // One that went meanwhile leaves an empty registry behind.
    if (!has(registry.get(), localAccount)) throw PlatformError(std::string(serverName) + " does not answer.");
    return registry;
}

SourceList readSources(ESourceRegistry* registry) {
    SourceList list;
    addOpenAccounts(list, registry);
    addCalendars(list, registry, EntityType::event);
    addCalendars(list, registry, EntityType::reminder);
    std::sort(list.accounts.begin(), list.accounts.end(), isBefore);
    // The library ends the program when it looks for a default and its own built-in calendar is missing.
    if (has(registry, "system-calendar"))
        list.defaultCalendar = identifierOf(e_source_registry_ref_default_calendar(registry));
    if (has(registry, "system-task-list"))
        list.defaultTaskList = identifierOf(e_source_registry_ref_default_task_list(registry));
    return list;
}

} // namespace bridge
