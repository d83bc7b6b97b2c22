#include "adapters/eds/eds_contact_store.h"

#include "adapters/eds/book_changes.h"
#include "adapters/eds/contact_batch.h"
#include "adapters/eds/eds_books.h"
#include "base/name_words.h"

namespace bridge {

namespace {

std::map<std::string, Contact> byIdentifier(std::vector<PlacedContact> contacts) {
    std::map<std::string, Contact> found;
    for (auto& [key, contact] : contacts) {
        auto identifier = contact.identifier;
        found.emplace(std::move(identifier), std::move(contact));
    }
    return found;
}

BookSelection selectionFor(const ContactPredicate& predicate) {
    const auto* named = std::get_if<ContactsMatchingName>(&predicate);
    if (!named) return {};
    return {.nameWords = nameWords(named->text)};
}

std::vector<std::string> makeAll(BookClient& client, Call& call, const ContactBatch& batch,
                                 const std::vector<ContactChange>& changes, std::map<std::string, Contact> members) {
    client.requireWritable(call.cancellable());
    ChangePlan plan(batch.book.id, client.cardsOf(batch.uids, call.cancellable()), std::move(members));
    for (const auto& change : changes)
        plan.add(change);
    std::vector<std::string> identifiers;
    for (auto& uid : makeChanges(client, call, plan.changes()))
        identifiers.push_back(identifierOf({batch.book.id, std::move(uid)}));
    return identifiers;
}

} // namespace

EdsContactStore::EdsContactStore(std::unique_ptr<EdsBooks> books) : m_books(std::move(books)) {}

EdsContactStore::~EdsContactStore() = default;

Task<std::unique_ptr<EdsContactStore>> EdsContactStore::open(EventLoop& loop, EdsPatience patience) {
    std::unique_ptr<EdsContactStore> store(new EdsContactStore(std::make_unique<EdsBooks>(loop, patience)));
    auto asking = store->m_books->isServed();
    const bool isServed = co_await std::move(asking);
    if (!isServed) store.reset();
    co_return store;
}

Task<std::vector<Contact>> EdsContactStore::contacts(std::vector<std::string> identifiers) {
    auto listing = m_books->list();
    auto list = co_await std::move(listing);
    std::vector<ListMember> items;
    for (const auto& identifier : identifiers)
        if (auto item = itemOf(identifier)) items.push_back(std::move(*item));
    auto reading = m_books->contactsOf(std::move(list), std::move(items));
    auto read = co_await std::move(reading);
    auto known = byIdentifier(std::move(read));
    std::vector<Contact> found;
    for (const auto& identifier : identifiers)
        if (auto contact = known.extract(identifier)) found.push_back(std::move(contact.mapped()));
    co_return found;
}

Task<> EdsContactStore::enumerate(ContactPredicate predicate, std::function<bool(const Contact&)> visit) {
    auto listing = m_books->list();
    auto list = co_await std::move(listing);
    const auto* group = std::get_if<ContactsInGroup>(&predicate);
    auto reading = group ? m_books->membersOf(std::move(list), group->groupIdentifier)
                         : m_books->contacts(std::move(list.books), selectionFor(predicate));
    const auto found = co_await std::move(reading);
    for (const auto& each : found)
        if (!visit(each.contact)) break;
}

Task<std::vector<ContactGroup>> EdsContactStore::groups() {
    auto listing = m_books->list();
    auto list = co_await std::move(listing);
    auto reading = m_books->groups(std::move(list.books));
    auto groups = co_await std::move(reading);
    co_return groups;
}

Task<std::vector<std::string>> EdsContactStore::execute(std::vector<ContactChange> changes) {
    if (changes.empty()) co_return {};
    auto listing = m_books->list();
    auto list = co_await std::move(listing);
    auto batch = batchOf(changes, list);
    auto reading = m_books->contactsOf(std::move(list), batch.members);
    auto read = co_await std::move(reading);
    auto members = byIdentifier(std::move(read));
    EdsBooks::Job<std::vector<std::string>> job = [batch, changes = std::move(changes),
                                                   members = std::move(members)](BookClient& client, Call& call) {
        return makeAll(client, call, batch, changes, members);
    };
    auto writing = m_books->write(batch.book, std::move(job));
    auto identifiers = co_await std::move(writing);
    co_return identifiers;
}

} // namespace bridge
