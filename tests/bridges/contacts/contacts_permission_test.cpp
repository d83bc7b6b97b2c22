#include "tests/bridges/contacts/every_operation.h"

namespace bridge {
namespace {

class ContactsPermission : public EveryOperation {};

TEST_P(ContactsPermission, IsAskedForFirstOfAll) {
    const auto before = begin();
    // Not determined, restricted, denied, two numbers that mean nothing, and no contacts here at all.
    for (const std::optional<int> status : {std::optional(0), std::optional(1), std::optional(2), std::optional(5),
                                            std::optional(-1), std::optional<int>()}) {
        authorization.statuses[PrivacyService::contacts] = status;
        EXPECT_EQ(failure(), "Full access to Contacts has not been granted.");
        EXPECT_EQ(failureOfNonsense(), "Full access to Contacts has not been granted.");
    }
    EXPECT_TRUE(store.calls.empty());
    EXPECT_EQ(book.state(), before);
}

TEST_P(ContactsPermission, IsEnoughWhereTheUserPickedSomeContacts) {
    authorization.statuses[PrivacyService::contacts] = 4;
    EXPECT_EQ(failure(), "");
}

TEST_P(ContactsPermission, IsReadAfreshEachTime) {
    authorization.statuses[PrivacyService::contacts] = 2;
    EXPECT_NE(failure(), "");
    authorization.statuses[PrivacyService::contacts] = 3;
    EXPECT_EQ(failure(), "");
}

TEST_P(ContactsPermission, IsNoOtherServices) {
    for (const auto service :
         {PrivacyService::calendar, PrivacyService::reminders, PrivacyService::music, PrivacyService::location})
        authorization.statuses[service] = 2;
    EXPECT_EQ(failure(), "");
}

FOR_EVERY_OPERATION(ContactsPermission);

} // namespace
} // namespace bridge
