#pragma once

#include "adapters/eds/book_list.h"
#include "adapters/eds/source_client.h"

#include <libebook/libebook.h>
#include <vector>

namespace bridge {

// The conversation with one address book, in the texts of its cards. Each change is made whole or not at all.
class BookClient : public SourceClient {
public:
    using Place = AddressBook;

    explicit BookClient(AddressBook book) : SourceClient(book.id, subjectOf(book)), m_book(std::move(book)) {}

    // As it was listed last; for its title in sentences.
    void becomes(AddressBook book) {
        setSubject(subjectOf(book));
        m_book = std::move(book);
    }
    const AddressBook& book() const { return m_book; }
    using SourceClient::subject;

    // Those that the query of libebook finds.
    std::vector<std::string> cards(const std::string& query, GCancellable* cancellable);
    std::vector<std::string> allCards(GCancellable* cancellable) { return cards("", cancellable); }
    std::vector<std::string> lists(GCancellable* cancellable) { return cards("(is \"list\" \"1\")", cancellable); }
    // Those that exist, in any order.
    std::vector<std::string> cardsOf(const std::vector<std::string>& uids, GCancellable* cancellable);

    // Answers with the UIDs, which the account may have chosen itself.
    std::vector<std::string> create(const std::vector<std::string>& cards, GCancellable* cancellable);
    void change(const std::vector<std::string>& cards, GCancellable* cancellable);
    void remove(const std::vector<std::string>& uids, GCancellable* cancellable);

private:
    EClient* connect(ESource* source, GCancellable* cancellable, GError** error) const override;
    EBookClient* bookClient(GCancellable* cancellable) { return E_BOOK_CLIENT(client(cancellable)); }

    AddressBook m_book;
};

} // namespace bridge
