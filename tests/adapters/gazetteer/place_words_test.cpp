#include "adapters/gazetteer/place_words.h"

#include "adapters/gazetteer/cells.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace bridge::gazetteer {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

TEST(PlaceWords, KnowNeitherCaseNorAccentsNorWidth) {
    EXPECT_THAT(placeWords("Saint-Étienne"), ElementsAre("saint", "etienne"));
    EXPECT_THAT(placeWords("ＴＯＫＹＯ"), ElementsAre("tokyo"));
    EXPECT_THAT(placeWords("Łódź"), ElementsAre("lodz"));
    EXPECT_THAT(placeWords("Tromsø"), ElementsAre("tromso"));
    EXPECT_THAT(placeWords("Gießen"), ElementsAre("giessen"));
}

TEST(PlaceWords, AreTheSameInTurkishAndElsewhere) {
    EXPECT_THAT(placeWords("İSTANBUL"), ElementsAre("istanbul"));
    EXPECT_THAT(placeWords("Diyarbakır"), ElementsAre("diyarbakir"));
}

TEST(PlaceWords, HoldNothingThatAnExpressionCouldMean) {
    EXPECT_THAT(placeWords("\"a\" * (b) c:d ^e +f {g} -h \x01 i'j"),
                ElementsAre("a", "b", "c", "d", "e", "f", "g", "h", "i", "j"));
    EXPECT_THAT(placeWords(" \t\n!?\"*🦊"), IsEmpty());
}

TEST(PlaceWords, ReplaceWhatIsNotUTF8) {
    EXPECT_THAT(placeWords("a\xff\xfe"
                           "b"),
                ElementsAre("a", "b"));
}

TEST(PlaceWords, KeepTheVowelsOfScriptsThatWriteThemAsMarks) {
    EXPECT_EQ(placeWords("दिल्ली").size(), 1U);
}

TEST(Cells, SurroundWhatTheyShould) {
    const MapCoordinate munich{48.137, 11.575};
    EXPECT_THAT(cellsAround(munich, 75'000), Contains(cellAt({48.7, 11.0})));
    EXPECT_THAT(cellsAround(munich, 75'000), Not(Contains(cellAt({52.5, 13.4}))));
    EXPECT_THAT(cellsAround(munich, 600'000), Contains(cellAt({52.5, 13.4})));
}

TEST(Cells, MeetAtTheDateLineAndStayFewAtThePoles) {
    EXPECT_THAT(cellsAround({-17.8, 179.9}, 75'000), Contains(cellAt({-17.5, -179.8})));
    EXPECT_THAT(cellsAround({-17.8, -180}, 75'000), Contains(cellAt({-17.8, 180})));
    for (const double pole : {90.0, -90.0})
        EXPECT_LT(cellsAround({pole, 0}, 150'000).size(), 100U);
}

TEST(Cells, DistancesAreThoseOfTheGlobe) {
    EXPECT_NEAR(kilometersBetween({51.5, -0.1}, {48.9, 2.3}), 335, 10);
    EXPECT_NEAR(kilometersBetween({0, 179}, {0, -179}), 222, 1);
    EXPECT_NEAR(kilometersBetween({90, 0}, {-90, 0}), 20015, 1);
}

} // namespace
} // namespace bridge::gazetteer
