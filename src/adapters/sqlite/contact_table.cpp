#include "adapters/sqlite/contact_table.h"

#include "adapters/vcard/contact_names.h"
#include "base/name_words.h"
#include "base/text.h"
#include "base/uuid.h"

#include <fmt/format.h>

namespace bridge {

namespace {

// Goes up when the words or the order of names are made in another way than before.
constexpr int namingVersion = 1;

std::string presentRules() {
    return fmt::format("{} {}", namingVersion, nameRules());
}

// Of a row that begins with an identifier and a summary.
Contact contactFrom(const Statement& row, int first) {
    auto contact = VCard::parse(row.text(first + 1)).describe();
    contact.identifier = row.text(first);
    return contact;
}

} // namespace

std::optional<ContactRow> ContactTable::find(std::string_view identifier) const {
    auto row = m_database.query("SELECT id, summary, key, sort_key FROM contact WHERE id = ?", identifier);
    if (!row.step()) return std::nullopt;
    return ContactRow{row.column<int64_t>(2), row.column<std::string>(3), contactFrom(row, 0)};
}

std::optional<int64_t> ContactTable::findUID(std::string_view uid) const {
    return m_database.value<int64_t>("SELECT key FROM contact WHERE uid = ?", comparableUID(uid));
}

VCard ContactTable::card(int64_t key) const {
    return VCard::parse(m_database.value<std::string>("SELECT text FROM contact WHERE key = ?", key).value_or(""));
}

ContactRow ContactTable::existing(std::string_view identifier) const {
    auto row = find(identifier);
    if (!row) throw PlatformError(fmt::format("There is no contact “{}” on this computer.", repairUTF8(identifier)));
    return std::move(*row);
}

ContactTable::Added ContactTable::add(const VCard& card) {
    const auto contact = card.describe();
    const auto key = sortKeyOf(contact);
    const auto identifier = makeUUID();
    m_database.run("INSERT INTO contact(id, uid, sort_key, summary, text) VALUES(?, ?, ?, ?, ?)", identifier,
                   comparableUID(card.uid()), key, card.summary().text(), card.text());
    const auto row = m_database.lastInsertedKey();
    m_names.add(row, key, nameWordsOf(contact));
    return {row, identifier};
}

void ContactTable::change(const Contact& wanted) {
    const auto before = existing(wanted.identifier);
    const auto stored = card(before.key);
    auto changed = stored;
    changed.change(wanted);
    if (changed == stored) return;

    const auto after = changed.describe();
    const auto key = sortKeyOf(after);
    const auto words = nameWordsOf(after);
    m_database.run("UPDATE contact SET sort_key = ?, summary = ?, text = ? WHERE key = ?", key,
                   changed.summary().text(), changed.text(), before.key);
    const auto wordsBefore = nameWordsOf(before.contact);
    if (key == before.sortKey && words == wordsBefore) return;
    m_names.remove(before.key, before.sortKey, wordsBefore);
    m_names.add(before.key, key, words);
    m_database.run("UPDATE member SET sort_key = ? WHERE contact = ?", key, before.key);
}

void ContactTable::remove(std::string_view identifier) {
    const auto row = existing(identifier);
    m_names.remove(row.key, row.sortKey, nameWordsOf(row.contact));
    m_database.run("DELETE FROM contact WHERE key = ?", row.key);
}

std::string ContactTable::sortKey(int64_t key) const {
    return m_database.value<std::string>("SELECT sort_key FROM contact WHERE key = ?", key).value_or("");
}

void ContactTable::visit(const ContactPredicate& predicate, const std::function<bool(const Contact&)>& visitor) {
    if (const auto* named = std::get_if<ContactsMatchingName>(&predicate)) return visitNamed(named->text, visitor);
    const auto* group = std::get_if<ContactsInGroup>(&predicate);
    auto row = group ? m_database.query("SELECT contact.id, summary FROM contact_group "
                                        "JOIN member ON \"group\" = contact_group.key "
                                        "JOIN contact ON contact.key = contact "
                                        "WHERE contact_group.id = ? ORDER BY member.sort_key, contact",
                                        group->groupIdentifier)
                     : m_database.query("SELECT id, summary FROM contact ORDER BY sort_key, key");
    while (row.step())
        if (!visitor(contactFrom(row, 0))) return;
}

void ContactTable::visitNamed(const std::string& text, const std::function<bool(const Contact&)>& visitor) {
    const auto words = nameWords(text);
    m_names.search(words, [&](int64_t key) {
        auto row = m_database.query("SELECT id, summary FROM contact WHERE key = ?", key);
        if (!row.step()) return true;
        const auto contact = contactFrom(row, 0);
        return !wordsBeginWordsOf(words, nameWordsOf(contact)) || visitor(contact);
    });
}

bool ContactTable::isUpToDate() const {
    return m_database.value<std::string>("SELECT rules FROM name_rules") == presentRules();
}

void ContactTable::bringUpToDate() {
    if (isUpToDate()) return;
    m_names.clear();
    int64_t last = 0;
    while (true) {
        auto row = m_database.query("SELECT id, summary, key FROM contact WHERE key > ? ORDER BY key LIMIT 1", last);
        if (!row.step()) break;
        last = row.column<int64_t>(2);
        const auto contact = contactFrom(row, 0);
        const auto key = sortKeyOf(contact);
        m_database.run("UPDATE contact SET sort_key = ? WHERE key = ?", key, last);
        m_database.run("UPDATE member SET sort_key = ? WHERE contact = ?", key, last);
        m_names.add(last, key, nameWordsOf(contact));
    }
    m_database.run("DELETE FROM name_rules");
    m_database.run("INSERT INTO name_rules(rules) VALUES(?)", presentRules());
}

} // namespace bridge
