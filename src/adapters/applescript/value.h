#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace bridge::applescript {

class Object;
class Value;

struct MissingValue {
    bool operator==(const MissingValue&) const = default;
};
// A word of a dictionary that stands for itself: yes, PDF, unformatted text; all words in lower case.
struct Constant {
    std::string name;
    bool operator==(const Constant&) const = default;
};
// A class as a value, as in "make new slide": the name in the singular and in lower case.
struct ClassName {
    std::string name;
    bool operator==(const ClassName&) const = default;
};
// POSIX file "/path"
struct File {
    std::string path;
    bool operator==(const File&) const = default;
};
// "end of slides of newDocument": a place between the elements of a container.
struct InsertionPoint {
    enum class Place { beginning, end };
    std::shared_ptr<Object> container;
    std::string className;
    Place place = Place::end;
    bool operator==(const InsertionPoint&) const = default;
};
// As in the language, a list that is given away is shared, not copied.
using List = std::shared_ptr<std::vector<Value>>;
// Keys in lower case, in the order of the source.
using Record = std::shared_ptr<std::vector<std::pair<std::string, Value>>>;
using ObjectPointer = std::shared_ptr<Object>;

// Texts are UTF-8. Integers are those of the language up to 2^53 and beyond; who needs 32 bits checks.
class Value : public std::variant<MissingValue, bool, int64_t, double, std::string, Constant, ClassName, File, List,
                                  Record, InsertionPoint, ObjectPointer> {
public:
    using variant::variant;

    template <typename Kind> const Kind* as() const { return std::get_if<Kind>(this); }
    template <typename Kind> bool is() const { return std::holds_alternative<Kind>(*this); }
};

} // namespace bridge::applescript
