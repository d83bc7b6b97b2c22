#include "adapters/applescript/describe.h"

#include "adapters/applescript/application.h"
#include "adapters/applescript/heap.h"
#include "adapters/applescript/numbers.h"

#include <fmt/format.h>

namespace bridge::applescript {

namespace {

constexpr size_t longestText = 100;
constexpr size_t mostItems = 5;
constexpr int deepest = 3;

std::string shortened(const std::string& text) {
    if (text.size() <= longestText) return text;
    size_t end = longestText;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xc0) == 0x80)
        --end;
    return text.substr(0, end) + "…";
}

std::string describe(const Datum& datum, int depth);

struct Describer {
    int depth;

    std::string operator()(const Nothing&) const { return "nothing"; }
    std::string operator()(const MissingValue&) const { return "missing value"; }
    std::string operator()(bool truth) const { return truth ? "true" : "false"; }
    std::string operator()(int64_t integer) const { return std::to_string(integer); }
    std::string operator()(double real) const { return writeReal(real); }
    std::string operator()(const Text& text) const { return fmt::format("\"{}\"", shortened(text->text())); }
    std::string operator()(const Constant& constant) const { return constant.name; }
    std::string operator()(const ClassName& name) const { return name.name; }
    std::string operator()(const File& file) const { return fmt::format("file \"{}\"", shortened(file.path)); }
    std::string operator()(const InsertionPoint& point) const { return "insertion point of " + point.className; }
    std::string operator()(const ObjectPointer& object) const { return shortened(object->description()); }
    std::string operator()(const ListReference& list) const {
        if (depth == deepest) return "{…}";
        std::string text;
        for (size_t index = 0; index < list->items().size() && index < mostItems; ++index)
            text += (index > 0 ? ", " : "") + describe(list->items()[index], depth + 1);
        return "{" + text + (list->items().size() > mostItems ? ", …}" : "}");
    }
    std::string operator()(const RecordReference& record) const {
        if (depth == deepest) return "{…}";
        std::string text;
        for (size_t index = 0; index < record->size() && index < mostItems; ++index)
            text += (index > 0 ? ", " : "") + shortened(record->key(index)) + ":" +
                    describe(record->values()[index], depth + 1);
        return "{" + text + (record->size() > mostItems ? ", …}" : "}");
    }
};

std::string describe(const Datum& datum, int depth) {
    return std::visit(Describer{depth}, static_cast<const Datum::variant&>(datum));
}

} // namespace

std::string describe(const Datum& datum) {
    return describe(datum, 0);
}

} // namespace bridge::applescript
