#include "adapters/vcard/vcard.h"

#include "adapters/vcard/address_value.h"
#include "adapters/vcard/date_value.h"
#include "adapters/vcard/labels.h"
#include "adapters/vcard/upgrade.h"
#include "base/platform_error.h"
#include "base/text.h"
#include "base/uuid.h"

#include <algorithm>
#include <map>
#include <utility>

namespace bridge {

using namespace vcard;

namespace {

enum NamePart : size_t { family, given, additional, prefix, suffix };

// One part of N or ORG; several values of it are separated as people write them.
std::string partOf(const ContentLine* line, size_t part) {
    if (!line) return {};
    const auto parts = split(line->value, ';');
    return part < parts.size() ? unescaped(joined(split(parts[part], ','), " ")) : std::string();
}

void setPart(ContentLine& line, size_t part, std::string_view text) {
    auto parts = split(line.value, ';');
    if (parts.size() <= part) parts.resize(part + 1);
    parts[part] = escaped(text);
    line.value = joined(parts, ";");
}

// What is shown of somebody whose name is not known.
std::string nameWithoutN(const Contact& contact) {
    for (const auto* name : {&contact.organizationName, &contact.nickname})
        if (!trim(*name).empty()) return *name;
    for (const auto* values : {&contact.emailAddresses, &contact.phoneNumbers})
        if (!values->empty()) return values->front().value;
    return {};
}

std::string joinedNames(std::initializer_list<std::string> names) {
    std::vector<std::string> present;
    for (const auto& name : names)
        if (!trim(name).empty()) present.push_back(name);
    return joined(present, " ");
}

ContentLine uidLine(const std::string& uid) {
    return {"", "UID", {}, uid};
}

} // namespace

VCard VCard::parse(std::string_view text) {
    auto found = readCards(text);
    if (found.cards.size() != 1 || !found.problems.empty()) throw PlatformError("This is not one whole vCard.");
    std::vector<std::string> faults;
    return VCard(upgraded(found.cards[0], faults));
}

VCard VCard::create(const Contact& contact) {
    VCard card({uidLine("urn:uuid:" + lowercase(makeUUID()))});
    card.change(contact);
    for (const auto& address : contact.postalAddresses)
        card.m_lines.push_back(addressLine(address));
    return card;
}

VCard::VCard(std::vector<ContentLine> lines) : m_lines(std::move(lines)) {
    if (!find("FN")) findOrAdd("FN").value = escaped(ordinaryName());
    const auto* uid = find("UID");
    m_uid = uid ? unescaped(uid->value) : "";
    if (trim(m_uid).empty()) giveNewUID();
}

void VCard::giveNewUID() {
    m_uid = "urn:uuid:" + lowercase(makeUUIDOf(content()));
    std::erase_if(m_lines, [](const auto& line) { return line.is("UID"); });
    m_lines.insert(m_lines.begin(), uidLine(m_uid));
}

std::string VCard::text() const {
    std::string text = "BEGIN:VCARD\r\nVERSION:4.0\r\n";
    for (const auto& line : m_lines)
        text += written(line);
    return text += "END:VCARD\r\n";
}

std::string VCard::content() const {
    std::string text;
    for (const auto& line : m_lines)
        if (!line.is("UID") && !line.is("REV") && !line.is("PRODID")) text += written(line);
    return text;
}

Contact VCard::describe() const {
    auto contact = describeAllButNames();
    const auto* name = find("N");
    contact.familyName = partOf(name, family);
    contact.givenName = partOf(name, given);
    contact.middleName = partOf(name, additional);
    // Many programs write a formatted name alone. What of it is the family's can't be told, but it must not be lost.
    if (contact.familyName.empty() && contact.givenName.empty() && contact.middleName.empty())
        if (const auto shown = formattedName(); shown != nameWithoutN(contact)) contact.givenName = shown;
    return contact;
}

Contact VCard::describeAllButNames() const {
    Contact contact;
    const auto* nickname = find("NICKNAME");
    const auto* title = find("TITLE");
    contact.nickname = nickname ? unescaped(joined(split(nickname->value, ','), ", ")) : "";
    contact.organizationName = partOf(find("ORG"), 0);
    contact.jobTitle = title ? unescaped(title->value) : "";
    contact.phoneNumbers = labeledValues(m_lines, "TEL");
    contact.emailAddresses = labeledValues(m_lines, "EMAIL");
    std::map<std::string, std::string> countries; // of a group's address, as address books without CC write it
    for (const auto& line : m_lines)
        if (line.is("X-ABADR") && !line.group.empty()) countries.emplace(lowercase(line.group), trim(line.value));
    for (const auto& line : m_lines) {
        if (line.is("BDAY") && !contact.birthday) contact.birthday = dayOf(line);
        if (line.is("PHOTO") && !line.value.empty()) contact.imageAvailable = true;
        if (!line.is("ADR")) continue;
        auto& address = contact.postalAddresses.emplace_back(addressOf(line));
        if (!address.isoCountryCode.empty() || line.group.empty()) continue;
        if (const auto country = countries.find(lowercase(line.group)); country != countries.end())
            address.isoCountryCode = country->second;
    }
    return contact;
}

VCard VCard::summary() const {
    std::vector<ContentLine> lines;
    bool hasPicture = false;
    for (const auto& line : m_lines) {
        if (line.is("PHOTO") && !line.value.empty() && !std::exchange(hasPicture, true))
            lines.push_back({"", "PHOTO", {}, "data:,"});
        for (const auto* name :
             {"UID", "FN", "N", "NICKNAME", "TITLE", "ORG", "TEL", "EMAIL", "BDAY", "ADR", "X-ABADR", "X-ABLabel"})
            if (line.is(name)) lines.push_back(line);
    }
    return VCard(std::move(lines));
}

void VCard::change(const Contact& contact) {
    const auto before = describe();
    const bool isRenamed = contact.familyName != before.familyName || contact.givenName != before.givenName ||
                           contact.middleName != before.middleName;
    const bool hasOrdinaryName = formattedName() == ordinaryName();
    if (isRenamed) {
        auto& name = findOrAdd("N");
        const auto write = [&](NamePart part, const std::string& wanted) {
            if (partOf(&name, part) != wanted) setPart(name, part, wanted);
        };
        write(family, contact.familyName);
        write(given, contact.givenName);
        write(additional, contact.middleName);
        if (split(name.value, ';').size() < 5) name.value += std::string(5 - split(name.value, ';').size(), ';');
    }
    if (contact.nickname != before.nickname) set("NICKNAME", escaped(contact.nickname));
    if (contact.organizationName != before.organizationName) {
        setPart(findOrAdd("ORG"), 0, contact.organizationName);
        if (find("ORG")->value.empty()) set("ORG", "");
    }
    if (contact.jobTitle != before.jobTitle) set("TITLE", escaped(contact.jobTitle));
    if (contact.phoneNumbers != before.phoneNumbers) setLabeledValues(m_lines, "TEL", contact.phoneNumbers);
    if (contact.emailAddresses != before.emailAddresses) setLabeledValues(m_lines, "EMAIL", contact.emailAddresses);
    if (contact.birthday != before.birthday) {
        std::erase_if(m_lines, [](const auto& line) { return line.is("BDAY"); });
        if (contact.birthday) set("BDAY", dayValue(*contact.birthday));
    }
    // The name that other programs show, unless the user chose it.
    if ((isRenamed || hasOrdinaryName) && formattedName() != ordinaryName())
        findOrAdd("FN").value = escaped(ordinaryName());
}

std::string VCard::formattedName() const {
    const auto* name = find("FN");
    return name ? unescaped(name->value) : std::string();
}

std::string VCard::ordinaryName() const {
    const auto* name = find("N");
    auto names = joinedNames({partOf(name, prefix), partOf(name, given), partOf(name, additional), partOf(name, family),
                              partOf(name, suffix)});
    return names.empty() ? nameWithoutN(describeAllButNames()) : names;
}

std::vector<std::string> VCard::categories() const {
    std::vector<std::string> found;
    for (const auto& line : m_lines) {
        if (!line.is("CATEGORIES")) continue;
        for (const auto& value : split(line.value, ',')) {
            const auto text = unescaped(value);
            std::string category(trim(text));
            if (!category.empty() && std::find(found.begin(), found.end(), category) == found.end())
                found.push_back(std::move(category));
        }
    }
    return found;
}

bool VCard::isGroup() const {
    for (const auto* property : {"KIND", "X-ADDRESSBOOKSERVER-KIND"})
        if (const auto* kind = find(property); kind && equalsIgnoringCase(trim(kind->value), "group")) return true;
    return false;
}

std::vector<std::string> VCard::members() const {
    std::vector<std::string> found;
    for (const auto& line : m_lines)
        if (line.is("MEMBER") || line.is("X-ADDRESSBOOKSERVER-MEMBER")) found.push_back(unescaped(line.value));
    return found;
}

const ContentLine* VCard::find(std::string_view name) const {
    const auto found = std::find_if(m_lines.begin(), m_lines.end(), [&](const auto& line) { return line.is(name); });
    return found == m_lines.end() ? nullptr : &*found;
}

ContentLine& VCard::findOrAdd(std::string_view name) {
    if (const auto* found = find(name)) return m_lines[static_cast<size_t>(found - m_lines.data())];
    return m_lines.emplace_back(ContentLine{"", std::string(name), {}, ""});
}

void VCard::set(std::string_view name, std::string value) {
    if (!value.empty()) {
        findOrAdd(name).value = std::move(value);
        return;
    }
    std::erase_if(m_lines, [&](const auto& line) { return line.is(name); });
}

std::string comparableUID(std::string_view uid) {
    constexpr std::string_view scheme = "urn:uuid:";
    auto plain = trim(uid);
    if (equalsIgnoringCase(plain.substr(0, scheme.size()), scheme)) plain.remove_prefix(scheme.size());
    const bool isUUID = plain.size() == 36 && plain.find_first_not_of("0123456789abcdefABCDEF-") == plain.npos;
    return isUUID ? lowercase(plain) : std::string(plain);
}

} // namespace bridge
