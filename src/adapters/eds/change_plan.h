#pragma once

#include "adapters/eds/contact_list.h"

#include <map>
#include <string>
#include <vector>

namespace bridge {

// What a batch comes to, in the texts of cards. Each of the three is one call of the service.
struct BookChanges {
    struct Changed {
        std::string before;
        std::string after;
    };
    std::map<std::string, std::string> added; // by their UIDs
    std::vector<std::string> addedInOrder;    // UIDs
    std::map<std::string, Changed> changed;
    std::vector<std::string> removed;

    size_t steps() const { return !added.empty() + size_t(!changed.empty()) + !removed.empty(); }
};

// Works a batch of changes through the cards of one address book, one after the other, without writing anything.
class ChangePlan {
public:
    // `cards` are those that the changes name, as far as they exist; `members` are the contacts of every book that are
    // put into groups, by identifier.
    ChangePlan(std::string bookID, const std::vector<std::string>& cards, std::map<std::string, Contact> members);

    // Throws PlatformError when what it names is gone.
    void add(const ContactChange& change);
    BookChanges changes() const;

private:
    struct Card {
        std::string before; // empty for a new one
        std::string now;    // empty for a removed one
        bool isList = false;
    };

    void apply(const AddContact& change);
    void apply(const UpdateContact& change);
    void apply(const DeleteContact& change);
    void apply(const AddContactGroup& change);
    void apply(const DeleteContactGroup& change);
    void apply(const AddGroupMember& change);
    void apply(const RemoveGroupMember& change);
    void addNew(const std::string& uid, const std::string& text);
    Card& contact(const std::string& identifier);
    Card& group(const std::string& identifier);
    ListMember requireMember(const std::string& identifier);
    Card* find(const std::string& identifier);

    std::string m_bookID;
    std::map<std::string, Card> m_cards; // by UID
    std::map<std::string, Contact> m_members;
    std::vector<std::string> m_added;
};

} // namespace bridge
