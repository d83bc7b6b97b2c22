#include "adapters/eds/change_plan.h"

#include "adapters/eds/book_contents.h"
#include "adapters/eds/file_as.h"
#include "adapters/vcard/card_edit.h"
#include "adapters/vcard/vcard.h"
#include "base/text.h"
#include "base/uuid.h"

namespace bridge {

namespace {

// Texts go over the bus, which takes nothing but UTF-8 without zero bytes.
const std::string& checked(const std::string& text) {
    if (text.find('\0') != text.npos || !isUTF8(text)) throw PlatformError("What is to be written is not text.");
    return text;
}

} // namespace

ChangePlan::ChangePlan(std::string bookID, const std::vector<std::string>& cards,
                       std::map<std::string, Contact> members)
    : m_bookID(std::move(bookID)), m_members(std::move(members)) {
    for (const auto& text : cards) {
        const auto card = VCard::parse(text);
        m_cards[card.uid()] = {text, text, ContactList::isList(card.lines())};
    }
}

void ChangePlan::add(const ContactChange& change) {
    std::visit([this](const auto& each) { apply(each); }, change);
}

BookChanges ChangePlan::changes() const {
    BookChanges changes;
    changes.addedInOrder = m_added;
    for (const auto& [uid, card] : m_cards) {
        if (card.before.empty() && !card.now.empty())
            changes.added[uid] = card.now;
        else if (card.now.empty())
            changes.removed.push_back(uid);
        else if (card.now != card.before)
            changes.changed[uid] = {card.before, card.now};
    }
    return changes;
}

void ChangePlan::apply(const AddContact& change) {
    const auto uid = makeUUID();
    addNew(uid, newCard(change.contact, uid));
}

void ChangePlan::apply(const UpdateContact& change) {
    auto& card = contact(change.contact.identifier);
    const auto before = VCard::parse(card.now).describe();
    card.now = checked(refiledCard(editedCard(card.now, change.contact), before, change.contact));
}

void ChangePlan::apply(const DeleteContact& change) {
    contact(change.identifier).now.clear();
}

void ChangePlan::apply(const AddContactGroup& change) {
    const auto uid = makeUUID();
    addNew(uid, ContactList::newText(change.name, uid));
}

void ChangePlan::apply(const DeleteContactGroup& change) {
    group(change.identifier).now.clear();
}

void ChangePlan::apply(const AddGroupMember& change) {
    const auto member = requireMember(change.contactIdentifier);
    auto& card = group(change.groupIdentifier);
    ContactList list(m_bookID, card.now);
    list.add(member, m_members.at(change.contactIdentifier));
    card.now = checked(list.text());
}

void ChangePlan::apply(const RemoveGroupMember& change) {
    const auto member = requireMember(change.contactIdentifier);
    auto& card = group(change.groupIdentifier);
    ContactList list(m_bookID, card.now);
    list.remove(member);
    card.now = list.text();
}

void ChangePlan::addNew(const std::string& uid, const std::string& text) {
    m_cards[uid].now = checked(text);
    m_added.push_back(uid);
}

ChangePlan::Card* ChangePlan::find(const std::string& identifier) {
    const auto item = itemOf(identifier);
    const auto found = item && item->bookID == m_bookID ? m_cards.find(item->uid) : m_cards.end();
    return found == m_cards.end() ? nullptr : &found->second;
}

ChangePlan::Card& ChangePlan::contact(const std::string& identifier) {
    auto* card = find(identifier);
    if (!card || card->isList || card->now.empty()) throw PlatformError(noContact(identifier));
    return *card;
}

ChangePlan::Card& ChangePlan::group(const std::string& identifier) {
    auto* card = find(identifier);
    if (!card || !card->isList || card->now.empty()) throw PlatformError(noGroup(identifier));
    return *card;
}

ListMember ChangePlan::requireMember(const std::string& identifier) {
    const auto item = itemOf(identifier);
    const auto* card = find(identifier);
    const bool isRemoved = card && card->now.empty();
    if (!item || isRemoved || !m_members.contains(identifier)) throw PlatformError(noContact(identifier));
    return *item;
}

} // namespace bridge
