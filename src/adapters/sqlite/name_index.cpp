#include "adapters/sqlite/name_index.h"

#include "base/name_words.h"

#include <algorithm>
#include <set>

namespace bridge {

namespace {

// In characters. Twelve tell nearly all names apart; the rest is compared one by one.
constexpr size_t longestBeginning = 12;
// Of a name that means harm.
constexpr size_t mostWords = 1000;
constexpr size_t longestSortKey = 200;

// The byte lengths of the first characters of a word.
std::vector<size_t> lengthsOf(std::string_view word) {
    std::vector<size_t> lengths;
    for (size_t index = 1; index <= word.size() && lengths.size() < longestBeginning; ++index)
        if (index == word.size() || (static_cast<unsigned char>(word[index]) & 0xc0) != 0x80) lengths.push_back(index);
    return lengths;
}

std::set<std::string> beginningsOf(const std::vector<std::string>& words) {
    std::set<std::string> beginnings;
    for (size_t index = 0; index < std::min(words.size(), mostWords); ++index)
        for (const size_t length : lengthsOf(words[index]))
            beginnings.insert(words[index].substr(0, length));
    return beginnings;
}

} // namespace

std::string sortKeyOf(const Contact& contact) {
    // Cut, because it is stored with every word.
    return nameSortKey(contact.familyName, contact.givenName, contact.organizationName).substr(0, longestSortKey);
}

void NameIndex::add(int64_t contact, std::string_view sortKey, const std::vector<std::string>& words) {
    for (const auto& beginning : beginningsOf(words))
        m_database.run("INSERT INTO word_beginning(beginning, sort_key, contact) VALUES(?, ?, ?)", beginning, sortKey,
                       contact);
}

void NameIndex::remove(int64_t contact, std::string_view sortKey, const std::vector<std::string>& words) {
    for (const auto& beginning : beginningsOf(words))
        m_database.run("DELETE FROM word_beginning WHERE beginning = ? AND sort_key = ? AND contact = ?", beginning,
                       sortKey, contact);
}

void NameIndex::clear() {
    m_database.run("DELETE FROM word_beginning");
}

std::vector<std::string> NameIndex::beginnings(const std::vector<std::string>& words) {
    std::set<std::string> sought;
    for (const auto& word : words)
        if (const auto lengths = lengthsOf(word); !lengths.empty()) sought.insert(word.substr(0, lengths.back()));
    // Who has a longer word has its beginnings too. They follow each other in the set.
    for (auto each = sought.begin(); each != sought.end();) {
        const auto next = std::next(each);
        each = next != sought.end() && next->starts_with(*each) ? sought.erase(each) : next;
    }
    return {sought.begin(), sought.end()};
}

// Each word in turn leaps to where the one before has got to, so that of two frequent names the few that have both are
// found without a look at all who have one.
std::optional<NameIndex::Place> NameIndex::firstOf(const std::vector<std::string>& sought, Place from) {
    for (size_t agreeing = 0, index = 0; agreeing < sought.size(); index = (index + 1) % sought.size()) {
        auto found = firstOf(sought[index], from);
        if (!found) return std::nullopt;
        agreeing = agreeing > 0 && *found == from ? agreeing + 1 : 1;
        from = std::move(*found);
    }
    return sought.empty() ? std::nullopt : std::optional(std::move(from));
}

std::optional<NameIndex::Place> NameIndex::firstOf(const std::string& beginning, const Place& from) {
    auto row = m_database.query("SELECT sort_key, contact FROM word_beginning WHERE beginning = ? "
                                "AND (sort_key, contact) >= (?, ?) ORDER BY sort_key, contact LIMIT 1",
                                beginning, from.sortKey, from.contact);
    if (!row.step()) return std::nullopt;
    return Place{row.column<std::string>(0), row.column<int64_t>(1)};
}

} // namespace bridge
