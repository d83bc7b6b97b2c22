#include "adapters/gazetteer/place_reading.h"

#include "adapters/gazetteer/place_words.h"

#include <algorithm>
#include <array>
#include <optional>

namespace bridge::gazetteer {

namespace {

using Words = std::vector<std::string>;
using Areas = std::vector<std::vector<std::string>>;

constexpr size_t mostWords = 16;
constexpr size_t mostAreaWords = 8;

std::vector<Words> partsOf(std::string_view query) {
    constexpr std::array<std::string_view, 5> separators{",", ";", "，", "、", "،"};
    std::vector<Words> parts;
    while (true) {
        size_t end = query.npos;
        size_t length = 0;
        for (const auto separator : separators)
            if (const auto found = query.find(separator); found < end) {
                end = found;
                length = separator.size();
            }
        if (auto words = placeWords(query.substr(0, end)); !words.empty()) parts.push_back(std::move(words));
        if (end == query.npos) return parts;
        query.remove_prefix(end + length);
    }
}

Words slice(const Words& words, size_t from, size_t to) {
    return {words.begin() + static_cast<ptrdiff_t>(from), words.begin() + static_cast<ptrdiff_t>(to)};
}

// The words as names of areas, one after another, the longest first.
std::optional<Areas> areasOf(const Words& words, AreaNamesIndex& index) {
    if (words.empty()) return Areas();
    if (words.size() > mostAreaWords) return std::nullopt;
    for (size_t length = words.size(); length > 0; --length) {
        auto tokens = index.named(joined(slice(words, 0, length)));
        if (tokens.empty()) continue;
        auto rest = areasOf(slice(words, length, words.size()), index);
        if (!rest) continue;
        rest->push_back(std::move(tokens));
        return rest;
    }
    return std::nullopt;
}

bool isNumber(const std::string& word) {
    return word.find_first_not_of("0123456789") == word.npos;
}

size_t characterLength(unsigned char first) {
    return first < 0x80 ? 1 : first < 0xe0 ? 2 : first < 0xf0 ? 3 : 4;
}

// Han, roughly: what is written without spaces and by characters of three bytes.
bool isHan(const std::string& word) {
    for (size_t index = 0; index < word.size(); index += 3) {
        const auto first = static_cast<unsigned char>(word[index]);
        if (characterLength(first) != 3 || first < 0xe3 || first > 0xe9) return false;
    }
    return true;
}

// What stands behind a name to say what it is: metropolis, city, ward, county, prefecture, town, village, province.
std::optional<std::string> withoutKind(const std::string& word) {
    constexpr std::array<std::string_view, 14> kinds{"都", "市", "区", "區", "县", "縣", "府",
                                                     "町", "村", "省", "州", "道", "镇", "鎮"};
    constexpr size_t shortestName = 6;
    for (const auto kind : kinds)
        if (word.size() >= shortestName + kind.size() && word.ends_with(kind))
            return word.substr(0, word.size() - kind.size());
    return std::nullopt;
}

class Reader {
public:
    explicit Reader(AreaNamesIndex& index) : m_index(index) {}

    Readings read(const std::vector<Words>& parts) {
        const auto& first = parts.front();
        if (parts.size() == 1) {
            phrase(first, {});
        } else {
            Words all;
            for (const auto& part : parts)
                all.insert(all.end(), part.begin(), part.end());
            m_readings.strict.push_back({all, {}});
            inAreas(first, {parts.begin() + 1, parts.end()});
            inAreas(parts.back(), {parts.begin(), parts.end() - 1});
        }
        return std::move(m_readings);
    }

private:
    // A name, and perhaps areas behind or before it.
    void phrase(const Words& words, const Areas& areas) {
        m_readings.strict.push_back({words, areas});
        for (size_t cut = words.size() - 1; cut > 0; --cut) {
            add(slice(words, 0, cut), slice(words, cut, words.size()), areas);
            add(slice(words, cut, words.size()), slice(words, 0, cut), areas);
        }
        if (words.size() == 1) word(words.front(), areas);
        Words letters;
        std::copy_if(words.begin(), words.end(), std::back_inserter(letters),
                     [](const std::string& one) { return !isNumber(one); });
        if (!letters.empty() && letters.size() < words.size()) m_readings.lenient.push_back({letters, areas});
    }

    void add(const Words& name, const Words& where, Areas areas) {
        auto found = areasOf(where, m_index);
        if (!found) return;
        areas.insert(areas.end(), found->begin(), found->end());
        m_readings.strict.push_back({name, std::move(areas)});
    }

    // Chinese and Japanese go from the large to the small, without a space.
    void word(const std::string& text, const Areas& areas) {
        constexpr size_t longest = 60;
        if (text.size() > longest || !isHan(text)) return;
        if (auto shorter = withoutKind(text)) m_readings.strict.push_back({{*shorter}, areas});
        for (size_t cut = 3; cut < text.size(); cut += 3) {
            auto tokens = m_index.named(text.substr(0, cut));
            if (tokens.empty()) continue;
            auto inside = areas;
            inside.push_back(std::move(tokens));
            const auto name = text.substr(cut);
            m_readings.strict.push_back({{name}, inside});
            if (auto shorter = withoutKind(name)) m_readings.strict.push_back({{*shorter}, inside});
        }
    }

    void inAreas(const Words& name, const std::vector<Words>& where) {
        Areas areas;
        bool knowsAll = true;
        for (const auto& part : where) {
            auto found = areasOf(part, m_index);
            if (!found)
                if (auto tokens = m_index.beginning(joined(part)); !tokens.empty()) found = Areas{std::move(tokens)};
            knowsAll = knowsAll && found.has_value();
            if (found) areas.insert(areas.end(), found->begin(), found->end());
        }
        if (knowsAll)
            phrase(name, areas);
        else
            m_readings.lenient.push_back({name, areas});
    }

    AreaNamesIndex& m_index;
    Readings m_readings;
};

} // namespace

Readings readingsOf(std::string_view query, AreaNamesIndex& areas) {
    const auto parts = partsOf(query);
    size_t count = 0;
    for (const auto& part : parts)
        count += part.size();
    if (count == 0 || count > mostWords) return {};
    return Reader(areas).read(parts);
}

} // namespace bridge::gazetteer
