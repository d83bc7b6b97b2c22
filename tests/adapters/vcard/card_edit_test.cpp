#include "adapters/vcard/card_edit.h"

#include "adapters/vcard/vcard.h"
#include "base/platform_error.h"

#include <gmock/gmock.h>

namespace bridge {
namespace {

using testing::HasSubstr;
using testing::Not;

const std::string stored = "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:u\r\nN:Doe;John;;Mr.;Jr.\r\nFN:Johnny\r\n"
                           "X-SHOE;CHARSET=\"UTF-8\";X-ODD=\"a^nb\":4\\;4\r\nTEL;TYPE=WORK,VOICE;X-ID=7:1\r\n"
                           "item1.TEL:2\r\nitem1.X-ABLabel:boat\r\nNOTE:a\\, b\r\nTEL;TYPE=PREF,HOME:3\r\n"
                           "ADR;TYPE=home:;;1;;;;\r\nLABEL;TYPE=home:One\r\nPHOTO;VALUE=uri:file:///tmp/p\r\n"
                           "BDAY:1976-02-03\r\nX-EVOLUTION-ANNIVERSARY:2000-01-01\r\nno line at all\r\nEND:VCARD\r\n";

Contact described(const std::string& text) {
    return VCard::parse(text).describe();
}

std::string replaced(std::string text, const std::string& part, const std::string& by) {
    const auto place = text.find(part);
    if (place == text.npos) throw std::runtime_error("no " + part);
    return text.replace(place, part.size(), by);
}

std::string edited(const std::function<void(Contact&)>& edit) {
    auto contact = described(stored);
    edit(contact);
    return editedCard(stored, contact);
}

TEST(CardEdit, LeavesACardAloneThatDoesNotDiffer) {
    EXPECT_EQ(editedCard(stored, described(stored)), stored);
    auto otherAddress = described(stored);
    otherAddress.postalAddresses.clear();
    otherAddress.imageAvailable = false;
    EXPECT_EQ(editedCard(stored, otherAddress), stored);
}

TEST(CardEdit, ChangesTheLineOfTheFieldAlone) {
    EXPECT_EQ(edited([](Contact& contact) { contact.familyName = "Roe; x"; }),
              replaced(replaced(stored, "N:Doe;", "N:Roe\\; x;"), "FN:Johnny", "FN:Mr. John Roe\\; x Jr."));
    EXPECT_EQ(edited([](Contact& contact) {
                  contact.birthday = Birthday{1980, 3, 4};
              }),
              replaced(stored, "BDAY:1976-02-03", "BDAY:1980-03-04"));
    EXPECT_EQ(edited([](Contact& contact) {
                  contact.birthday = Birthday{std::nullopt, 3, 4};
              }),
              replaced(stored, "BDAY:1976-02-03", "BDAY:--0304"));
    EXPECT_EQ(edited([](Contact& contact) { contact.birthday.reset(); }), replaced(stored, "BDAY:1976-02-03\r\n", ""));
    EXPECT_EQ(edited([](Contact& contact) { contact.jobTitle = "Cook"; }),
              replaced(stored, "END:VCARD", "TITLE:Cook\r\nEND:VCARD"));
}

TEST(CardEdit, KeepsTheNumbersThatStayToTheLetter) {
    const auto text = edited([](Contact& contact) { contact.phoneNumbers.push_back({"home fax", "4"}); });
    for (const char* line : {"TEL;TYPE=WORK,VOICE;X-ID=7:1\r\n", "item1.TEL:2\r\n", "item1.X-ABLabel:boat\r\n",
                             "TEL;TYPE=PREF,HOME:3\r\n", "TEL;TYPE=home,fax:4\r\n"})
        EXPECT_THAT(text, HasSubstr(line));
    auto wanted = described(stored);
    wanted.phoneNumbers.push_back({"home fax", "4"});
    EXPECT_EQ(described(text), wanted);
}

TEST(CardEdit, WritesWhatVersion3Knows) {
    const auto text = edited([](Contact& contact) { contact.phoneNumbers[2].label = "mobile"; });
    EXPECT_THAT(text, HasSubstr("TEL;TYPE=cell,pref:3\r\n"));
    EXPECT_THAT(text, Not(HasSubstr("PREF=")));
    EXPECT_THAT(text, HasSubstr("VERSION:3.0\r\n"));
}

TEST(CardEdit, DropsTheLabelWithItsNumber) {
    const auto text = edited([](Contact& contact) { contact.phoneNumbers.erase(contact.phoneNumbers.begin() + 1); });
    EXPECT_THAT(text, Not(HasSubstr("item1")));
    EXPECT_EQ(described(text).phoneNumbers, (std::vector<LabeledValue>{{"work", "1"}, {"home", "3"}}));
}

TEST(CardEdit, KeepsTheVersionOfTheCard) {
    const std::string text = "BEGIN:VCARD\r\nVERSION:4.0\r\nUID:u\r\nFN:A\r\nTEL;PREF=1:1\r\nEND:VCARD\r\n";
    auto contact = described(text);
    contact.birthday = Birthday{1980, 3, 4};
    EXPECT_EQ(editedCard(text, contact), replaced(text, "END:", "BDAY:19800304\r\nEND:"));
}

TEST(CardEdit, MakesACardOfEveryField) {
    auto contact = described(stored);
    contact.imageAvailable = false;
    contact.nickname = "Nick, the; \\ \n";
    const auto text = newCard(contact, "an id");
    EXPECT_EQ(described(text), contact);
    EXPECT_EQ(VCard::parse(text).uid(), "an id");
    EXPECT_THAT(text, HasSubstr("VERSION:3.0\r\nUID:an id\r\n"));
    EXPECT_THAT(text, HasSubstr("BDAY:1976-02-03\r\n"));
}

TEST(CardEdit, OfWhatIsNoCardFails) {
    for (const std::string text : {"", "hello", "BEGIN:VCARD\r\nFN:A\r\n"})
        EXPECT_THROW(editedCard(text, Contact()), PlatformError);
}

} // namespace
} // namespace bridge
