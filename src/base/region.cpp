#include "base/region.h"

#include "base/name_words.h"

#include <map>
#include <memory>
#include <unicode/locdspnm.h>
#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/uscript.h>
#include <unicode/utf8.h>

namespace bridge {

namespace {

std::string key(std::string_view name) {
    std::string joined;
    for (const auto& word : nameWords(name))
        joined += word;
    return joined;
}

class RegionNames {
public:
    RegionNames() {
        // Names that the user may mean come before those of other languages that happen to be written alike.
        for (const auto& language : {icu::Locale::getDefault(), icu::Locale::getEnglish()})
            for (const auto length : {UDISPCTX_LENGTH_FULL, UDISPCTX_LENGTH_SHORT})
                forEachRegion([&](const char* region) { add(language, length, region); });
        forEachRegion([&](const char* region) {
            add(region, region);
            add(icu::Locale("und", region).getISO3Country(), region);
            UErrorCode code = U_ZERO_ERROR;
            icu::Locale own("und", region);
            own.addLikelySubtags(code);
            if (U_SUCCESS(code)) add(own, UDISPCTX_LENGTH_FULL, region);
        });
        // What the country calls itself, and ICU never does.
        add("United States of America", "US");
    }

    std::optional<std::string> find(std::string_view name) const {
        const auto found = m_regions.find(key(name));
        return found == m_regions.end() ? std::nullopt : std::optional(found->second);
    }

private:
    template <typename Action> static void forEachRegion(Action action) {
        for (const char* const* region = icu::Locale::getISOCountries(); *region; ++region)
            action(*region);
    }

    void add(const icu::Locale& language, UDisplayContext length, const char* region) {
        UDisplayContext contexts[] = {length};
        const std::unique_ptr<icu::LocaleDisplayNames> names(
            icu::LocaleDisplayNames::createInstance(language, contexts, 1));
        if (!names) return;
        icu::UnicodeString name;
        names->regionDisplayName(region, name);
        std::string text;
        add(name.toUTF8String(text), region);
    }

    void add(std::string_view name, const char* region) {
        if (const auto letters = key(name); !letters.empty()) m_regions.emplace(letters, region);
    }

    std::map<std::string, std::string> m_regions;
};

} // namespace

std::optional<std::string> regionNamed(std::string_view name) {
    static const RegionNames names;
    return names.find(name);
}

std::string userRegion() {
    return icu::Locale::getDefault().getCountry();
}

std::string userLanguage() {
    const auto& user = icu::Locale::getDefault();
    const std::string language = user.getLanguage();
    const std::string region = user.getCountry();
    if (language.empty() || std::string_view(user.getVariant()) == "POSIX") return "en";
    return region.empty() ? language : language + "-" + region;
}

bool isInLatinLetters(std::string_view text) {
    const auto length = static_cast<int32_t>(text.size());
    bool hasLetter = false;
    for (int32_t index = 0; index < length;) {
        UChar32 character;
        U8_NEXT(text.data(), index, length, character);
        if (character < 0 || !u_isalpha(character)) continue;
        UErrorCode code = U_ZERO_ERROR;
        if (uscript_getScript(character, &code) != USCRIPT_LATIN) return false;
        hasLetter = true;
    }
    return hasLetter;
}

} // namespace bridge
