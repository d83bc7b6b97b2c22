#include "benchmarks/eds_contacts.h"

#include "adapters/dbus/glib_pointer.h"
#include "adapters/eds/eds_contact_store.h"
#include "benchmarks/measure.h"

#include <cstdio>
#include <cstdlib>
#include <fmt/format.h>
#include <libebook/libebook.h>

namespace bridge::bench {

namespace {

void require(bool condition, const char* what) {
    if (condition) return;
    std::fprintf(stderr, "eds_bench: %s\n", what);
    std::exit(1);
}

GObjectPointer<EBookClient> connect() {
    const GObjectPointer<ESource> source(e_source_new_with_uid("system-address-book", nullptr, nullptr));
    constexpr auto noWaiting = static_cast<guint32>(-1);
    EClient* client = e_book_client_connect_sync(source.get(), noWaiting, nullptr, nullptr);
    require(client != nullptr, "no address book");
    return GObjectPointer<EBookClient>(E_BOOK_CLIENT(client));
}

void fill(EventLoop& loop, EdsContactStore& store, int first, int end) {
    std::vector<ContactChange> changes;
    for (int number = first; number < end; ++number) {
        Contact contact;
        contact.givenName = fmt::format("Given{}", number);
        contact.familyName = fmt::format("Family{}", number % 100);
        contact.organizationName = fmt::format("Company {}", number % 97);
        contact.phoneNumbers = {{"main", fmt::format("+49 30 {}", number)}};
        contact.emailAddresses = {{"work", fmt::format("someone{}@example.org", number)}};
        changes.emplace_back(AddContact{contact});
    }
    loop.runUntilDone(store.execute(std::move(changes)));
}

size_t fetch(EBookClient* client, const char* query) {
    GSList* found = nullptr;
    e_book_client_get_contacts_sync(client, query, &found, nullptr, nullptr);
    size_t count = 0;
    for (const GSList* entry = found; entry; entry = entry->next)
        if (e_contact_get_const(E_CONTACT(entry->data), E_CONTACT_FULL_NAME)) ++count;
    g_slist_free_full(found, g_object_unref);
    return count;
}

} // namespace

void measureContacts(EventLoop& loop) {
    auto store = loop.runUntilDone(EdsContactStore::open(loop));
    require(store != nullptr, "Evolution Data Server is not here");
    const auto client = connect();
    const auto search = [&] {
        size_t found = 0;
        loop.runUntilDone(store->enumerate(ContactsMatchingName{"given77"}, [&](const Contact&) {
            ++found;
            return true;
        }));
        return found;
    };
    constexpr auto byName = R"((contains "full_name" "given77"))";
    constexpr auto everybody = "";
    int held = 0;
    for (const int count : {1'000, 10'000}) {
        fill(loop, *store, held, count);
        held = count;
        require(search() > 10 && search() == fetch(client.get(), byName), "the two searches find different contacts");
        const auto measure = [&](const char* query, const char* against) {
            report(fmt::format("a name in {} contacts, Evolution Data Server", count),
                   compare(
                       11, [&] { return secondsFor([&] { fetch(client.get(), query); }) * 1e3; },
                       [&] { return secondsFor([&] { search(); }) * 1e3; }),
                   "ms", against);
        };
        measure(byName, "against libebook's own search");
        measure(everybody, "against everybody by libebook, whom it folds too little to search");
    }
}

} // namespace bridge::bench
