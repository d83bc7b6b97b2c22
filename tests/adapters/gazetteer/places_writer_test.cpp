#include "adapters/gazetteer/build/places_writer.h"

#include "adapters/gazetteer/place_file.h"
#include "tests/adapters/gazetteer/places_maker.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <sqlite3.h>

namespace bridge::gazetteer {
namespace {

using testing::HasSubstr;

class PlacesWriter : public testing::Test {
protected:
    std::string content(const std::string& name) const {
        std::ifstream file(folder.file(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    void put(const std::string& name, const std::string& text) const { putFile(folder / name, text); }
    std::string failure() const {
        try {
            writePlaces(input, output);
            return "none";
        } catch (const InputError& error) {
            return error.what();
        }
    }
    size_t fileCount() const {
        return static_cast<size_t>(std::distance(std::filesystem::directory_iterator(folder.path()), {}));
    }

    TemporaryFolder folder;
    PlacesInput input = putPlaces(folder, smallWorld());
    std::string output = folder.file("places.db");
};

TEST_F(PlacesWriter, WritesEveryPlaceOnce) {
    EXPECT_EQ(writePlaces(input, output), smallWorld().size());
    sqlite3* handle = nullptr;
    ASSERT_EQ(sqlite3_open_v2(output.c_str(), &handle, SQLITE_OPEN_READONLY, nullptr), SQLITE_OK);
    const DatabasePointer database(handle);
    Statement places(handle, "SELECT count(*) FROM place");
    ASSERT_TRUE(places.step());
    EXPECT_EQ(places.integer(0), static_cast<int64_t>(smallWorld().size()));
    Statement inUnitedStates(handle, "SELECT count(*) FROM lookup WHERE lookup MATCH 'lies : \"us\"'");
    ASSERT_TRUE(inUnitedStates.step());
    EXPECT_EQ(inUnitedStates.integer(0), 41);
    Statement integrity(handle, "PRAGMA integrity_check");
    ASSERT_TRUE(integrity.step());
    EXPECT_EQ(integrity.text(0), "ok");
}

TEST_F(PlacesWriter, WritesTheSameBytesForTheSameInput) {
    writePlaces(input, output);
    writePlaces(input, folder.file("again.db"));
    EXPECT_TRUE(content("places.db") == content("again.db"));
}

TEST_F(PlacesWriter, ALineThatIsBrokenIsNamed) {
    const auto good = content("cities.txt");
    const struct {
        std::string line;
        std::string complaint;
    } cases[]{
        {"too\tfew\tcolumns", "it has 3 columns, not 19"},
        {"", "it has 1 columns"},
        {"1\tA\tA\t\tnorth\t1\tP\tPPL\tDE\t\t\t\t\t\t5\t\t\t\t", "the latitude is \"north\""},
        {"1\tA\tA\t\t91\t1\tP\tPPL\tDE\t\t\t\t\t\t5\t\t\t\t", "the latitude is \"91\""},
        {"1\tA\tA\t\tnan\t1\tP\tPPL\tDE\t\t\t\t\t\t5\t\t\t\t", "the latitude is \"nan\""},
        {"1\tA\tA\t\t1\t-181\tP\tPPL\tDE\t\t\t\t\t\t5\t\t\t\t", "the longitude is \"-181\""},
        {"1\tA\tA\t\t1\t1\tP\tPPL\tDE\t\t\t\t\t\tmany\t\t\t\t", "the population is \"many\""},
        {"1\tA\tA\t\t1\t1\tP\tPPL\tDE\t\t\t\t\t\t-5\t\t\t\t", "the population is \"-5\""},
        {"1\tA\tA\t\t1\t1\tP\tPPL\tGermany\t\t\t\t\t\t5\t\t\t\t", "the country is \"Germany\""},
        {"x\tA\tA\t\t1\t1\tP\tPPL\tDE\t\t\t\t\t\t5\t\t\t\t", "the number is \"x\""},
        {"1\t\tA\t\t1\t1\tP\tPPL\tDE\t\t\t\t\t\t5\t\t\t\t", "it has no name"},
        {"1\t\xff\tA\t\t1\t1\tP\tPPL\tDE\t\t\t\t\t\t5\t\t\t\t", "it is not UTF-8"},
    };
    const auto line = smallWorld().size() + 1;
    for (const auto& one : cases) {
        put("cities.txt", good + one.line + "\n" + good);
        EXPECT_THAT(failure(), AllOf(HasSubstr("cities.txt:" + std::to_string(line) + ": "), HasSubstr(one.complaint)));
    }
}

TEST_F(PlacesWriter, FilesThatAreMissingOrEmptyAreNamed) {
    put("cities.txt", "");
    EXPECT_THAT(failure(), HasSubstr("cities.txt is empty"));
    input.cities = folder.file("nothing");
    EXPECT_THAT(failure(), HasSubstr("nothing can't be read"));
}

TEST_F(PlacesWriter, RegionsThatAreNoneAreNamed) {
    for (const auto* text :
         {"", "{}", "[1]", "[{\"code\":\"US.MA\"}]", "[{\"code\":\"US.MA\",\"name\":5}]", "[", "[{]"}) {
        put("regions.json", text);
        EXPECT_THAT(failure(), HasSubstr("regions.json")) << text;
    }
}

TEST_F(PlacesWriter, AFailureLeavesWhatWasThereAndNothingElse) {
    put("places.db", "the old one");
    const auto before = fileCount();
    put("regions.json", "[");
    EXPECT_NE(failure(), "none");
    EXPECT_EQ(content("places.db"), "the old one");
    EXPECT_EQ(fileCount(), before);
}

TEST_F(PlacesWriter, LeavesNothingBesideTheFile) {
    const auto before = fileCount();
    writePlaces(input, output);
    EXPECT_EQ(fileCount(), before + 1);
}

TEST_F(PlacesWriter, AFolderThatIsNotThereIsAnError) {
    EXPECT_THROW(writePlaces(input, folder.file("nowhere/places.db")), std::runtime_error);
}

} // namespace
} // namespace bridge::gazetteer
