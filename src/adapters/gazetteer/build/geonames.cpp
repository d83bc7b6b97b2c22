#include "adapters/gazetteer/build/geonames.h"

#include "base/json_value.h"
#include "base/text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <fmt/format.h>
#include <fstream>
#include <sstream>

namespace bridge::gazetteer {

namespace {

// Of GeoNames' table, by place.
enum Column : size_t { id, name, asciiName, otherNames, latitude, longitude, kind = 7, country, region = 10, county };
constexpr size_t populationColumn = 14;
constexpr size_t columnCount = 19;

std::ifstream opened(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw InputError(fmt::format("{} can't be read.", path));
    return file;
}

template <typename Number> Number number(std::string_view text, const char* what) {
    Number value{};
    const auto [end, problem] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (problem != std::errc() || end != text.data() + text.size())
        throw InputError(fmt::format("the {} is \"{}\"", what, text));
    return value;
}

double angle(std::string_view text, double most, const char* what) {
    const auto value = number<double>(text, what);
    if (!(std::abs(value) <= most)) throw InputError(fmt::format("the {} is \"{}\"", what, text));
    return value;
}

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    while (true) {
        const auto end = text.find(separator);
        parts.push_back(text.substr(0, end));
        if (end == text.npos) return parts;
        text.remove_prefix(end + 1);
    }
}

GeoName placeIn(std::string_view line) {
    if (!isUTF8(line)) throw InputError("it is not UTF-8");
    const auto columns = split(line, '\t');
    if (columns.size() != columnCount)
        throw InputError(fmt::format("it has {} columns, not {}", columns.size(), columnCount));
    GeoName place;
    place.id = number<int64_t>(columns[id], "number");
    place.name = columns[name];
    if (place.name.empty()) throw InputError("it has no name");
    place.otherNames.emplace_back(columns[asciiName]);
    for (const auto other : split(columns[otherNames], ','))
        place.otherNames.emplace_back(other);
    place.coordinate = {angle(columns[latitude], 90, "latitude"), angle(columns[longitude], 180, "longitude")};
    place.kind = columns[kind];
    place.country = columns[country];
    if (place.country.size() != 2) throw InputError(fmt::format("the country is \"{}\"", place.country));
    if (!columns[region].empty()) place.region = fmt::format("{}.{}", place.country, columns[region]);
    if (!place.region.empty() && !columns[county].empty())
        place.county = fmt::format("{}.{}", place.region, columns[county]);
    place.population = number<int64_t>(columns[populationColumn], "population");
    if (place.population < 0) throw InputError(fmt::format("the population is \"{}\"", place.population));
    return place;
}

} // namespace

std::vector<GeoName> readGeoNames(const std::string& path) {
    auto file = opened(path);
    std::vector<GeoName> places;
    size_t count = 0;
    for (std::string line; std::getline(file, line);) {
        ++count;
        try {
            places.push_back(placeIn(line));
        } catch (const InputError& error) {
            throw InputError(fmt::format("{}:{}: {}.", path, count, error.what()));
        }
    }
    if (file.bad()) throw InputError(fmt::format("{} can't be read to its end.", path));
    if (places.empty()) throw InputError(fmt::format("{} is empty.", path));
    return places;
}

std::map<std::string, std::string> readDivisions(const std::string& path) {
    std::ostringstream text;
    text << opened(path).rdbuf();
    JSONValue root;
    try {
        root = parseJSON(text.str());
    } catch (const JSONError& error) {
        throw InputError(fmt::format("{}: {}", path, error.what()));
    }
    std::map<std::string, std::string> names;
    if (!root.array()) throw InputError(fmt::format("{} is no list.", path));
    for (const auto& entry : *root.array()) {
        const auto* object = entry.object();
        const auto member = [&](std::string_view key) {
            const auto found = object ? object->find(key) : JSONValue::Object::const_iterator();
            const auto* value = object && found != object->end() ? found->second.string() : nullptr;
            if (!value) throw InputError(fmt::format("{}: entry {} has no {}.", path, names.size() + 1, key));
            return *value;
        };
        const auto code = member("code");
        names[code] = member("name");
    }
    return names;
}

} // namespace bridge::gazetteer
