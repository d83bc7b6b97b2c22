#pragma once

#include "adapters/applescript/value.h"

#include <memory>
#include <string>
#include <variant>

namespace bridge::applescript {

class TextCell;
class ListCell;
class RecordCell;

// What "return" without a value gives, and a handler that returns nothing.
struct Nothing {
    bool operator==(const Nothing&) const = default;
};
using Text = std::shared_ptr<const TextCell>;
using ListReference = std::shared_ptr<ListCell>;
using RecordReference = std::shared_ptr<RecordCell>;

// A value inside of a script. What can grow lies in the script's heap, which counts it and frees it with the script,
// whatever refers to what; copying a datum copies no text. Values of applications are copied when they come and go.
class Datum : public std::variant<Nothing, MissingValue, bool, int64_t, double, Text, Constant, ClassName, File,
                                  ListReference, RecordReference, InsertionPoint, ObjectPointer> {
public:
    using variant::variant;

    template <typename Kind> const Kind* as() const { return std::get_if<Kind>(this); }
    template <typename Kind> bool is() const { return std::holds_alternative<Kind>(*this); }

    // Of a text; nullptr for anything else.
    const std::string* text() const;
    ListCell* list() const;
    RecordCell* record() const;
    Object* object() const;
};

} // namespace bridge::applescript
