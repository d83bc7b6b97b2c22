#include "adapters/gazetteer/gazetteer.h"

#include "tests/adapters/gazetteer/places_maker.h"
#include "tests/contracts/local_search_contract.h"

#include <filesystem>

namespace bridge {
namespace {

using testing::HasSubstr;

class GazetteerSite : public LocalSearchSite {
public:
    explicit GazetteerSite(const std::vector<WorldPlace>& world) {
        gazetteer::writePlaces(putPlaces(m_folder, world), m_folder.file("places.db"));
    }
    std::unique_ptr<LocalSearch> search(EventLoop& loop) override {
        return std::make_unique<Gazetteer>(loop, m_folder.file("places.db"));
    }
    std::unique_ptr<LocalSearch> searchWithoutService(EventLoop& loop) override {
        return std::make_unique<Gazetteer>(loop, m_folder.file("nothing.db"));
    }

private:
    TemporaryFolder m_folder;
};

const LocalSearchKind kind{"Gazetteer",
                           [](const std::vector<WorldPlace>& world) { return std::make_unique<GazetteerSite>(world); }};
INSTANTIATE_TEST_SUITE_P(Adapters, LocalSearchContract, testing::Values(kind), nameOf);

class GazetteerFile : public testing::Test {
protected:
    GazetteerFile() { gazetteer::writePlaces(putPlaces(folder, smallWorld()), path); }

    std::string failure() {
        Gazetteer gazetteer(loop, path);
        try {
            return std::to_string(loop.runUntilDone(gazetteer.search({"London", std::nullopt})).size()) + " found";
        } catch (const PlatformError& error) {
            return error.what();
        }
    }

    TemporaryFolder folder;
    std::string path = folder.file("odd ? name # 100%.db");
    EventLoop loop;
};

TEST_F(GazetteerFile, MayHaveAnyName) {
    EXPECT_EQ(failure(), "2 found");
}

TEST_F(GazetteerFile, TheHamletNextDoorIsFoundAmongHundredsOfTownsOfItsName) {
    std::vector<WorldPlace> world;
    for (int number = 0; number < 600; ++number)
        world.push_back({"San José", {}, "Far", "Chile", "CL", {-50 + number * 0.03, -70}, 100'000 + number});
    world.push_back({"San José", {}, "Near", "Spain", "ES", {36.76, -2.11}, 60});
    gazetteer::writePlaces(putPlaces(folder, world), path);
    Gazetteer gazetteer(loop, path);
    const auto items = loop.runUntilDone(gazetteer.search({"san jose", MapRegion{{36.8, -2.0}, 50'000, 50'000}}));
    ASSERT_EQ(items.size(), 25U);
    EXPECT_EQ(items[0].title, "San José, Near, Spain");
    EXPECT_EQ(items[1].title, "San José, Far, Chile");
}

TEST_F(GazetteerFile, ThatIsMissingIsToldWithAWayOut) {
    std::filesystem::remove(path);
    EXPECT_THAT(failure(), AllOf(HasSubstr(path), HasSubstr("Install Brindlefox Apple Bridge anew")));
}

TEST_F(GazetteerFile, ThatIsNoneIsAnError) {
    for (const std::string content : {"", "no database", "SQLite format 3"}) {
        putFile(path, content);
        EXPECT_THAT(failure(), HasSubstr("can't be used")) << content;
    }
    std::filesystem::remove(path);
    std::filesystem::create_directory(path);
    EXPECT_THAT(failure(), HasSubstr("can't be used"));
}

TEST_F(GazetteerFile, ThatIsNotWholeIsAnError) {
    const auto size = std::filesystem::file_size(path);
    for (const auto part : {size - 4096, size / 2, size / 4, std::uintmax_t{100}}) {
        std::filesystem::resize_file(path, part);
        EXPECT_THAT(failure(), HasSubstr("can't be used")) << part;
    }
}

TEST_F(GazetteerFile, OverwrittenInTheMiddleNeverCrashesTheBridge) {
    const std::string whole = [&] {
        std::ifstream file(path, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    }();
    for (size_t page = 1; page * 4096 < whole.size(); ++page) {
        auto damaged = whole;
        for (size_t index = page * 4096; index < std::min(whole.size(), (page + 1) * 4096); ++index)
            damaged[index] = static_cast<char>(index * 31);
        putFile(path, damaged);
        EXPECT_THAT(failure(), testing::AnyOf(HasSubstr("can't be used"), HasSubstr("found"))) << page;
    }
}

TEST_F(GazetteerFile, IsLookedForAgainAfterAFailure) {
    std::filesystem::rename(path, path + ".away");
    Gazetteer gazetteer(loop, path);
    EXPECT_THROW(loop.runUntilDone(gazetteer.search({"London", std::nullopt})), PlatformError);
    std::filesystem::rename(path + ".away", path);
    EXPECT_EQ(loop.runUntilDone(gazetteer.search({"London", std::nullopt})).size(), 2U);
}

TEST_F(GazetteerFile, IsNotTouchedBySearching) {
    const auto before = std::filesystem::last_write_time(path);
    failure();
    EXPECT_EQ(std::filesystem::last_write_time(path), before);
    EXPECT_FALSE(std::filesystem::exists(path + "-wal"));
    EXPECT_FALSE(std::filesystem::exists(path + "-journal"));
}

} // namespace
} // namespace bridge
