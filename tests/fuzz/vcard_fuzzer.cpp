#include "adapters/vcard/vcard_file.h"
#include "base/platform_error.h"
#include "base/text.h"
#include "tests/fuzz/fuzz.h"

namespace bridge {

namespace {

VCardFile read(std::string_view input) {
    try {
        return readVCardFile(input);
    } catch (const PlatformError&) {
        return {};
    }
}

void check(const VCard& card) {
    const auto text = card.text();
    must(isUTF8(text));
    // What is stored says the same when it is read again, and so does its summary.
    const auto again = VCard::parse(text);
    must(again == card && again.text() == text);
    const auto contact = card.describe();
    must(VCard::parse(card.summary().text()).describe() == contact);

    auto changed = card;
    changed.change(contact);
    must(changed == card);
    auto wanted = contact;
    wanted.givenName = contact.familyName + "x";
    wanted.organizationName.clear();
    wanted.phoneNumbers.insert(wanted.phoneNumbers.begin(), {"a label", "\r\n;,\\"});
    wanted.emailAddresses.clear();
    wanted.birthday = Birthday{std::nullopt, 2, 29};
    changed.change(wanted);
    wanted.phoneNumbers.front().value = "\n;,\\";
    must(changed.describe() == wanted);
    must(VCard::parse(changed.text()).describe() == wanted);
}

} // namespace

void fuzz(std::string_view input) {
    const auto file = read(input);
    must(read(input).cards == file.cards);
    for (const auto& card : file.cards)
        check(card);
    for (const auto& group : file.groups)
        for (const size_t member : group.members)
            must(member < file.cards.size());
    for (const auto& problem : file.problems)
        must(!problem.item.empty() && !problem.reason.empty());
}

} // namespace bridge
