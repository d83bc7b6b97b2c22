#include "adapters/vcard/vcard_file.h"

#include "adapters/vcard/upgrade.h"
#include "base/platform_error.h"
#include "base/text.h"

#include <algorithm>
#include <map>

namespace bridge {

using namespace vcard;

namespace {

class FileReader {
public:
    explicit FileReader(WrittenCards written) { m_file.problems = std::move(written.problems); }

    void add(const WrittenCard& written) {
        ++m_number;
        std::vector<std::string> faults;
        VCard card(upgraded(written, faults));
        for (auto& fault : faults)
            m_file.problems.push_back({itemOf(card), std::move(fault), false});
        if (!card.isGroup())
            addContact(std::move(card));
        else if (trim(card.formattedName()).empty())
            m_file.problems.push_back({itemOf(card), "It is a group without a name."});
        else
            m_groups.push_back(std::move(card));
    }

    VCardFile finish() {
        for (auto& [name, members] : m_categories)
            m_file.groups.push_back({name, std::move(members), {}});
        for (const auto& card : m_groups)
            addGroup(card);
        return std::move(m_file);
    }

private:
    std::string itemOf(const VCard& card) const {
        const auto name = card.formattedName();
        if (trim(name).empty()) return "contact " + std::to_string(m_number);
        return (card.isGroup() ? "group “" : "contact “") + name + "”";
    }

    void addContact(VCard card) {
        if (const auto same = m_places.find(comparableUID(card.uid())); same != m_places.end()) {
            if (m_file.cards[same->second].saysTheSameAs(card)) return;
            card.giveNewUID();
            if (m_places.contains(comparableUID(card.uid()))) return;
            m_file.problems.push_back(
                {itemOf(card), "Another contact of the file has the same UID, so this one got a new one.", false});
        }
        m_places.emplace(comparableUID(card.uid()), m_file.cards.size());
        for (const auto& category : card.categories())
            m_categories[category].push_back(m_file.cards.size());
        m_file.cards.push_back(std::move(card));
    }

    void addGroup(const VCard& card) {
        VCardGroup group{std::string(trim(card.formattedName())), {}, {}};
        std::map<std::string, bool> seen;
        for (const auto& member : card.members()) {
            auto uid = comparableUID(member);
            if (!seen.emplace(uid, true).second) continue;
            if (const auto place = m_places.find(uid); place != m_places.end())
                group.members.push_back(place->second);
            else
                group.otherMembers.push_back(std::move(uid));
        }
        m_file.groups.push_back(std::move(group));
    }

    VCardFile m_file;
    std::map<std::string, size_t> m_places; // of cards by their UIDs
    std::map<std::string, std::vector<size_t>> m_categories;
    std::vector<VCard> m_groups; // named when all contacts are known
    size_t m_number = 0;
};

} // namespace

VCardFile readVCardFile(std::string_view bytes) {
    auto written = readCards(bytes);
    const auto cards = std::move(written.cards);
    const bool isVCard = !cards.empty() || std::any_of(written.problems.begin(), written.problems.end(),
                                                       [](auto& each) { return each.item.starts_with("the contact"); });
    if (!isVCard) throw PlatformError("The file has no contacts: nothing in it is vCard.");
    FileReader reader(std::move(written));
    for (const auto& card : cards)
        reader.add(card);
    return reader.finish();
}

} // namespace bridge
