#pragma once

#include "adapters/eds/book_list.h"
#include "adapters/eds/card_store.h"
#include "adapters/eds/source_client.h"

#include <libebook/libebook.h>
#include <vector>

namespace bridge {

// The conversation with one address book.
class BookClient : public SourceClient, public CardStore {
public:
    using Place = AddressBook;

    explicit BookClient(AddressBook book) : SourceClient(book.id, subjectOf(book)), m_book(std::move(book)) {}

    // As it was listed last; for its title in sentences.
    void becomes(AddressBook book) {
        setSubject(subjectOf(book));
        m_book = std::move(book);
    }
    const AddressBook& book() const { return m_book; }
    std::string subject() const override { return SourceClient::subject(); }

    // Those that the query of libebook finds.
    std::vector<std::string> cards(const std::string& query, GCancellable* cancellable);
    std::vector<std::string> allCards(GCancellable* cancellable) { return cards("", cancellable); }
    std::vector<std::string> lists(GCancellable* cancellable) { return cards("(is \"list\" \"1\")", cancellable); }

    std::vector<std::string> cardsOf(const std::vector<std::string>& uids, GCancellable* cancellable) override;
    std::vector<std::string> create(const std::vector<std::string>& cards, GCancellable* cancellable) override;
    void change(const std::vector<std::string>& cards, GCancellable* cancellable) override;
    void remove(const std::vector<std::string>& uids, GCancellable* cancellable) override;

private:
    EClient* connect(ESource* source, GCancellable* cancellable, GError** error) const override;
    EBookClient* bookClient(GCancellable* cancellable) { return E_BOOK_CLIENT(client(cancellable)); }

    AddressBook m_book;
};

} // namespace bridge
