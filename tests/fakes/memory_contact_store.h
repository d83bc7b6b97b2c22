#pragma once

#include "base/name_words.h"
#include "base/platform_error.h"
#include "platform/contact_store.h"

#include <algorithm>
#include <map>
#include <set>

namespace bridge {

// An address book that lasts as long as the object, and answers at once.
class MemoryContactStore : public ContactStore {
public:
    struct State {
        std::vector<Contact> contacts;
        std::vector<ContactGroup> groups;
        std::map<std::string, std::vector<std::string>> members; // by group; a contact that is gone may be among them
        std::map<std::string, std::string> otherIdentifiers;     // of contacts that are kept in several places
        int made = 0;
        bool operator==(const State&) const = default;
    };

    const State& state() const { return m_state; }
    // Groups that can't be deleted.
    std::set<std::string> fixedGroups;
    // How many contacts the enumerations have shown.
    int visited = 0;

    std::string put(Contact contact) { return add(m_state, std::move(contact)); }
    std::string putGroup(std::string name, std::vector<std::string> members = {}) {
        auto identifier = addGroup(m_state, std::move(name));
        m_state.members[identifier] = std::move(members);
        return identifier;
    }

    // From now on the contact goes by this identifier as well.
    void alsoKnow(const std::string& contact, const std::string& identifier) {
        m_state.otherIdentifiers[identifier] = contact;
    }

    std::string description() const override { return "memory"; }

    Task<std::vector<Contact>> contacts(std::vector<std::string> identifiers) override {
        std::vector<Contact> found;
        std::set<std::string> seen;
        for (const auto& identifier : identifiers)
            if (const auto* contact = find(m_state, identifier); contact && seen.insert(contact->identifier).second)
                found.push_back(*contact);
        co_return found;
    }

    Task<> enumerate(ContactPredicate predicate, std::function<bool(const Contact&)> visit) override {
        std::vector<Contact> sorted;
        for (const auto& contact : m_state.contacts)
            if (matches(contact, predicate)) sorted.push_back(contact);
        std::ranges::stable_sort(sorted, {}, [](const Contact& contact) {
            return nameSortKey(contact.familyName, contact.givenName, contact.organizationName);
        });
        for (const auto& contact : sorted) {
            ++visited;
            if (!visit(contact)) break;
        }
        co_return;
    }

    Task<std::vector<ContactGroup>> groups() override { co_return m_state.groups; }

    Task<std::vector<std::string>> execute(std::vector<ContactChange> changes) override {
        auto changed = m_state;
        std::vector<std::string> added;
        for (auto& change : changes) {
            const auto apply = [&](auto& each) { make(changed, added, std::move(each)); };
            std::visit(apply, change);
        }
        m_state = std::move(changed);
        co_return added;
    }

private:
    static Contact* find(State& state, const std::string& identifier) {
        const auto other = state.otherIdentifiers.find(identifier);
        const auto& own = other == state.otherIdentifiers.end() ? identifier : other->second;
        const auto found = std::ranges::find(state.contacts, own, &Contact::identifier);
        return found == state.contacts.end() ? nullptr : &*found;
    }
    static Contact& editable(State& state, const std::string& identifier) {
        auto* contact = find(state, identifier);
        if (!contact) throw PlatformError("The contact is gone.");
        if (!contact->isEditable) throw PlatformError("The contact takes no changes.");
        return *contact;
    }
    static std::vector<std::string>& membersOf(State& state, const std::string& group) {
        const auto found = state.members.find(group);
        if (found == state.members.end()) throw PlatformError("The group is gone.");
        return found->second;
    }
    static std::string add(State& state, Contact contact) {
        contact.identifier = "contact-" + std::to_string(++state.made);
        state.contacts.push_back(std::move(contact));
        return state.contacts.back().identifier;
    }
    static std::string addGroup(State& state, std::string name) {
        auto identifier = "group-" + std::to_string(++state.made);
        state.groups.push_back({identifier, std::move(name)});
        state.members[identifier];
        return identifier;
    }

    void make(State& state, std::vector<std::string>& added, AddContact change) {
        added.push_back(add(state, std::move(change.contact)));
    }
    void make(State& state, std::vector<std::string>&, UpdateContact change) {
        auto& contact = editable(state, change.contact.identifier);
        change.contact.postalAddresses = contact.postalAddresses;
        change.contact.imageAvailable = contact.imageAvailable;
        contact = std::move(change.contact);
    }
    void make(State& state, std::vector<std::string>&, DeleteContact change) {
        editable(state, change.identifier);
        std::erase_if(state.contacts, [&](const Contact& each) { return each.identifier == change.identifier; });
    }
    void make(State& state, std::vector<std::string>& added, AddContactGroup change) {
        added.push_back(addGroup(state, std::move(change.name)));
    }
    void make(State& state, std::vector<std::string>&, DeleteContactGroup change) {
        membersOf(state, change.identifier);
        if (fixedGroups.contains(change.identifier)) throw PlatformError("The group can't be deleted.");
        state.members.erase(change.identifier);
        std::erase_if(state.groups, [&](const ContactGroup& each) { return each.identifier == change.identifier; });
    }
    void make(State& state, std::vector<std::string>&, AddGroupMember change) {
        const auto& contact = editable(state, change.contactIdentifier).identifier;
        auto& members = membersOf(state, change.groupIdentifier);
        if (std::ranges::find(members, contact) == members.end()) members.push_back(contact);
    }
    void make(State& state, std::vector<std::string>&, RemoveGroupMember change) {
        std::erase(membersOf(state, change.groupIdentifier), change.contactIdentifier);
    }

    bool matches(const Contact& contact, const ContactPredicate& predicate) const {
        if (const auto* byName = std::get_if<ContactsMatchingName>(&predicate)) return matches(contact, byName->text);
        if (const auto* inGroup = std::get_if<ContactsInGroup>(&predicate)) {
            const auto members = m_state.members.find(inGroup->groupIdentifier);
            return members != m_state.members.end() &&
                   std::ranges::find(members->second, contact.identifier) != members->second.end();
        }
        return true;
    }
    static bool matches(const Contact& contact, const std::string& text) {
        const auto names = contact.givenName + ' ' + contact.middleName + ' ' + contact.familyName + ' ' +
                           contact.nickname + ' ' + contact.organizationName;
        return wordsBeginWordsOf(nameWords(text), nameWords(names));
    }

    State m_state;
};

} // namespace bridge
