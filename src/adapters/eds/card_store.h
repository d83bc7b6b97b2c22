#pragma once

#include <gio/gio.h>
#include <string>
#include <vector>

namespace bridge {

// Cards of an address book, in their texts. Every function blocks and throws PlatformError; each change is made whole
// or not at all.
class CardStore {
public:
    virtual ~CardStore() = default;

    virtual std::string subject() const = 0; // for the beginning of a sentence
    // Those that exist, in any order.
    virtual std::vector<std::string> cardsOf(const std::vector<std::string>& uids, GCancellable* cancellable) = 0;
    // Answers with the UIDs in the order of the cards, which may have been given others.
    virtual std::vector<std::string> create(const std::vector<std::string>& cards, GCancellable* cancellable) = 0;
    virtual void change(const std::vector<std::string>& cards, GCancellable* cancellable) = 0;
    virtual void remove(const std::vector<std::string>& uids, GCancellable* cancellable) = 0;
};

} // namespace bridge
