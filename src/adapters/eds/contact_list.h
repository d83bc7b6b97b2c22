#pragma once

#include "adapters/vcard/card_text.h"

#include <optional>

#include <string>
#include <vector>

namespace bridge {

// A member of a contact list, by its UID in the address book where it is kept.
struct ListMember {
    std::string bookID;
    std::string uid;
    auto operator<=>(const ListMember&) const = default;
};

// A contact list, which is how Evolution Data Server keeps a group: a card with X-EVOLUTION-LIST, whose EMAIL lines
// stand for the members. Members may be of other address books, and need no e-mail address; addresses that belong to no
// contact stay as they are.
class ContactList {
public:
    // In the address book where it is kept. Throws PlatformError when the text is no vCard.
    ContactList(std::string bookID, const std::string& text)
        : m_bookID(std::move(bookID)), m_card(vcard::CardText::parse(text)) {}

    // Whether the lines of a card make it one.
    static bool isList(const std::vector<vcard::ContentLine>& lines);

    static std::string newText(const std::string& name, const std::string& uid);

    // Also those that are no longer there.
    std::vector<ListMember> members() const;
    // `contact` is who it is. A member again changes nothing.
    void add(const ListMember& member, const Contact& contact);
    void remove(const ListMember& member);

    std::string text() const { return m_card.text(); }

private:
    std::optional<ListMember> memberOf(const vcard::ContentLine& line) const;

    std::string m_bookID;
    vcard::CardText m_card;
};

} // namespace bridge
