#pragma once

// The tests of the contract stand here: one file of a program includes this and names its adapters.

#include "tests/contracts/local_search_fixture.h"

namespace bridge {

TEST_P(LocalSearchContract, SaysWhatAndWhereAPlaceIs) {
    const auto items = search("Munich");
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items[0].name, "Munich");
    EXPECT_EQ(items[0].title, "Munich, Bavaria, Germany");
    EXPECT_EQ(items[0].coordinate, (MapCoordinate{48.13743, 11.57549}));
}

TEST_P(LocalSearchContract, NeitherCaseNorAccentsMatter) {
    for (const auto* query : {"MÜNCHEN", "münchen", "Munchen", "monaco di baviera"})
        EXPECT_EQ(first(query), "Munich, Bavaria, Germany") << query;
    EXPECT_THAT(first("sao paulo"), testing::StartsWith("São Paulo"));
}

TEST_P(LocalSearchContract, FindsNamesInOtherScripts) {
    EXPECT_THAT(first("東京"), testing::StartsWith("Tokyo"));
    EXPECT_THAT(first("Лондон"), testing::StartsWith("London, England"));
    EXPECT_THAT(first("القاهرة"), testing::StartsWith("Cairo"));
}

TEST_P(LocalSearchContract, TheMoreRelevantComesFirst) {
    const auto items = search("London");
    ASSERT_EQ(items.size(), 2U);
    EXPECT_EQ(items[0].title, "London, England, United Kingdom");
    EXPECT_EQ(items[1].title, "London, Ontario, Canada");
}

TEST_P(LocalSearchContract, ARegionBehindTheNameTellsWhich) {
    EXPECT_EQ(first("Paris, Texas"), "Paris, Texas, United States");
    EXPECT_EQ(first("Paris, France"), "Paris, Île-de-France, France");
}

TEST_P(LocalSearchContract, FavoursWhatIsNear) {
    EXPECT_EQ(first("London", MapCoordinate{43, -81}), "London, Ontario, Canada");
    EXPECT_EQ(first("Paris", MapCoordinate{33.5, -95.5}), "Paris, Texas, United States");
}

TEST_P(LocalSearchContract, WhatIsFarIsNotLeftOut) {
    EXPECT_EQ(search("London", MapCoordinate{43, -81}).size(), 2U);
    EXPECT_EQ(first("London", MapCoordinate{-23.5, -46.6}), "London, England, United Kingdom");
}

TEST_P(LocalSearchContract, ARegionMayBeAnywhere) {
    for (const auto center :
         {MapCoordinate{90, 0}, MapCoordinate{-90, 180}, MapCoordinate{0, -180}, MapCoordinate{0, 180}})
        EXPECT_EQ(search("Munich", center).size(), 1U);
}

TEST_P(LocalSearchContract, BringsTwentyFiveWhenThereAreMore) {
    EXPECT_EQ(search("Springfield").size(), 25U);
    EXPECT_EQ(search("Springfield", MapCoordinate{35, -110}).size(), 25U);
}

TEST_P(LocalSearchContract, NoSuchPlaceIsAnEmptyList) {
    EXPECT_THAT(search("Nowhere-upon-Nothing"), testing::IsEmpty());
    EXPECT_THAT(search("London, Nowhere-upon-Nothing, Ontario, Egypt, Texas"), testing::IsEmpty());
}

TEST_P(LocalSearchContract, SignsAloneAreNoPlace) {
    for (const auto* query : {"!", "...", "\"", "*", "\"\"", "(", "%", "&", "-", ":", "'; --", "🦊"})
        EXPECT_THAT(search(query), testing::IsEmpty()) << query;
}

TEST_P(LocalSearchContract, NothingInAQueryIsACommand) {
    for (const auto* query : {"\"London\"", "London*", "(London)", "London;", "whole:London", "London\" OR \"Paris",
                              "London NEAR Paris", "NOT London", "London' OR 1=1 --", "London&limit=1", "London#",
                              "Lon\tdon", "{words} : London", "^London", "London + Paris", "%4c%6f", "\x01London\x7f"})
        EXPECT_NO_THROW(search(query)) << query;
    EXPECT_EQ(first("\"London\""), "London, England, United Kingdom");
    EXPECT_EQ(first("(London)"), "London, England, United Kingdom");
    EXPECT_THAT(search("London\" OR \"Paris"), testing::IsEmpty());
    EXPECT_THAT(search("London NEAR Paris"), testing::IsEmpty());
}

TEST_P(LocalSearchContract, AVeryLongQueryIsAQueryToo) {
    EXPECT_THAT(search(std::string(10'000, 'x')), testing::IsEmpty());
    std::string words;
    while (words.size() < 10'000)
        words += "London, \"Paris* ";
    EXPECT_THAT(search(words), testing::IsEmpty());
}

TEST_P(LocalSearchContract, SearchesAtOnceAreAllAnswered) {
    std::vector<Task<std::vector<MapItem>>> tasks;
    for (int number = 0; number < 5; ++number) {
        tasks.push_back(places->search({"Munich", std::nullopt}));
        tasks.back().start();
    }
    for (auto& task : tasks) {
        while (!task.done())
            loop.waitOnce();
        EXPECT_EQ(task.take().size(), 1U);
    }
}

TEST_P(LocalSearchContract, ADroppedSearchLeavesTheNextAlone) {
    {
        auto dropped = places->search({"London", std::nullopt});
        dropped.start();
    }
    EXPECT_EQ(search("Munich").size(), 1U);
}

TEST_P(LocalSearchContract, WithoutItsServiceEverySearchFailsInWords) {
    const auto lost = site->searchWithoutService(loop);
    for (int attempt = 0; attempt < 2; ++attempt)
        try {
            loop.runUntilDone(lost->search({"London", std::nullopt}));
            ADD_FAILURE() << "no error";
        } catch (const PlatformError& error) {
            EXPECT_THAT(error.what(), testing::HasSubstr("places"));
        }
}

TEST_P(LocalSearchContract, SaysWhoseDataItIs) {
    EXPECT_THAT(places->description(),
                testing::AnyOf(testing::HasSubstr("GeoNames"), testing::HasSubstr("OpenStreetMap")));
}

} // namespace bridge
