#include "adapters/vcard/contact_names.h"

#include "base/name_words.h"

namespace bridge {

std::vector<std::string> nameWordsOf(const Contact& contact) {
    return nameWords(contact.givenName + " " + contact.middleName + " " + contact.familyName + " " + contact.nickname +
                     " " + contact.organizationName);
}

} // namespace bridge
