#include "adapters/jsonfile/service_settings.h"

#include "adapters/jsonfile/private_file.h"
#include "base/record.h"
#include "base/url.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <filesystem>
#include <fmt/format.h>

namespace bridge {

namespace {

double decodeDegrees(const JSONValue::Object& object, const char* name, double limit, const DecodePath& path) {
    const auto found = object.find(name);
    const auto* degrees = found == object.end() ? nullptr : found->second.number();
    if (!degrees || std::abs(*degrees) > limit)
        path.key(name).fail(fmt::format("expected a number from -{} to {}", limit, limit));
    return *degrees;
}

MapCoordinate decodeLocation(const JSONValue& value, const DecodePath& path) {
    const auto* object = value.object();
    if (!object) path.fail("expected an object with latitude and longitude");
    return {decodeDegrees(*object, "latitude", 90, path), decodeDegrees(*object, "longitude", 180, path)};
}

// What stands behind http:// or https://; empty for anything else.
std::string_view afterScheme(std::string_view address) {
    for (const std::string_view scheme : {"http://", "https://"}) {
        const auto beginning = address.substr(0, scheme.size());
        const auto same = [](char left, char right) { return std::tolower(static_cast<unsigned char>(left)) == right; };
        if (std::equal(beginning.begin(), beginning.end(), scheme.begin(), scheme.end(), same))
            return address.substr(scheme.size());
    }
    return {};
}

// Paths are put behind it, so it can have neither a query nor a fragment; and no password belongs in this file.
std::string decodeServer(const JSONValue& value, const DecodePath& path) {
    const auto* text = value.string();
    const auto rest = text ? afterScheme(*text) : std::string_view();
    const auto host = rest.substr(0, rest.find('/'));
    if (host.empty() || host.front() == ':' || host.find('@') != host.npos || !canBeURL(*text) ||
        text->find_first_of("?#") != text->npos)
        path.fail("expected an address such as http://127.0.0.1:8002");
    auto address = *text;
    while (address.ends_with('/'))
        address.pop_back();
    return address;
}

class Reader {
public:
    Reader(const JSONValue::Object& values, std::string file, ServiceSettings& settings)
        : m_values(values), m_file(std::move(file)), m_settings(settings) {}

    template <typename Value>
    void read(const char* key, std::optional<Value>& setting, Value (*decode)(const JSONValue&, const DecodePath&)) {
        m_known.emplace_back(key);
        const auto found = m_values.find(key);
        if (found == m_values.end() || found->second.isNull()) return;
        try {
            setting = decode(found->second, DecodePath().key(key));
        } catch (const DecodingError& fault) {
            m_settings.faults.emplace(key, m_file + ", " + fault.what());
        }
    }

    // A misspelt name would otherwise look like a setting that does nothing.
    void reportUnknown() const {
        for (const auto& [key, value] : m_values)
            if (std::find(m_known.begin(), m_known.end(), key) == m_known.end())
                m_settings.faults.emplace(key, fmt::format("{}, .{}: there is no such setting", m_file, key));
    }

private:
    const JSONValue::Object& m_values;
    const std::string m_file;
    ServiceSettings& m_settings;
    std::vector<std::string> m_known;
};

void readSettings(const std::string& path, const std::string& name, ServiceSettings& settings) {
    const auto content = PrivateFile(path, Trust::any).read();
    if (!content) return;
    const auto value = parseJSON(*content);
    const auto* values = value.object();
    if (!values) throw JSONError("it is not a JSON object");
    Reader reader(*values, name, settings);
    reader.read("location", settings.location, decodeLocation);
    reader.read("placesServer", settings.placesServer, decodeServer);
    reader.read("directionsServer", settings.directionsServer, decodeServer);
    reader.reportUnknown();
}

} // namespace

std::string ServiceSettings::faultOf(std::string_view key) const {
    auto found = faults.find(key);
    if (found == faults.end()) found = faults.find("");
    return found == faults.end() ? "" : found->second;
}

ServiceSettings readServiceSettings(const std::string& path) {
    ServiceSettings settings;
    const auto name = std::filesystem::path(path).filename().string();
    try {
        readSettings(path, name, settings);
    } catch (const std::runtime_error& fault) {
        settings.faults.emplace("", fmt::format("{} can't be read: {}", name, fault.what()));
    }
    return settings;
}

} // namespace bridge
