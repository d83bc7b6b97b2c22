#pragma once

#include "tests/adapters/eds/neighbour_registry.h"

namespace bridge {

// What another program of the same desktop does with address books.
class BookNeighbour : public NeighbourRegistry {
public:
    // Answers with the new source's identifier.
    static std::string addLocalBook(std::string_view title);
    // One on a server.
    static std::string addRemoteBook(std::string_view title, std::string_view address);
    // One on a server that can't be reached, of which this computer remembers a contact.
    static std::string addRememberedBook(std::string_view title, std::string_view vCard);
    static void setDefault(const std::string& identifier);
    // Every book that can go, and what is in the one that can't.
    static void removeAllBooks();

    // Answers with the UID.
    static std::string put(const std::string& book, std::string_view vCard);
    // Empty when there is none.
    static std::string stored(const std::string& book, const std::string& uid);
    static void remove(const std::string& book, const std::string& uid);
    // The name of a contact list, and each of its members: "uid: name <address>".
    static std::vector<std::string> list(const std::string& book, const std::string& uid);
};

} // namespace bridge
