#include "tests/adapters/eds/book_neighbour.h"

#include <filesystem>
#include <libebook/libebook.h>
#include <libedata-book/libedata-book.h>

namespace bridge {

namespace {

GObjectPointer<EContact> find(EBookClient* client, const std::string& uid) {
    EContact* found = nullptr;
    e_book_client_get_contact_sync(client, uid.c_str(), &found, nullptr, nullptr);
    return GObjectPointer<EContact>(found);
}

class Connection : public NeighbourConnection {
public:
    explicit Connection(const std::string& identifier) : NeighbourConnection(identifier, &connect) {}
    EBookClient* get() const { return E_BOOK_CLIENT(NeighbourConnection::get()); }

private:
    static EClient* connect(ESource* source, GError** error) {
        return e_book_client_connect_sync(source, static_cast<guint32>(-1), nullptr, error);
    }
};

} // namespace

std::string BookNeighbour::addLocalBook(std::string_view title) {
    return create(newSource(E_SOURCE_EXTENSION_ADDRESS_BOOK, "local", "local-stub", title).get());
}

std::string BookNeighbour::addRemoteBook(std::string_view title, std::string_view address) {
    const auto source = newSource(E_SOURCE_EXTENSION_ADDRESS_BOOK, "carddav", "carddav-stub", title);
    setAddress(source.get(), address);
    return create(source.get());
}

std::string BookNeighbour::addRememberedBook(std::string_view title, std::string_view vCard) {
    const auto source = newSource(E_SOURCE_EXTENSION_ADDRESS_BOOK, "carddav", "carddav-stub", title);
    setAddress(source.get(), "http://127.0.0.1:9/book/");
    const auto path = std::string(e_get_user_cache_dir()) + "/addressbook/" + e_source_get_uid(source.get());
    std::filesystem::create_directories(path);
    GError* error = nullptr;
    const GObjectPointer<EBookCache> memory(
        e_book_cache_new((path + "/cache.db").c_str(), source.get(), nullptr, &error));
    check(error);
    const GObjectPointer<EContact> contact(e_contact_new_from_vcard(std::string(vCard).c_str()));
    e_book_cache_put_contact(memory.get(), contact.get(), nullptr, 0, E_CACHE_IS_ONLINE, nullptr, &error);
    check(error);
    return create(source.get());
}

void BookNeighbour::setDefault(const std::string& identifier) {
    NeighbourRegistry::setDefault("default-address-book", identifier);
}

void BookNeighbour::removeAllBooks() {
    removeAll({"Address Book"});
    const Connection client("system-address-book");
    GSList* uids = nullptr;
    GError* error = nullptr;
    e_book_client_get_contacts_uids_sync(client.get(), "", &uids, nullptr, &error);
    if (uids) e_book_client_remove_contacts_sync(client.get(), uids, E_BOOK_OPERATION_FLAG_NONE, nullptr, &error);
    g_slist_free_full(uids, g_free);
    check(error);
}

std::string BookNeighbour::put(const std::string& book, std::string_view vCard) {
    const Connection client(book);
    const GObjectPointer<EContact> contact(e_contact_new_from_vcard(std::string(vCard).c_str()));
    char* uid = nullptr;
    GError* error = nullptr;
    e_book_client_add_contact_sync(client.get(), contact.get(), E_BOOK_OPERATION_FLAG_NONE, &uid, nullptr, &error);
    const GLibPointer<char> added(uid);
    check(error);
    return added.get();
}

std::string BookNeighbour::stored(const std::string& book, const std::string& uid) {
    const Connection client(book);
    const auto contact = find(client.get(), uid);
    if (!contact) return {};
    const GLibPointer<char> text(e_vcard_to_string(E_VCARD(contact.get()), EVC_FORMAT_VCARD_30));
    return text.get();
}

void BookNeighbour::remove(const std::string& book, const std::string& uid) {
    const Connection client(book);
    GError* error = nullptr;
    e_book_client_remove_contact_by_uid_sync(client.get(), uid.c_str(), E_BOOK_OPERATION_FLAG_NONE, nullptr, &error);
    check(error);
}

std::vector<std::string> BookNeighbour::list(const std::string& book, const std::string& uid) {
    const Connection client(book);
    const auto contact = find(client.get(), uid);
    if (!contact || !e_contact_get(contact.get(), E_CONTACT_IS_LIST)) return {};
    std::vector<std::string> lines{static_cast<const char*>(e_contact_get_const(contact.get(), E_CONTACT_FULL_NAME))};
    GList* const members = e_contact_get_attributes(contact.get(), E_CONTACT_EMAIL);
    for (const GList* entry = members; entry; entry = entry->next) {
        auto* member = static_cast<EVCardAttribute*>(entry->data);
        const GList* parameter = e_vcard_attribute_get_param(member, EVC_X_DEST_CONTACT_UID);
        const GLibPointer<char> value(e_vcard_attribute_get_value(member));
        lines.push_back(std::string(parameter ? static_cast<const char*>(parameter->data) : "") + ": " + value.get());
    }
    g_list_free_full(members, [](gpointer member) { e_vcard_attribute_free(static_cast<EVCardAttribute*>(member)); });
    return lines;
}

} // namespace bridge
