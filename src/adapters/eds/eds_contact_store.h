#pragma once

#include "adapters/eds/eds_patience.h"
#include "base/event_loop.h"
#include "platform/contact_store.h"

#include <memory>

namespace bridge {

class EdsBooks;

// Evolution Data Server, which keeps the address books of GNOME and its accounts (over D-Bus, by libebook). An
// identifier says which book and which card in it: a person who is in two books is two contacts, for nothing on the
// desktop links them. Groups are contact lists. New contacts and groups go into the book that the user chose for them.
//
// Each book has a thread of its own. A search asks all of them, and one that does not answer fails it by name. Every
// call asks the service as it is at that moment: one that was restarted is found again, one that is gone is an error.
//
// A batch changes one book. Whether a change that was not answered in time was made can't be known. The service keeps
// nobody from changing a contact between our reading and our writing it.
class EdsContactStore : public ContactStore {
public:
    // Nothing when there is no session bus or the service is not installed. One that is installed and does not start is
    // no reason for another store: its calls fail. `loop` must outlive the store, and the store its tasks.
    static Task<std::unique_ptr<EdsContactStore>> open(EventLoop& loop, EdsPatience patience = {});
    ~EdsContactStore() override;

    std::string description() const override { return "Evolution Data Server"; }
    Task<std::vector<Contact>> contacts(std::vector<std::string> identifiers) override;
    Task<> enumerate(ContactPredicate predicate, std::function<bool(const Contact&)> visit) override;
    Task<std::vector<ContactGroup>> groups() override;
    Task<std::vector<std::string>> execute(std::vector<ContactChange> changes) override;

private:
    explicit EdsContactStore(std::unique_ptr<EdsBooks> books);

    std::unique_ptr<EdsBooks> m_books;
};

} // namespace bridge
