#include "adapters/eds/book_client.h"

#include <iterator>
#include <span>

namespace bridge {

namespace {

constexpr guint32 ordinaryWays = E_BOOK_OPERATION_FLAG_NONE;

// Of the library's contacts. Frees both.
class ContactsToWrite {
public:
    explicit ContactsToWrite(const std::vector<std::string>& cards) {
        for (auto card = cards.rbegin(); card != cards.rend(); ++card)
            m_list = g_slist_prepend(m_list, e_contact_new_from_vcard(card->c_str()));
    }
    ContactsToWrite(const ContactsToWrite&) = delete;
    ContactsToWrite& operator=(const ContactsToWrite&) = delete;
    ~ContactsToWrite() { g_slist_free_full(m_list, g_object_unref); }

    GSList* get() const { return m_list; }

private:
    GSList* m_list = nullptr;
};

// Takes the list and what is in it.
std::vector<std::string> takeCards(GSList* list) {
    std::vector<std::string> cards;
    for (const GSList* entry = list; entry; entry = entry->next) {
        // To the letter, as long as nobody has asked the contact for anything.
        const GLibPointer<char> text(e_vcard_to_string(E_VCARD(entry->data), EVC_FORMAT_VCARD_30));
        if (text) cards.emplace_back(text.get());
    }
    g_slist_free_full(list, g_object_unref);
    return cards;
}

std::string queryFor(std::span<const std::string> uids) {
    GString* const query = g_string_new("(or");
    for (const auto& uid : uids) {
        g_string_append(query, " (is \"id\" ");
        e_sexp_encode_string(query, uid.c_str());
        g_string_append(query, ")");
    }
    g_string_append(query, ")");
    std::string text = query->str;
    g_string_free(query, TRUE);
    return text;
}

} // namespace

EClient* BookClient::connect(ESource* source, GCancellable* cancellable, GError** error) const {
    // Any other wait blocks for its whole length.
    constexpr auto noWaiting = static_cast<guint32>(-1);
    return e_book_client_connect_sync(source, noWaiting, cancellable, error);
}

std::vector<std::string> BookClient::cards(const std::string& query, GCancellable* cancellable) {
    return reading(cancellable, [&](EClient* connected) {
        GSList* list = nullptr;
        Outcome found;
        e_book_client_get_contacts_sync(E_BOOK_CLIENT(connected), query.c_str(), &list, cancellable, found.out());
        auto cards = takeCards(list);
        found.check(subject());
        return cards;
    });
}

std::vector<std::string> BookClient::cardsOf(const std::vector<std::string>& uids, GCancellable* cancellable) {
    // The service's own database takes no condition of 1,000 parts.
    constexpr size_t most = 400;
    std::vector<std::string> found;
    for (size_t start = 0; start < uids.size(); start += most) {
        const auto part = std::span(uids).subspan(start, std::min(most, uids.size() - start));
        std::ranges::move(cards(queryFor(part), cancellable), std::back_inserter(found));
    }
    return found;
}

std::vector<std::string> BookClient::create(const std::vector<std::string>& cards, GCancellable* cancellable) {
    const ContactsToWrite contacts(cards);
    GSList* list = nullptr;
    Outcome added;
    e_book_client_add_contacts_sync(bookClient(cancellable), contacts.get(), ordinaryWays, &list, cancellable,
                                    added.out());
    std::vector<std::string> uids;
    for (const GSList* entry = list; entry; entry = entry->next)
        uids.emplace_back(static_cast<const char*>(entry->data));
    g_slist_free_full(list, g_free);
    added.check(subject());
    return uids;
}

void BookClient::change(const std::vector<std::string>& cards, GCancellable* cancellable) {
    const ContactsToWrite contacts(cards);
    Outcome changed;
    e_book_client_modify_contacts_sync(bookClient(cancellable), contacts.get(), ordinaryWays, cancellable,
                                       changed.out());
    changed.check(subject());
}

void BookClient::remove(const std::vector<std::string>& uids, GCancellable* cancellable) {
    GSList* list = nullptr;
    for (const auto& uid : uids)
        list = g_slist_prepend(list, const_cast<char*>(uid.c_str())); // it is only read
    Outcome removed;
    e_book_client_remove_contacts_sync(bookClient(cancellable), list, ordinaryWays, cancellable, removed.out());
    g_slist_free(list);
    removed.check(subject());
}

} // namespace bridge
