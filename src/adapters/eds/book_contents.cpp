#include "adapters/eds/book_contents.h"

#include "adapters/eds/item_identifier.h"
#include "adapters/vcard/contact_names.h"
#include "adapters/vcard/vcard.h"
#include "base/name_words.h"
#include "base/text.h"

#include <algorithm>
#include <tuple>

namespace bridge {

namespace {

std::optional<VCard> parsed(const std::string& text) {
    try {
        return VCard::parse(text);
    } catch (const PlatformError&) {
        // A card that can't be understood keeps nobody from the others.
        return std::nullopt;
    }
}

} // namespace

std::string identifierOf(const ListMember& item) {
    return ItemIdentifier{item.bookID, item.uid, ""}.text();
}

std::optional<ListMember> itemOf(std::string_view identifier) {
    auto parts = ItemIdentifier::parse(identifier);
    if (!parts || !parts->recurrenceID.empty()) return std::nullopt;
    return ListMember{std::move(parts->sourceID), std::move(parts->uid)};
}

std::string noContact(std::string_view identifier) {
    return "There is no contact “" + repairUTF8(identifier) + "” in the address books.";
}

std::string noGroup(std::string_view identifier) {
    return "There is no group of contacts “" + repairUTF8(identifier) + "” in the address books.";
}

bool comesBefore(const PlacedContact& left, const PlacedContact& right) {
    return std::tie(left.sortKey, left.contact.identifier) < std::tie(right.sortKey, right.contact.identifier);
}

std::vector<PlacedContact> readContacts(BookClient& client, const Call& call, const BookSelection& selection) {
    const bool isReadOnly = client.isReadOnly(call.cancellable());
    const auto cards =
        selection.uids ? client.cardsOf(*selection.uids, call.cancellable()) : client.allCards(call.cancellable());
    std::vector<PlacedContact> found;
    for (const auto& text : cards) {
        const auto card = parsed(text);
        if (!card || ContactList::isList(card->lines())) continue;
        auto contact = card->describe();
        if (selection.nameWords && !wordsBeginWordsOf(*selection.nameWords, nameWordsOf(contact))) continue;
        contact.identifier = identifierOf({client.book().id, card->uid()});
        contact.isEditable = !isReadOnly;
        auto key = nameSortKey(contact.familyName, contact.givenName, contact.organizationName);
        found.push_back({std::move(key), std::move(contact)});
    }
    std::ranges::sort(found, comesBefore);
    return found;
}

std::vector<ContactGroup> readGroups(BookClient& client, const Call& call) {
    std::vector<ContactGroup> groups;
    for (const auto& text : client.lists(call.cancellable()))
        if (const auto card = parsed(text); card && ContactList::isList(card->lines()))
            groups.push_back({identifierOf({client.book().id, card->uid()}), card->formattedName()});
    return groups;
}

std::vector<ListMember> readMembers(BookClient& client, const Call& call, const std::string& uid) {
    for (const auto& text : client.cardsOf({uid}, call.cancellable()))
        if (const auto card = parsed(text); card && card->uid() == uid && ContactList::isList(card->lines()))
            return ContactList(client.book().id, text).members();
    return {};
}

} // namespace bridge
