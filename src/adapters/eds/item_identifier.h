#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace bridge {

// Where an item is: system-calendar/20260814T112841Z%2F1%40host/20260821T090000. The parts are percent-encoded, so a
// UID of any form has its place; the last one, which occurrence of a series, is left out where there is no series, as
// with contacts.
struct ItemIdentifier {
    std::string sourceID;
    std::string uid;
    std::string recurrenceID;

    std::string text() const;
    // Nothing for what text() can't have made.
    static std::optional<ItemIdentifier> parse(std::string_view text);
};

} // namespace bridge
