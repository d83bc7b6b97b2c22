#include "adapters/eds/contact_list.h"

#include "base/text.h"

#include <algorithm>
#include <set>

namespace bridge {

using namespace vcard;

namespace {

constexpr auto contactParameter = "X-EVOLUTION-DEST-CONTACT-UID";
constexpr auto bookParameter = "X-EVOLUTION-DEST-SOURCE-UID";

std::string nameOf(const Contact& contact) {
    std::string name;
    for (const auto* part : {&contact.givenName, &contact.familyName})
        if (!trim(*part).empty()) name += (name.empty() ? "" : " ") + *part;
    return name.empty() ? contact.organizationName : name;
}

} // namespace

bool ContactList::isList(const std::vector<ContentLine>& lines) {
    return std::ranges::any_of(lines, [](const ContentLine& line) {
        return line.is("X-EVOLUTION-LIST") && equalsIgnoringCase(trim(line.value), "TRUE");
    });
}

std::string ContactList::newText(const std::string& name, const std::string& uid) {
    auto card = CardText::ofVersion3();
    card.add({"", "UID", {}, escaped(uid)});
    card.add({"", "FN", {}, escaped(name)});
    card.add({"", "X-EVOLUTION-FILE-AS", {}, escaped(name)});
    card.add({"", "X-EVOLUTION-LIST", {}, "TRUE"});
    card.add({"", "X-EVOLUTION-LIST-SHOW-ADDRESSES", {}, "FALSE"});
    return card.text();
}

std::optional<ListMember> ContactList::memberOf(const ContentLine& line) const {
    const auto uid = line.parameterValue(contactParameter);
    if (!line.is("EMAIL") || uid.empty()) return std::nullopt;
    const auto book = line.parameterValue(bookParameter);
    return ListMember{book.empty() ? m_bookID : std::string(book), std::string(uid)};
}

std::vector<ListMember> ContactList::members() const {
    // One with several addresses may stand there several times.
    std::set<ListMember> found;
    for (const auto& line : m_card.lines())
        if (auto member = memberOf(line.content)) found.insert(std::move(*member));
    return {found.begin(), found.end()};
}

void ContactList::add(const ListMember& member, const Contact& contact) {
    const auto isThis = [&](const CardText::Line& line) { return memberOf(line.content) == member; };
    if (std::ranges::any_of(m_card.lines(), isThis)) return;
    const auto address = contact.emailAddresses.empty() ? std::string() : contact.emailAddresses[0].value;
    ContentLine line{"", "EMAIL", {}, escaped(nameOf(contact) + " <" + address + ">")};
    line.setParameter("X-EVOLUTION-DEST-HTML-MAIL", {"FALSE"});
    line.setParameter("X-EVOLUTION-DEST-EMAIL-NUM", {"0"});
    line.setParameter(bookParameter, {member.bookID});
    line.setParameter(contactParameter, {member.uid});
    m_card.add(std::move(line));
}

void ContactList::remove(const ListMember& member) {
    m_card.removeIf([&](const ContentLine& line) { return memberOf(line) == member; });
}

} // namespace bridge
