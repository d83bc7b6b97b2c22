#include "adapters/eds/contact_batch.h"

#include "adapters/eds/book_contents.h"

#include <set>

namespace bridge {

namespace {

class Collector {
public:
    explicit Collector(const BookList& list) : m_list(list) {}

    void operator()(const AddContact&) { addToDefault(); }
    void operator()(const AddContactGroup&) { addToDefault(); }
    void operator()(const UpdateContact& change) { name(change.contact.identifier, noContact); }
    void operator()(const DeleteContact& change) { name(change.identifier, noContact); }
    void operator()(const DeleteContactGroup& change) { name(change.identifier, noGroup); }
    void operator()(const AddGroupMember& change) { nameMember(change.contactIdentifier, change.groupIdentifier); }
    void operator()(const RemoveGroupMember& change) { nameMember(change.contactIdentifier, change.groupIdentifier); }

    ContactBatch batch() const {
        return {*m_book, {m_uids.begin(), m_uids.end()}, {m_members.begin(), m_members.end()}};
    }

private:
    void use(const AddressBook& book) {
        if (m_book && m_book->id != book.id)
            throw PlatformError("The address books “" + m_book->title + "” and “" + book.title +
                                "” can't be changed together.");
        m_book = &book;
    }
    void addToDefault() {
        const auto* book = m_list.find(m_list.defaultBook);
        if (!book) throw PlatformError("There is no address book for new contacts.");
        use(*book);
    }
    void name(const std::string& identifier, std::string absence(std::string_view)) {
        auto item = itemOf(identifier);
        const auto* book = item ? m_list.find(item->bookID) : nullptr;
        if (!book) throw PlatformError(absence(identifier));
        use(*book);
        m_uids.insert(std::move(item->uid));
    }
    void nameMember(const std::string& contact, const std::string& group) {
        name(group, noGroup);
        auto member = itemOf(contact);
        if (!member) throw PlatformError(noContact(contact));
        m_members.insert(std::move(*member));
    }

    const BookList& m_list;
    const AddressBook* m_book = nullptr;
    std::set<std::string> m_uids;
    std::set<ListMember> m_members;
};

} // namespace

ContactBatch batchOf(const std::vector<ContactChange>& changes, const BookList& list) {
    Collector collector(list);
    for (const auto& change : changes)
        std::visit(collector, change);
    return collector.batch();
}

} // namespace bridge
