#pragma once

#include "adapters/eds/eds_contact_store.h"
#include "adapters/eds/item_identifier.h"
#include "tests/adapters/eds/book_neighbour.h"
#include "tests/adapters/eds/private_eds.h"
#include "tests/contracts/contact_store_under_test.h"

#include <gtest/gtest.h>

namespace bridge {

class EdsContactStoreUnderTest : public ContactStoreUnderTest {
public:
    // As much time as a busy machine may need: what happens when it runs out has tests of its own.
    static constexpr EdsPatience ample{std::chrono::minutes(2), std::chrono::minutes(2), std::chrono::minutes(1)};

    explicit EdsContactStoreUnderTest(EdsPatience patience = ample) : m_patience(patience) {
        if (hindrance().empty()) reopen();
    }
    ~EdsContactStoreUnderTest() override {
        m_store.reset();
        if (hindrance().empty() && !isTidied() && !isTidied()) ADD_FAILURE() << "Contacts are left behind";
    }

    EventLoop& loop() override { return m_loop; }
    EdsContactStore& store() override { return *m_store; }

    std::string put(std::string_view vCard) override {
        return identifier("system-address-book", BookNeighbour::put("system-address-book", vCard));
    }
    void reopen() override {
        m_store.reset();
        m_store = m_loop.runUntilDone(EdsContactStore::open(m_loop, m_patience));
        if (!m_store) throw std::runtime_error("Evolution Data Server is not served");
    }
    void lose() override { PrivateEds::get().uninstall(); }
    void restore() override { PrivateEds::get().install(); }

    std::string hindrance() override { return PrivateEds::hindrance(); }

    static std::string identifier(const std::string& book, const std::string& uid) {
        return ItemIdentifier{book, uid, ""}.text();
    }

private:
    // A service that dies of what a test did to it is there again at the next call.
    static bool isTidied() {
        try {
            BookNeighbour::setDefault("system-address-book");
            BookNeighbour::removeAllBooks();
            return true;
        } catch (const std::runtime_error&) {
            return false;
        }
    }

    EdsPatience m_patience;
    EventLoop m_loop;
    std::unique_ptr<EdsContactStore> m_store;
};

} // namespace bridge
