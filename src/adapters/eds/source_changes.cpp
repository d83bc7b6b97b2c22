#include "adapters/eds/source_changes.h"

#include "adapters/eds/eds_error.h"
#include "adapters/eds/eds_names.h"
#include "adapters/eds/source_list.h"
#include "base/text.h"

#include <libedataserver/libedataserver.h>

namespace bridge {

namespace {

// Texts go over the bus, which takes nothing but UTF-8 without zero bytes.
void checkTitle(const std::string& title) {
    if (title.find('\0') != title.npos || !isUTF8(title)) throw PlatformError("The title is not text.");
}

RegisteredSource require(const SourceRegistry& registry, const std::string& identifier, const char* absence) {
    for (auto& source : registry.sources())
        if (source.identifier == identifier) return std::move(source);
    throw PlatformError(absence);
}

std::string backendFor(const RegisteredSource& account, EntityType type) {
    if (!account.data.has(collectionExtension)) return "local";
    auto backend = account.data.backend(collectionExtension);
    if (backend == "google" && type == EntityType::reminder) return "gtasks";
    // What stands on a WebDAV server is found there by CalDAV.
    return backend == "webdav" || backend == "google" || backend == "yahoo" ? "caldav" : backend;
}

std::string dataFor(const NewCalendar& wanted, const RegisteredSource& account) {
    Outcome made;
    const GObjectPointer<ESource> source(e_source_new_with_uid(wanted.identifier.c_str(), nullptr, made.out()));
    made.check(serverName);
    e_source_set_parent(source.get(), wanted.accountID.c_str());
    e_source_set_display_name(source.get(), wanted.title.c_str());
    auto* backend = E_SOURCE_BACKEND(e_source_get_extension(source.get(), extensionOf(wanted.type)));
    e_source_backend_set_backend_name(backend, backendFor(account, wanted.type).c_str());
    const GLibPointer<char> text(e_source_to_string(source.get(), nullptr));
    return text.get();
}

} // namespace

void addCalendar(const SourceRegistry& registry, const NewCalendar& wanted) {
    checkTitle(wanted.title);
    const auto account = require(registry, wanted.accountID, "There is no such account.");
    const auto data = dataFor(wanted, account);
    if (account.takesNewOnes)
        registry.createRemotely(account, wanted.identifier, data);
    else if (account.identifier == localAccount)
        registry.create(wanted.identifier, data);
    else
        throw PlatformError("The account “" + account.data.displayName() + "” takes no new calendars.");
}

void renameCalendar(const SourceRegistry& registry, const Calendar& calendar, const std::string& title) {
    checkTitle(title);
    auto source = require(registry, calendar.id, "There is no such calendar.");
    if (!source.isWritable) throw PlatformError(subjectOf(calendar) + " can't be renamed.");
    source.data.rename(title);
    registry.write(source);
}

void removeCalendar(const SourceRegistry& registry, const Calendar& calendar) {
    const auto source = require(registry, calendar.id, "There is no such calendar.");
    if (!source.isRemovable && !source.isRemotelyRemovable)
        throw PlatformError(subjectOf(calendar) + " can't be removed.");
    registry.remove(source);
}

} // namespace bridge
