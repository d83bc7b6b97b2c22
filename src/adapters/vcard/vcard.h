#pragma once

#include "adapters/vcard/content_line.h"
#include "platform/contact_store.h"

#include <string>
#include <string_view>
#include <vector>

namespace bridge {

// One contact, or group of contacts, as a vCard 4.0 (RFC 6350). Everything that is known about the properties of vCard
// is behind this class and readVCardFile(). Properties that nothing here knows stay as they are.
class VCard {
public:
    // One card of any version. Throws PlatformError for text that is none, or more, or not whole.
    static VCard parse(std::string_view text);
    // With a new UID and every field, postal addresses too; an image can't be made. The identifier does not matter.
    static VCard create(const Contact& contact);
    // Of the lines between VERSION and END. A card without a formatted name gets one, and a card without a UID one that
    // is always the same for what it says.
    explicit VCard(std::vector<vcard::ContentLine> lines);

    std::string text() const; // a vCard that parse() takes
    const std::string& uid() const { return m_uid; }
    void giveNewUID();
    const std::vector<vcard::ContentLine>& lines() const { return m_lines; }

    // Everything but the identifier, which is the store's.
    Contact describe() const;
    // A card with only what describe() looks at, that describes alike; without the pictures, which make cards large.
    VCard summary() const;
    // Writes the fields in which `contact` differs from describe(), postal addresses and the image excepted.
    void change(const Contact& contact);

    std::string formattedName() const; // as a whole, for reading
    std::vector<std::string> categories() const;
    bool isGroup() const;
    // The UIDs of a group's members.
    std::vector<std::string> members() const;

    bool operator==(const VCard& other) const { return m_lines == other.m_lines; }
    // Whatever their UIDs, and when and by which program they were written.
    bool saysTheSameAs(const VCard& other) const { return content() == other.content(); }

private:
    Contact describeAllButNames() const;
    std::string ordinaryName() const;
    std::string content() const;
    const vcard::ContentLine* find(std::string_view name) const;
    vcard::ContentLine& findOrAdd(std::string_view name);
    void set(std::string_view name, std::string value); // an empty value removes

    std::vector<vcard::ContentLine> m_lines;
    std::string m_uid;
};

// A UID, or a reference to one, without what says that it is one: "urn:uuid:" and the case of a UUID.
std::string comparableUID(std::string_view uid);

} // namespace bridge
