#pragma once

#include "adapters/gazetteer/build/places_writer.h"
#include "tests/contracts/local_search_fixture.h"
#include "tests/support/temporary_folder.h"

#include <fmt/format.h>
#include <map>
#include <string>
#include <vector>

namespace bridge {

// A line of GeoNames' table.
inline std::string lineOf(const WorldPlace& place, size_t number, const std::string& region) {
    std::string others;
    for (const auto& name : place.otherNames)
        others += (others.empty() ? "" : ",") + name;
    return fmt::format("{}\t{}\t{}\t{}\t{}\t{}\tP\tPPL\t{}\t\t{}\t\t\t\t{}\t\t\tEurope/Berlin\t2024-01-01\n", number,
                       place.name, place.name, others, place.coordinate.latitude, place.coordinate.longitude,
                       place.countryCode, region, place.population);
}

// The files that the places of that world would come in.
inline gazetteer::PlacesInput putPlaces(const TemporaryFolder& folder, const std::vector<WorldPlace>& world) {
    std::map<std::string, std::string> regions;
    std::string cities;
    std::string names;
    for (size_t index = 0; index < world.size(); ++index) {
        const auto& place = world[index];
        const auto [region, isNew] = regions.emplace(place.region, fmt::format("{:02}", regions.size()));
        if (isNew)
            names += fmt::format("{}{{\"code\":\"{}.{}\",\"name\":\"{}\"}}", names.empty() ? "" : ",",
                                 place.countryCode, region->second, place.region);
        cities += lineOf(place, index + 1, region->second);
    }
    putFile(folder / "cities.txt", cities);
    putFile(folder / "regions.json", "[" + names + "]");
    putFile(folder / "divisions.json", "[]");
    return {folder.file("cities.txt"), folder.file("regions.json"), folder.file("divisions.json")};
}

} // namespace bridge
