#pragma once

#include "adapters/eds/source_registry.h"

namespace bridge {

struct AddressBook {
    std::string id;
    std::string title;
};

// What is switched on, by name.
struct BookList {
    std::vector<AddressBook> books;
    std::string defaultBook; // the identifier of the one for new contacts; empty when there is none

    // Nothing when there is none with this identifier.
    const AddressBook* find(const std::string& identifier) const;
};

BookList listedBooks(const std::vector<RegisteredSource>& sources);

// For the beginning of a sentence.
std::string subjectOf(const AddressBook& book);

} // namespace bridge
