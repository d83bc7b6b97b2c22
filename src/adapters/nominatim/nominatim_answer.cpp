#include "adapters/nominatim/nominatim_answer.h"

#include "adapters/nominatim/web_address.h"
#include "base/platform_error.h"
#include "base/record.h"
#include "base/text.h"

#include <array>
#include <charconv>
#include <fmt/format.h>

namespace bridge::nominatim {

namespace {

[[noreturn]] void refuse(int status, const std::string& server) {
    constexpr int tooMany = 429;
    std::string reason = fmt::format("did not take the request (HTTP {}). Is its address right?", status);
    if (status == tooMany)
        reason = "wants fewer requests. Try again in a few minutes.";
    else if (status >= 500)
        reason = fmt::format("has trouble of its own (HTTP {}). Try again later.", status);
    else if (status == 401 || status == 403)
        reason = fmt::format("does not answer us (HTTP {}). It may want another way to be used.", status);
    else if (status >= 300 && status < 400)
        reason = fmt::format("has another address by now (HTTP {}).", status);
    throw PlatformError(fmt::format("The places server {} {}", server, reason));
}

struct Place {
    JSONValue lat; // text, and of some servers a number
    JSONValue lon;
    std::optional<std::string> name;
    std::optional<std::string> display_name;
    std::optional<std::map<std::string, JSONValue>> extratags;

    static constexpr auto fields() {
        return std::tuple{required("lat", &Place::lat), required("lon", &Place::lon), optional("name", &Place::name),
                          optional("display_name", &Place::display_name), optional("extratags", &Place::extratags)};
    }
};
static_assert(listsEveryMember<Place>());

double angle(const JSONValue& value, double most, const DecodePath& path) {
    double degrees = 0;
    if (const auto* number = value.number()) {
        degrees = *number;
    } else if (const auto* text = value.string()) {
        const auto [end, problem] = std::from_chars(text->data(), text->data() + text->size(), degrees);
        if (problem != std::errc() || end != text->data() + text->size()) path.fail("expected a number");
    } else {
        path.fail("expected a number");
    }
    // Also what is no number at all.
    if (!(degrees >= -most && degrees <= most)) path.fail("expected an angle on the globe");
    return degrees;
}

// One text of the first tag that has any. Tags may hold several, with semicolons between them.
template <typename Accept, size_t count>
std::optional<std::string> tag(const Place& place, const std::array<const char*, count>& names, Accept accept) {
    if (!place.extratags) return std::nullopt;
    for (const auto* name : names) {
        const auto found = place.extratags->find(name);
        const auto* text = found == place.extratags->end() ? nullptr : found->second.string();
        if (!text) continue;
        const auto first = trim(std::string_view(*text).substr(0, text->find(';')));
        if (accept(first)) return std::string(first);
    }
    return std::nullopt;
}

std::optional<std::string> unlessEmpty(std::optional<std::string> text) {
    return text && !trim(*text).empty() ? text : std::nullopt;
}

MapItem itemFrom(const JSONValue& value, const DecodePath& path) {
    const auto place = decode<Place>(value, path);
    MapItem item;
    item.coordinate = {angle(place.lat, 90, path.key("lat")), angle(place.lon, 180, path.key("lon"))};
    item.title = unlessEmpty(place.display_name);
    item.name = unlessEmpty(place.name);
    // Servers before version 4 say it only as the beginning of the address.
    if (!place.name && item.title) item.name = item.title->substr(0, item.title->find(','));
    item.phoneNumber =
        tag(place, std::array{"phone", "contact:phone"}, [](std::string_view text) { return !text.empty(); });
    item.url = tag(place, std::array{"website", "contact:website", "url"}, isWebAddress);
    return item;
}

} // namespace

std::vector<MapItem> placesIn(const HTTPResponse& response, const std::string& server) {
    constexpr int success = 200;
    if (response.status != success) refuse(response.status, server);
    try {
        const auto answer = parseJSON(response.body);
        const auto* places = answer.array();
        if (!places) throw JSONError("it is no list of places");
        std::vector<MapItem> items;
        for (size_t index = 0; index < places->size(); ++index)
            items.push_back(itemFrom((*places)[index], DecodePath().index(index)));
        return items;
    } catch (const JSONError& error) {
        throw PlatformError(
            fmt::format("The answer of the places server {} can't be understood: {}", server, error.what()));
    } catch (const DecodingError& error) {
        throw PlatformError(
            fmt::format("The answer of the places server {} can't be understood: {}", server, error.what()));
    }
}

} // namespace bridge::nominatim
