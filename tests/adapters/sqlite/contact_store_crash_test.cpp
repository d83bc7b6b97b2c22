#include "adapters/sqlite/sqlite_contact_store.h"
#include "base/event_loop.h"
#include "base/file_descriptor.h"
#include "tests/adapters/sqlite/still_clock.h"
#include "tests/support/temporary_folder.h"

#include <array>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bridge {
namespace {

constexpr size_t identifierLength = 36;

std::vector<std::string> execute(SqliteContactStore& store, std::vector<ContactChange> changes) {
    EventLoop loop;
    return loop.runUntilDone(store.execute(std::move(changes)));
}

Contact numbered(int number) {
    Contact contact;
    contact.givenName = "Given" + std::to_string(number);
    contact.familyName = "Family" + std::to_string(number % 10);
    contact.phoneNumbers = {{"main", std::to_string(number)}};
    return contact;
}

// Writes batches of two contacts for ever and says the identifiers of each that was answered.
[[noreturn]] void writeForEver(const std::string& path, int pipe) {
    StillClock clock;
    SqliteContactStore store(path, clock);
    for (int number = 0;; number += 2) {
        const auto added = execute(store, {AddContact{numbered(number)}, AddContact{numbered(number + 1)}});
        const auto line = added[0] + added[1];
        if (write(pipe, line.data(), line.size()) != static_cast<ssize_t>(line.size())) _exit(1);
    }
}

// What a child wrote and was answered, until it was killed in the middle of its work.
std::vector<std::string> answeredBeforeTheKill(const std::string& path, size_t wanted) {
    std::array<int, 2> pipe{};
    if (::pipe(pipe.data()) != 0) throw std::runtime_error("no pipe");
    const pid_t child = fork();
    if (child == 0) {
        close(pipe[0]);
        writeForEver(path, pipe[1]);
    }
    close(pipe[1]);
    const FileDescriptor answers(pipe[0]);
    std::string bytes;
    std::array<char, 4096> buffer{};
    bool isKilled = false;
    while (true) {
        const ssize_t count = read(answers.get(), buffer.data(), buffer.size());
        if (count <= 0) break;
        bytes.append(buffer.data(), static_cast<size_t>(count));
        if (bytes.size() >= wanted * identifierLength && !std::exchange(isKilled, true)) kill(child, SIGKILL);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
    std::vector<std::string> identifiers;
    for (size_t place = 0; place + identifierLength <= bytes.size(); place += identifierLength)
        identifiers.push_back(bytes.substr(place, identifierLength));
    return identifiers;
}

TEST(SqliteContactStoreAfterAKill, HasEveryAnsweredWriteWhole) {
    const TemporaryFolder folder;
    const auto path = folder.file("contacts.db");
    StillClock clock;
    std::vector<std::string> answered;
    for (const size_t wanted : {2u, 20u, 51u, 90u}) {
        const auto more = answeredBeforeTheKill(path, wanted);
        EXPECT_GE(more.size(), wanted);
        answered.insert(answered.end(), more.begin(), more.end());

        Database database(path, "contacts", {});
        EXPECT_EQ(database.value<std::string>("PRAGMA integrity_check"), "ok");
        EXPECT_EQ(database.value<int64_t>("SELECT count(*) % 2 FROM contact"), 0) << "half a batch";
    }
    SqliteContactStore store(path, clock);
    EventLoop loop;
    const auto found = loop.runUntilDone(store.contacts(answered));
    ASSERT_EQ(found.size(), answered.size());
    for (const auto& contact : found) {
        EXPECT_EQ(contact.phoneNumbers.size(), 1u);
        EXPECT_EQ("Given" + contact.phoneNumbers[0].value, contact.givenName);
        size_t named = 0;
        loop.runUntilDone(store.enumerate(ContactsMatchingName{contact.givenName}, [&](const Contact& each) {
            named += each.identifier == contact.identifier;
            return true;
        }));
        EXPECT_EQ(named, 1u);
    }
}

} // namespace
} // namespace bridge
