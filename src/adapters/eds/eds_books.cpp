#include "adapters/eds/eds_books.h"

#include "adapters/eds/eds_names.h"
#include "adapters/eds/together.h"

#include <algorithm>
#include <iterator>

namespace bridge {

namespace {

auto contactsJob(BookSelection selection) {
    return [selection = std::move(selection)](BookClient& client, Call& call) {
        return readContacts(client, call, selection);
    };
}

} // namespace

Task<bool> EdsBooks::isServed() {
    return m_registry.isServed(bookFactoryName);
}

Task<BookList> EdsBooks::list() {
    auto listing = m_registry.read([](const SourceRegistry& registry) { return listedBooks(registry.sources()); });
    auto list = co_await std::move(listing);
    m_workers.forgetAllBut(list);
    co_return list;
}

template <typename Part> Task<std::vector<Part>> EdsBooks::askAll(std::vector<Question<Part>> questions) {
    std::vector<std::shared_ptr<SourceWorker<BookClient>>> workers;
    std::vector<Task<std::vector<Part>>> tasks;
    for (auto& question : questions) {
        workers.push_back(m_workers.of(question.book.id));
        tasks.push_back(workers.back()->read(std::move(question.book), std::move(question.job)));
    }
    auto asking = together(m_setting.loop, std::move(tasks));
    auto parts = co_await std::move(asking);
    std::vector<Part> whole;
    for (auto& part : parts)
        std::ranges::move(part, std::back_inserter(whole));
    co_return whole;
}

Task<std::vector<PlacedContact>> EdsBooks::inOrder(std::vector<Question<PlacedContact>> questions) {
    const bool isOrdered = questions.size() < 2;
    auto asking = askAll(std::move(questions));
    auto found = co_await std::move(asking);
    if (!isOrdered) std::ranges::sort(found, comesBefore);
    co_return found;
}

Task<std::vector<PlacedContact>> EdsBooks::contacts(std::vector<AddressBook> books, BookSelection selection) {
    std::vector<Question<PlacedContact>> questions;
    for (auto& book : books)
        questions.push_back({std::move(book), contactsJob(selection)});
    return inOrder(std::move(questions));
}

Task<std::vector<PlacedContact>> EdsBooks::contactsOf(BookList list, std::vector<ListMember> items) {
    std::map<std::string, std::vector<std::string>> uids;
    for (auto& item : items)
        uids[item.bookID].push_back(std::move(item.uid));
    std::vector<Question<PlacedContact>> questions;
    for (auto& [bookID, ofBook] : uids)
        if (const auto* book = list.find(bookID))
            questions.push_back({*book, contactsJob({.uids = std::move(ofBook)})});
    return inOrder(std::move(questions));
}

Task<std::vector<PlacedContact>> EdsBooks::membersOf(BookList list, std::string groupIdentifier) {
    const auto group = itemOf(groupIdentifier);
    const auto* book = group ? list.find(group->bookID) : nullptr;
    if (!book) co_return {};
    std::vector<Question<ListMember>> questions;
    questions.push_back(
        {*book, [uid = group->uid](BookClient& client, Call& call) { return readMembers(client, call, uid); }});
    auto asking = askAll(std::move(questions));
    auto members = co_await std::move(asking);
    auto reading = contactsOf(std::move(list), std::move(members));
    auto found = co_await std::move(reading);
    co_return found;
}

Task<std::vector<ContactGroup>> EdsBooks::groups(std::vector<AddressBook> books) {
    std::vector<Question<ContactGroup>> questions;
    for (auto& book : books)
        questions.push_back({std::move(book), [](BookClient& client, Call& call) { return readGroups(client, call); }});
    return askAll(std::move(questions));
}

} // namespace bridge
