#include "bridges/contacts/contact_data_bridge.h"
#include "tests/app/import/import_site.h"
#include "tests/fakes/scripted_authorization.h"
#include "tests/support/public_data.h"

#include <gmock/gmock.h>

// Address books as widespread programs export them.

namespace bridge {
namespace {

class PublicContactFiles : public testing::Test {
protected:
    static std::vector<std::filesystem::path> all() {
        std::vector<std::filesystem::path> files;
        for (const auto& entry : std::filesystem::directory_iterator(publicData("vcf")))
            if (entry.is_regular_file()) files.push_back(entry.path());
        std::ranges::sort(files);
        return files;
    }
    std::vector<ContactDescriptor> search(std::optional<std::string> query, std::optional<std::string> group = {}) {
        return site.loop.runUntilDone(bridge.searchContacts({std::move(query), 500, std::move(group)}));
    }
    std::vector<std::string> families(const std::string& query) {
        std::vector<std::string> names;
        for (const auto& found : search(query))
            names.push_back(found.givenName + "|" + found.familyName);
        return names;
    }

    ImportSite site;
    ScriptedAuthorization authorization;
    ContactDataBridge bridge{site.contactStore, authorization};
};

TEST_F(PublicContactFiles, AreEachTakenInWhole) {
    REQUIRE_PUBLIC_DATA("vcf");
    size_t taken = 0;
    for (const auto& path : all()) {
        SCOPED_TRACE(path.filename());
        const auto written = lowercase(readFile(path));
        size_t cards = 0;
        for (auto place = written.find("end:vcard"); place != written.npos;
             place = written.find("end:vcard", place + 1))
            ++cards;
        const auto file = site.take(path);
        EXPECT_EQ(file.failure, std::nullopt);
        EXPECT_EQ(file.kind, FileKind::contacts);
        EXPECT_EQ(file.contacts.added, cards);
        for (const auto& problem : file.problems) {
            EXPECT_FALSE(problem.isLost) << problem.item << ": " << problem.reason;
            EXPECT_THAT(problem.reason, testing::HasSubstr("PHOTO")); // one of them is cut indeed
        }
        taken += cards;
    }
    EXPECT_EQ(search({}).size(), taken);
    EXPECT_GT(taken, 10u);
}

TEST_F(PublicContactFiles, HavePeopleWhoAreFoundByTheirNames) {
    REQUIRE_PUBLIC_DATA("vcf");
    for (const auto& path : all())
        site.take(path);
    for (const auto& contact : site.contacts())
        for (const auto& name : {contact.givenName, contact.familyName, contact.nickname, contact.organizationName}) {
            if (trim(name).empty()) continue;
            EXPECT_THAT(search(name), testing::Contains(testing::Field(&ContactDescriptor::id, contact.identifier)))
                << name;
        }
    EXPECT_THAT(families("doe john"), testing::Each("John|Doe"));
    EXPECT_EQ(families("doe john").size(), 3u);
    EXPECT_EQ(families("perr"), std::vector<std::string>{"Simon|Perreault"});
    EXPECT_EQ(families("Howes"), std::vector<std::string>{"Tim Howes|"});
    EXPECT_EQ(families("white"), std::vector<std::string>{"Doug|White"});
    EXPECT_THAT(families("n"), testing::IsSupersetOf({"|Ñ Ñ Ñ Ñ ", "Ñ Ñ Ñ |Ñ Ñ "}));
}

TEST_F(PublicContactFiles, FillTheirGroups) {
    REQUIRE_PUBLIC_DATA("vcf");
    for (const auto& path : all())
        site.take(path);
    std::map<std::string, size_t> members;
    for (const auto& group : site.loop.runUntilDone(bridge.listGroups()))
        members[group.name] = search({}, group.id).size();
    EXPECT_EQ(members, (std::map<std::string, size_t>{{"My Contacts", 5}, {"VIP", 1}}));
}

TEST_F(PublicContactFiles, AddNobodyWhenTheyComeAgain) {
    REQUIRE_PUBLIC_DATA("vcf");
    for (const auto& path : all())
        site.take(path);
    const auto before = search({});
    for (const auto& path : all()) {
        const auto again = site.take(path);
        EXPECT_EQ(again.kind, FileKind::contacts);
        EXPECT_EQ(again.contacts.added, 0u);
        EXPECT_GT(again.contacts.known, 0u);
    }
    EXPECT_EQ(search({}), before);
}

} // namespace
} // namespace bridge
