#include "adapters/gazetteer/gazetteer.h"

#include "base/event_loop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace bridge {
namespace {

constexpr MapCoordinate munich{48.137, 11.575};
constexpr MapCoordinate dallas{32.78, -96.8};
constexpr MapCoordinate torontoRegion{43.0, -81.2};
constexpr MapCoordinate newYork{40.71, -74.0};
constexpr MapCoordinate tokyo{35.68, 139.69};
constexpr MapCoordinate fiji{-17.8, 179.9};

struct Asked {
    std::string query;
    std::string first; // the title of the first answer
    std::optional<MapCoordinate> near = std::nullopt;
};

void PrintTo(const Asked& asked, std::ostream* out) {
    *out << asked.query << (asked.near ? " (near)" : "");
}

// With the very file that people get.
class World : public testing::TestWithParam<Asked> {
protected:
    std::vector<MapItem> search(const std::string& query, std::optional<MapCoordinate> near = std::nullopt) {
        std::optional<MapRegion> region;
        if (near) region = MapRegion{*near, 50'000, 50'000};
        return loop.runUntilDone(gazetteer.search({query, region}));
    }

    EventLoop loop;
    Gazetteer gazetteer{loop, BRIDGE_PLACES};
};

TEST_P(World, AnswersFirstWithWhatIsMeant) {
    const auto items = search(GetParam().query, GetParam().near);
    ASSERT_FALSE(items.empty());
    EXPECT_EQ(items.front().title, GetParam().first);
}

INSTANTIATE_TEST_SUITE_P(
    Gazetteer, World,
    testing::Values(
        Asked{"London", "London, England, United Kingdom"}, Asked{"london", "London, England, United Kingdom"},
        Asked{"LONDON", "London, England, United Kingdom"}, Asked{"Paris", "Paris, Île-de-France, France"},
        Asked{"München", "Munich, Bavaria, Germany"}, Asked{"Munchen", "Munich, Bavaria, Germany"},
        Asked{"Muenchen", "Munich, Bavaria, Germany"}, Asked{"Sao Paulo", "São Paulo, Brazil"},
        Asked{"São Paulo", "São Paulo, Brazil"}, Asked{"Köln", "Köln, North Rhine-Westphalia, Germany"},
        Asked{"Cologne", "Köln, North Rhine-Westphalia, Germany"}, Asked{"Łódź", "Łódź, Łódź Voivodeship, Poland"},
        Asked{"Lodz", "Łódź, Łódź Voivodeship, Poland"}, Asked{"Malmo", "Malmö, Skåne, Sweden"},
        Asked{"東京", "Tokyo, Japan"}, Asked{"東京都", "Tokyo, Japan"}, Asked{"日本東京", "Tokyo, Japan"},
        Asked{"北京市", "Beijing, China"}, Asked{"서울", "Seoul, South Korea"}, Asked{"Москва", "Moscow, Russia"},
        Asked{"القاهرة", "Cairo, Egypt"}, Asked{"Αθήνα", "Athens, Attica, Greece"},
        Asked{"תל אביב", "Tel Aviv, Israel"}, Asked{"दिल्ली", "Delhi, India"},
        Asked{"กรุงเทพมหานคร", "Bangkok, Thailand"}, Asked{"İstanbul", "Istanbul, Turkey"},
        Asked{"ISTANBUL", "Istanbul, Turkey"}, Asked{"Paris, Texas", "Paris, Texas, United States"},
        Asked{"Paris Texas", "Paris, Texas, United States"}, Asked{"Paris, TX, USA", "Paris, Texas, United States"},
        Asked{"Paris, Frankreich", "Paris, Île-de-France, France"},
        Asked{"Springfield Illinois", "Springfield, Illinois, United States"},
        Asked{"Springfield, Mass", "Springfield, Massachusetts, United States"},
        Asked{"Cambridge, MA", "Cambridge, Massachusetts, United States"},
        Asked{"Cambridge", "Cambridge, England, United Kingdom"},
        Asked{"Frankfurt", "Frankfurt am Main, Hesse, Germany"},
        Asked{"Frankfurt, Deutschland", "Frankfurt am Main, Hesse, Germany"},
        Asked{"Deutschland Frankfurt", "Frankfurt am Main, Hesse, Germany"},
        Asked{"Frankfurt Oder", "Frankfurt (Oder), Brandenburg, Germany"},
        Asked{"London, Ontario", "London, Ontario, Canada"}, Asked{"London ON", "London, Ontario, Canada"},
        Asked{"Newcastle NSW", "Newcastle, New South Wales, Australia"},
        Asked{"New York", "New York City, New York, United States"},
        Asked{"newyork", "New York City, New York, United States"}, Asked{"York", "York, England, United Kingdom"},
        Asked{"Washington, D.C.", "Washington, District of Columbia, United States"},
        Asked{"L'Aquila", "L'Aquila, Abruzzo, Italy"}, Asked{"St. Louis", "St. Louis, Missouri, United States"},
        Asked{"san francis", "San Francisco, California, United States"}, Asked{"Singapore", "Singapore"},
        Asked{"Stratford upon Avon", "Stratford-upon-Avon, England, United Kingdom"},
        Asked{"80331 München, Germany", "Munich, Bavaria, Germany"},
        Asked{"München, Bayern", "Munich, Bavaria, Germany"},
        Asked{"Germany, Berlin", "Berlin, State of Berlin, Germany"},
        Asked{"Paris", "Paris, Texas, United States", dallas},
        Asked{"London", "London, Ontario, Canada", torontoRegion},
        Asked{"London", "London, England, United Kingdom", tokyo},
        Asked{"London", "London, England, United Kingdom", munich},
        Asked{"York", "New York City, New York, United States", newYork}, Asked{"Tōkyō", "Tokyo, Japan", munich},
        Asked{"Suva", "Suva, Central, Fiji", fiji}));

} // namespace
} // namespace bridge
