#include "adapters/gazetteer/build/area_names.h"

#include "adapters/gazetteer/place_words.h"
#include "base/text.h"

#include <array>
#include <memory>
#include <string_view>
#include <unicode/locdspnm.h>
#include <unicode/locid.h>

namespace bridge::gazetteer {

namespace {

// GeoNames has numbers for them. Those of the United States are their letters.
constexpr std::array<std::pair<std::string_view, std::string_view>, 21> letters{{
    {"ab", "ca.01"},  {"bc", "ca.02"},  {"mb", "ca.03"},  {"nb", "ca.04"}, {"nl", "ca.05"},  {"ns", "ca.07"},
    {"on", "ca.08"},  {"pe", "ca.09"},  {"qc", "ca.10"},  {"sk", "ca.11"}, {"yt", "ca.12"},  {"nt", "ca.13"},
    {"nu", "ca.14"},  {"act", "au.01"}, {"nsw", "au.02"}, {"nt", "au.03"}, {"qld", "au.04"}, {"sa", "au.05"},
    {"tas", "au.06"}, {"vic", "au.07"}, {"wa", "au.08"},
}};

// What countries are called and ICU never says.
constexpr std::array<std::pair<std::string_view, std::string_view>, 6> common{{
    {"america", "us"},
    {"unitedstatesofamerica", "us"},
    {"uk", "gb"},
    {"greatbritain", "gb"},
    {"uae", "ae"},
    {"holland", "nl"},
}};

void add(AreaNames& names, std::string_view name, const std::string& token) {
    if (auto key = joined(placeWords(name)); !key.empty()) names.emplace(std::move(key), token);
}

std::string displayed(const icu::LocaleDisplayNames& names, const char* country) {
    icu::UnicodeString name;
    names.regionDisplayName(country, name);
    std::string text;
    return name.toUTF8String(text);
}

std::unique_ptr<icu::LocaleDisplayNames> namesIn(const icu::Locale& language) {
    // Without a substitute: what a language does not say is left to those that do.
    UDisplayContext contexts[] = {UDISPCTX_NO_SUBSTITUTE};
    return std::unique_ptr<icu::LocaleDisplayNames>(icu::LocaleDisplayNames::createInstance(language, contexts, 1));
}

} // namespace

AreaNames countryNames() {
    AreaNames found;
    int32_t count = 0;
    const auto* languages = icu::Locale::getAvailableLocales(count);
    for (int32_t index = 0; index < count; ++index) {
        if (*languages[index].getCountry() != '\0') continue;
        const auto names = namesIn(languages[index]);
        if (!names) continue;
        for (const char* const* country = icu::Locale::getISOCountries(); *country; ++country)
            add(found, displayed(*names, *country), areaToken(*country));
    }
    for (const char* const* country = icu::Locale::getISOCountries(); *country; ++country) {
        add(found, *country, areaToken(*country));
        add(found, icu::Locale("und", *country).getISO3Country(), areaToken(*country));
    }
    for (const auto& [name, token] : common)
        found.emplace(name, token);
    return found;
}

AreaNames divisionNames(const std::map<std::string, std::string>& divisions) {
    AreaNames found;
    for (const auto& [code, name] : divisions) {
        add(found, name, areaToken(code));
        if (code.starts_with("US.") && code.size() == 5) add(found, code.substr(3), areaToken(code));
    }
    for (const auto& [name, token] : letters)
        found.emplace(name, token);
    return found;
}

std::string countryName(const std::string& code) {
    static const auto names = namesIn(icu::Locale::getEnglish());
    const auto name = names ? displayed(*names, code.c_str()) : std::string();
    return name.empty() ? code : name;
}

std::string areaToken(const std::string& code) {
    return lowercase(code);
}

} // namespace bridge::gazetteer
