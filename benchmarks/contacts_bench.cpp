#include "adapters/posix/system_clock.h"
#include "adapters/sqlite/sqlite_contact_store.h"
#include "base/event_loop.h"
#include "benchmarks/measure.h"
#include "tests/support/temporary_folder.h"

#include <algorithm>
#include <cstdlib>
#include <fmt/format.h>

namespace {

using namespace bridge;
using namespace bridge::bench;

constexpr const char* givenNames[] = {"Anna", "Björn", "Chloé", "David", "Elif",  "Fatima", "Giorgos",
                                      "Hana", "Ivan",  "José",  "Kenji", "Lucía", "Marta"};
constexpr const char* familyNames[] = {"Abel",     "Çelik", "Dubois", "García", "Haas", "Ito",
                                       "Kowalski", "López", "Müller", "Novák",  "Smith"};

class Store {
public:
    explicit Store(int count) : m_store(m_folder.file("contacts.db"), m_clock) {
        std::vector<ContactChange> changes{AddContactGroup{"Group"}};
        for (int number = 0; number < count; ++number) {
            Contact contact;
            contact.givenName = givenNames[number % std::size(givenNames)];
            contact.middleName = fmt::format("M{:05}", number);
            contact.familyName = fmt::format("{}{}", familyNames[number % std::size(familyNames)], number / 40);
            contact.organizationName = fmt::format("Company {}", number % 97);
            contact.phoneNumbers = {{"main", fmt::format("+49 30 {}", number)},
                                    {"mobile", fmt::format("017{}", number)}};
            contact.emailAddresses = {{"work", fmt::format("someone{}@example.org", number)}};
            changes.emplace_back(AddContact{contact});
        }
        const auto added = m_loop.runUntilDone(m_store.execute(std::move(changes)));
        m_group = added[0];
        std::vector<ContactChange> members;
        for (size_t index = 1; index < added.size(); ++index)
            members.emplace_back(AddGroupMember{added[index], m_group});
        m_loop.runUntilDone(m_store.execute(std::move(members)));
    }

    // Microseconds until the first `limit` are there.
    double page(const ContactPredicate& predicate, size_t limit, size_t expected) {
        constexpr int times = 10;
        const double seconds = secondsFor([&] {
            for (int time = 0; time < times; ++time) {
                size_t found = 0;
                m_loop.runUntilDone(m_store.enumerate(predicate, [&](const Contact&) { return ++found < limit; }));
                if (found != expected) std::exit(1);
            }
        });
        return seconds / times * 1e6;
    }

    ContactPredicate group() const { return ContactsInGroup{m_group}; }

private:
    TemporaryFolder m_folder;
    SystemClock m_clock;
    EventLoop m_loop;
    SqliteContactStore m_store;
    std::string m_group;
};

} // namespace

// What the number of contacts costs who wants few of them: 50,000 against 1,000.
int main() {
    Store small(1000);
    Store large(50'000);
    const auto compareSizes = [&](const char* what, size_t expected, const ContactPredicate& inLarge,
                                  const ContactPredicate& inSmall) {
        report(what,
               compare(
                   15, [&] { return small.page(inSmall, std::max<size_t>(expected, 1), expected); },
                   [&] { return large.page(inLarge, std::max<size_t>(expected, 1), expected); }),
               "µs", "limit 2.00");
    };
    const auto both = [&](const char* what, size_t expected, const ContactPredicate& predicate) {
        compareSizes(what, expected, predicate, predicate);
    };
    both("first 50 contacts", 50, AllContacts{});
    compareSizes("first 50 of a group of all", 50, large.group(), small.group());
    both("name that one has", 1, ContactsMatchingName{"m00777"});
    both("first 50 of the Annas, one in 13", 50, ContactsMatchingName{"anna"});
    both("first 50 by one letter", 50, ContactsMatchingName{"m"});
    both("name that nobody has", 0, ContactsMatchingName{"zzz anna"});
    both("first 5 of two frequent names", 5, ContactsMatchingName{"anna mull"});
    both("two names, one rare", 1, ContactsMatchingName{"m00777 comp"});
}
