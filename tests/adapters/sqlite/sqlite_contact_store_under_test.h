#pragma once

#include "adapters/posix/system_clock.h"
#include "adapters/sqlite/sqlite_contact_store.h"
#include "tests/contracts/contact_store_under_test.h"
#include "tests/support/temporary_folder.h"

#include <set>

namespace bridge {

class SqliteContactStoreUnderTest : public ContactStoreUnderTest {
public:
    SqliteContactStoreUnderTest() { reopen(); }

    EventLoop& loop() override { return m_loop; }
    ContactStore& store() override { return *m_store; }
    std::string put(std::string_view vCard) override {
        SqliteContactStore otherProgram(path(), m_clock);
        const auto before = identifiers();
        importContacts(otherProgram, vCard);
        for (const auto& identifier : identifiers())
            if (!before.contains(identifier)) return identifier;
        throw std::runtime_error("nothing was put");
    }
    void reopen() override {
        m_store.reset();
        m_store = std::make_unique<SqliteContactStore>(path(), m_clock);
    }
    void lose() override {
        std::filesystem::rename(m_folder / "store", m_folder / "lost");
        // So that nothing new can begin in its place.
        putFile(m_folder / "store", "");
    }
    void restore() override {
        std::filesystem::remove(m_folder / "store");
        std::filesystem::rename(m_folder / "lost", m_folder / "store");
    }

    std::string path() const { return m_folder / "store/contacts.db"; }

private:
    std::set<std::string> identifiers() {
        std::set<std::string> found;
        wait(m_store->enumerate(AllContacts{}, [&found](const Contact& each) {
            found.insert(each.identifier);
            return true;
        }));
        return found;
    }

    EventLoop m_loop;
    TemporaryFolder m_folder;
    SystemClock m_clock;
    std::unique_ptr<SqliteContactStore> m_store;
};

} // namespace bridge
