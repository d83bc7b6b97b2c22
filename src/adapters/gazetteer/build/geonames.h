#pragma once

#include "platform/local_search.h"

#include <cstdint>
#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace bridge::gazetteer {

// What is in a file is not what it should be. Says which file, and which line where there are lines.
class InputError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// A line of GeoNames' table of cities.
struct GeoName {
    int64_t id = 0;
    std::string name;
    std::vector<std::string> otherNames;
    MapCoordinate coordinate;
    std::string kind;       // PPLC is a capital, PPLX a part of a town
    std::string country;    // two letters
    std::string region;     // "US.MA"; empty where it has none
    std::string county;     // "US.MA.025"
    int64_t population = 0; // 0 where nobody knows
};

std::vector<GeoName> readGeoNames(const std::string& path);

// What regions and counties are called in English, by codes such as US.MA.
std::map<std::string, std::string> readDivisions(const std::string& path);

} // namespace bridge::gazetteer
