#include "adapters/eds/book_changes.h"

#include "adapters/eds/eds_error.h"
#include "adapters/vcard/vcard.h"

#include <algorithm>
#include <functional>

namespace bridge {

namespace {

std::vector<std::string> uidsOf(const auto& changes) {
    std::vector<std::string> uids;
    for (const auto& [uid, change] : changes)
        uids.push_back(uid);
    return uids;
}

class Changer {
public:
    Changer(CardStore& store, Call& call, const BookChanges& changes)
        : m_store(store), m_call(call), m_changes(changes) {}

    std::vector<std::string> make() {
        // A half can't be left, also when nobody waits any more.
        if (m_changes.steps() > 1) m_call.goThrough();
        auto added = m_changes.addedInOrder;
        if (!m_changes.added.empty()) {
            step([&] { added = create(); }, [&] { return stored(uidsOf(m_changes.added)).size() == added.size(); });
            m_undo.emplace_back([this, added] { m_store.remove(added, m_call.cancellable()); });
        }
        if (!m_changes.changed.empty()) {
            step([&] { write(&BookChanges::Changed::after); }, [&] { return isChanged(); });
            m_undo.emplace_back([this] { write(&BookChanges::Changed::before); });
        }
        if (!m_changes.removed.empty())
            step([&] { m_store.remove(m_changes.removed, m_call.cancellable()); },
                 [&] { return stored(m_changes.removed).empty(); });
        return added;
    }

private:
    std::vector<std::string> create() {
        std::vector<std::string> cards;
        for (const auto& uid : m_changes.addedInOrder)
            cards.push_back(m_changes.added.at(uid));
        auto uids = m_store.create(cards, m_call.cancellable());
        if (uids.size() != cards.size()) throw PlatformError(m_store.subject() + " did not take every contact.");
        return uids;
    }
    void write(std::string BookChanges::Changed::*text) {
        std::vector<std::string> cards;
        for (const auto& [uid, change] : m_changes.changed)
            cards.push_back(change.*text);
        m_store.change(cards, m_call.cancellable());
    }

    std::vector<std::string> stored(const std::vector<std::string>& uids) {
        return m_store.cardsOf(uids, m_call.cancellable());
    }
    // Every change of ours shows in some line, but the service writes REV anew and may write other lines its own way.
    bool isChanged() {
        for (const auto& text : stored(uidsOf(m_changes.changed))) {
            const auto card = VCard::parse(text);
            const auto& change = m_changes.changed.at(card.uid());
            if (card.describe() != VCard::parse(change.after).describe()) return false;
            if (ContactList::isList(card.lines()) &&
                ContactList({}, text).members() != ContactList({}, change.after).members())
                return false;
        }
        return true;
    }

    void step(const std::function<void()>& make, const std::function<bool()>& isMade) {
        try {
            make();
        } catch (const PlatformError& error) {
            const auto* fault = dynamic_cast<const EdsError*>(&error);
            if (fault && fault->fault == EdsFault::lost && isSurely(isMade)) return;
            takeBack(error.what());
            throw;
        }
    }
    bool isSurely(const std::function<bool()>& made) {
        try {
            m_call.goThrough();
            return made();
        } catch (const PlatformError&) {
            return false;
        }
    }
    void takeBack(const std::string& reason) {
        if (!m_undo.empty()) m_call.goThrough();
        try {
            std::for_each(m_undo.rbegin(), m_undo.rend(), [](const auto& undo) { undo(); });
        } catch (const PlatformError&) {
            throw PlatformError(reason + " What was changed before that could not be taken back.");
        }
    }

    CardStore& m_store;
    Call& m_call;
    const BookChanges& m_changes;
    std::vector<std::function<void()>> m_undo;
};

} // namespace

std::vector<std::string> makeChanges(CardStore& store, Call& call, const BookChanges& changes) {
    return Changer(store, call, changes).make();
}

} // namespace bridge
