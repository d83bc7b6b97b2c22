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

std::vector<std::string> nameWordsOf(const Contact& contact) {
    return nameWords(contact.givenName + " " + contact.middleName + " " + contact.familyName + " " + contact.nickname +
                     " " + contact.organizationName);
}

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

    constexpr int64_t enoughToTell = 1000;
    std::vector<std::pair<int64_t, std::string>> counted;
    for (const auto& beginning : sought) {
        const auto count = sought.size() == 1
                               ? 0
                               : m_database
                                     .value<int64_t>("SELECT count(*) FROM (SELECT 1 FROM word_beginning WHERE "
                                                     "beginning = ? LIMIT ?)",
                                                     beginning, enoughToTell)
                                     .value_or(0);
        counted.emplace_back(count, beginning);
        // Nobody has it, so nobody has them all.
        if (sought.size() > 1 && count == 0) return {beginning};
    }
    std::sort(counted.begin(), counted.end());
    std::vector<std::string> ordered;
    for (auto& [count, beginning] : counted)
        ordered.push_back(std::move(beginning));
    return ordered;
}

bool NameIndex::hasOthers(const std::vector<std::string>& sought, std::string_view sortKey, int64_t contact) {
    return std::all_of(sought.begin() + 1, sought.end(), [&](const std::string& beginning) {
        return m_database
            .value<int64_t>("SELECT 1 FROM word_beginning WHERE beginning = ? AND sort_key = ? AND contact = ?",
                            beginning, sortKey, contact)
            .has_value();
    });
}

} // namespace bridge
