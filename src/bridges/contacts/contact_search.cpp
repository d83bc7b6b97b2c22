#include "bridges/contacts/contact_search.h"

#include "base/text.h"

#include <algorithm>

namespace bridge {

namespace {

constexpr int64_t maximumLimit = 500;

std::string joinedNames(const Contact& contact) {
    return contact.givenName + ' ' + contact.middleName + ' ' + contact.familyName + ' ' + contact.nickname + ' ' +
           contact.organizationName;
}

} // namespace

std::string normalizedQuery(const SearchContactsRequest& request) {
    if (!request.query) return {};
    const auto folded = fold(*request.query);
    return std::string(trim(folded));
}

bool nameContains(const Contact& contact, std::string_view normalizedQuery) {
    return fold(joinedNames(contact)).find(normalizedQuery) != std::string::npos;
}

size_t searchLimit(const SearchContactsRequest& request) {
    return static_cast<size_t>(std::clamp<int64_t>(request.limit, 1, maximumLimit));
}

} // namespace bridge
