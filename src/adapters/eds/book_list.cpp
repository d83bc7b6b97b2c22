#include "adapters/eds/book_list.h"

#include "adapters/eds/default_source.h"
#include "adapters/eds/eds_names.h"
#include "adapters/eds/source_tree.h"

#include <algorithm>
#include <tuple>

namespace bridge {

const AddressBook* BookList::find(const std::string& identifier) const {
    const auto found = std::ranges::find(books, identifier, &AddressBook::id);
    return found == books.end() ? nullptr : &*found;
}

BookList listedBooks(const std::vector<RegisteredSource>& sources) {
    BookList list;
    const SourceTree tree(sources);
    for (const auto& [identifier, source] : tree)
        if (source->data.has(bookExtension) && tree.isEnabled(*source))
            list.books.push_back({identifier, source->data.displayName()});
    std::ranges::sort(list.books, {}, [](const AddressBook& book) { return std::tie(book.title, book.id); });
    for (const auto& identifier : {chosenSource("default-address-book"), std::string("system-address-book")})
        if (list.defaultBook.empty() && list.find(identifier)) list.defaultBook = identifier;
    return list;
}

std::string subjectOf(const AddressBook& book) {
    return "The address book “" + book.title + "”";
}

} // namespace bridge
