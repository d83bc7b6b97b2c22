#pragma once

#include "adapters/eds/book_contents.h"
#include "adapters/eds/registry_worker.h"

#include <functional>

namespace bridge {

// The address books that are listed at a moment, each with its worker. On the main thread; the loop outlives it.
//
// Several are asked at the same time, and one that fails fails the call: who is missing must not look like who is not
// there.
class EdsBooks {
public:
    EdsBooks(EventLoop& loop, EdsPatience patience) : m_setting{loop, patience} {}

    // Whether the bus knows the services at all.
    Task<bool> isServed();
    // What the registry lists now.
    Task<BookList> list();

    // Of all these books, in the order of contacts.
    Task<std::vector<PlacedContact>> contacts(std::vector<AddressBook> books, BookSelection selection);
    // Those that exist in a listed book, in the order of contacts.
    Task<std::vector<PlacedContact>> contactsOf(BookList list, std::vector<ListMember> items);
    // Nobody when there is no such group.
    Task<std::vector<PlacedContact>> membersOf(BookList list, std::string groupIdentifier);
    Task<std::vector<ContactGroup>> groups(std::vector<AddressBook> books);

    // Runs job(client, call) for one that is written to.
    template <typename Answer> using Job = std::function<Answer(BookClient&, Call&)>;
    template <typename Answer> Task<Answer> write(AddressBook book, Job<Answer> job) {
        const auto worker = m_workers.of(book.id);
        auto writing = worker->write(std::move(book), std::move(job));
        auto answer = co_await std::move(writing);
        co_return answer;
    }

private:
    template <typename Part> struct Question {
        AddressBook book;
        Job<std::vector<Part>> job;
    };
    // The answers one after the other.
    template <typename Part> Task<std::vector<Part>> askAll(std::vector<Question<Part>> questions);
    Task<std::vector<PlacedContact>> inOrder(std::vector<Question<PlacedContact>> questions);

    WorkerSetting m_setting;
    RegistryWorker m_registry{m_setting};
    SourceWorkers<SourceWorker<BookClient>> m_workers{m_setting};
};

} // namespace bridge
