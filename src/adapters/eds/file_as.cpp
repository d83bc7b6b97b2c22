#include "adapters/eds/file_as.h"

#include "adapters/vcard/card_text.h"

#include <array>

namespace bridge {

using namespace vcard;

namespace {

std::string joinedNames(const std::string& one, const char* separator, const std::string& other) {
    return one + (one.empty() || other.empty() ? "" : separator) + other;
}

// The forms that programs offer.
using Form = std::string (*)(const Contact&);
constexpr std::array<Form, 6> forms{
    [](const Contact& contact) { return joinedNames(contact.familyName, ", ", contact.givenName); },
    [](const Contact& contact) {
        return joinedNames(contact.familyName, ", ", joinedNames(contact.givenName, " ", contact.middleName));
    },
    [](const Contact& contact) { return joinedNames(contact.givenName, " ", contact.familyName); },
    [](const Contact& contact) {
        return joinedNames(joinedNames(contact.givenName, " ", contact.middleName), " ", contact.familyName);
    },
    [](const Contact& contact) { return contact.nickname; },
    [](const Contact& contact) { return contact.organizationName; },
};

} // namespace

std::string refiledCard(const std::string& text, const Contact& before, const Contact& after) {
    constexpr auto property = "X-EVOLUTION-FILE-AS";
    auto card = CardText::parse(text);
    const auto* line = card.find(property);
    const auto filed = line ? unescaped(line->value) : std::string();
    if (filed.empty()) return text;
    for (const auto form : forms) {
        if (form(before) != filed) continue;
        const auto wanted = form(after);
        if (wanted == filed || wanted.empty()) return text;
        auto changed = *line;
        changed.value = escaped(wanted);
        card.replace(property, {CardText::lineOf(std::move(changed))});
        return card.text();
    }
    return text;
}

} // namespace bridge
