#include "adapters/eds/source_changes.h"

#include "adapters/eds/eds_error.h"
#include "adapters/eds/eds_names.h"
#include "base/text.h"

namespace bridge {

namespace {

std::string subjectOf(ESource* account) {
    return std::string("The account “") + e_source_get_display_name(account) + "”";
}

// Texts go over the bus, which takes nothing but UTF-8 without zero bytes.
void checkTitle(const std::string& title) {
    if (title.find('\0') != title.npos || !isUTF8(title)) throw PlatformError("The title is not text.");
}

GObjectPointer<ESource> accountFor(ESourceRegistry* registry, const std::string& accountID) {
    GObjectPointer<ESource> account;
    if (accountID.find('\0') == accountID.npos && isUTF8(accountID))
        account.reset(e_source_registry_ref_source(registry, accountID.c_str()));
    if (!account) throw PlatformError("There is no such account.");
    if (accountID != localAccount && !e_source_get_remote_creatable(account.get()))
        throw PlatformError(subjectOf(account.get()) + " takes no new calendars.");
    return account;
}

std::string backendFor(ESource* account, EntityType type) {
    if (e_source_has_extension(account, E_SOURCE_EXTENSION_COLLECTION)) {
        auto* extension = E_SOURCE_BACKEND(e_source_get_extension(account, E_SOURCE_EXTENSION_COLLECTION));
        const std::string backend = e_source_backend_get_backend_name(extension);
        // What stands on a WebDAV server is found there by CalDAV.
        if (backend == "google" && type == EntityType::reminder) return "gtasks";
        return backend == "webdav" || backend == "google" || backend == "yahoo" ? "caldav" : backend;
    }
    return "local";
}

} // namespace

void addCalendar(ESourceRegistry* registry, const NewCalendar& wanted, GCancellable* cancellable) {
    checkTitle(wanted.title);
    const auto account = accountFor(registry, wanted.accountID);
    const auto subject = subjectOf(account.get());
    Outcome made;
    const GObjectPointer<ESource> source(e_source_new_with_uid(wanted.identifier.c_str(), nullptr, made.out()));
    made.check(subject);
    e_source_set_parent(source.get(), wanted.accountID.c_str());
    e_source_set_display_name(source.get(), wanted.title.c_str());
    auto* backend = E_SOURCE_BACKEND(e_source_get_extension(source.get(), extensionOf(wanted.type)));
    e_source_backend_set_backend_name(backend, backendFor(account.get(), wanted.type).c_str());
    // For a remote account this asks its server.
    Outcome committed;
    e_source_registry_commit_source_sync(registry, source.get(), cancellable, committed.out());
    committed.check(subject);
}

void renameCalendar(const ListedCalendar& listed, const std::string& title, GCancellable* cancellable) {
    checkTitle(title);
    auto* source = listed.source.get();
    if (!e_source_get_writable(source)) throw PlatformError(listed.subject() + " can't be renamed.");
    e_source_set_display_name(source, title.c_str());
    Outcome written;
    e_source_write_sync(source, cancellable, written.out());
    written.check(listed.subject());
}

void removeCalendar(const ListedCalendar& listed, GCancellable* cancellable) {
    auto* source = listed.source.get();
    Outcome removed;
    if (e_source_get_remote_deletable(source))
        e_source_remote_delete_sync(source, cancellable, removed.out());
    else if (e_source_get_removable(source))
        e_source_remove_sync(source, cancellable, removed.out());
    else
        throw PlatformError(listed.subject() + " can't be removed.");
    removed.check(listed.subject());
}

} // namespace bridge
