#pragma once

#include "base/event_loop.h"
#include "base/platform_error.h"
#include "platform/local_search.h"

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace bridge {

// A place of the small world in which an adapter is tested.
struct WorldPlace {
    std::string name;
    std::vector<std::string> otherNames;
    std::string region; // as it is shown
    std::string country;
    std::string countryCode;
    MapCoordinate coordinate;
    int64_t population = 0;
};

// What the contract needs of one adapter.
struct LocalSearchSite {
    virtual ~LocalSearchSite() = default;
    virtual std::unique_ptr<LocalSearch> search(EventLoop& loop) = 0;
    // One whose service or file is not there.
    virtual std::unique_ptr<LocalSearch> searchWithoutService(EventLoop& loop) = 0;
};

struct LocalSearchKind {
    std::string name;
    std::function<std::unique_ptr<LocalSearchSite>(const std::vector<WorldPlace>&)> make;
};

inline void PrintTo(const LocalSearchKind& kind, std::ostream* out) {
    *out << kind.name;
}

inline std::string nameOf(const testing::TestParamInfo<LocalSearchKind>& info) {
    return info.param.name;
}

inline std::vector<WorldPlace> smallWorld() {
    std::vector<WorldPlace> world{
        {"London", {"Londres", "Лондон", "ロンドン"}, "England", "United Kingdom", "GB", {51.50853, -0.12574}, 8961989},
        {"London", {}, "Ontario", "Canada", "CA", {42.98339, -81.23304}, 346765},
        {"Paris", {"パリ", "Париж"}, "Île-de-France", "France", "FR", {48.85341, 2.3488}, 2138551},
        {"Paris", {}, "Texas", "United States", "US", {33.66094, -95.55551}, 24171},
        {"Munich",
         {"München", "Muenchen", "Monaco di Baviera"},
         "Bavaria",
         "Germany",
         "DE",
         {48.13743, 11.57549},
         1260391},
        {"São Paulo", {"Sao Paulo"}, "São Paulo", "Brazil", "BR", {-23.5475, -46.63611}, 12400232},
        {"Tokyo", {"東京", "Tōkyō"}, "Tokyo", "Japan", "JP", {35.6895, 139.69171}, 8336599},
        {"Cairo", {"القاهرة"}, "Cairo Governorate", "Egypt", "EG", {30.06263, 31.24967}, 9606916},
    };
    for (int number = 0; number < 40; ++number)
        world.push_back({"Springfield",
                         {},
                         "State " + std::to_string(number),
                         "United States",
                         "US",
                         {30 + number * 0.25, -120 + number * 0.5},
                         1000 + number});
    return world;
}

class LocalSearchContract : public testing::TestWithParam<LocalSearchKind> {
protected:
    std::vector<MapItem> search(const std::string& query, std::optional<MapCoordinate> near = std::nullopt) {
        std::optional<MapRegion> region;
        if (near) region = MapRegion{*near, 50'000, 50'000};
        return loop.runUntilDone(places->search({query, region}));
    }
    std::string first(const std::string& query, std::optional<MapCoordinate> near = std::nullopt) {
        const auto items = search(query, near);
        return items.empty() ? "nothing" : items.front().title.value_or("no title");
    }

    EventLoop loop;
    std::unique_ptr<LocalSearchSite> site = GetParam().make(smallWorld());
    std::unique_ptr<LocalSearch> places = site->search(loop);
};
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(LocalSearchContract);

} // namespace bridge
