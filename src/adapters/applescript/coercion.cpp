#include "adapters/applescript/coercion.h"

#include "adapters/applescript/application.h"
#include "adapters/applescript/describe.h"
#include "adapters/applescript/numbers.h"
#include "adapters/applescript/text_comparison.h"

#include <cmath>

namespace bridge::applescript {

namespace {

void appendText(std::string& text, const Datum& datum, Steps& steps);

struct Writer {
    std::string& text;
    Steps& steps;
    const Datum& datum;

    void operator()(const Nothing&) const { refuse(); }
    void operator()(const MissingValue&) const { text += "missing value"; }
    void operator()(bool truth) const { text += truth ? "true" : "false"; }
    void operator()(int64_t integer) const { text += std::to_string(integer); }
    void operator()(double real) const { text += writeReal(real); }
    void operator()(const Text& cell) const { text += cell->text(); }
    void operator()(const Constant& constant) const { text += constant.name; }
    void operator()(const ClassName& name) const { text += name.name; }
    void operator()(const File& file) const { text += file.path; }
    void operator()(const ListReference& list) const {
        const Steps::Level level(steps);
        for (const auto& item : list->items())
            appendText(text, item, steps);
    }
    void operator()(const RecordReference&) const { refuse(); }
    void operator()(const InsertionPoint&) const { refuse(); }
    void operator()(const ObjectPointer&) const { refuse(); }

    [[noreturn]] void refuse() const { throw cantMake(describe(datum), "text"); }
};

void appendText(std::string& text, const Datum& datum, Steps& steps) {
    steps.take();
    std::visit(Writer{text, steps, datum}, static_cast<const Datum::variant&>(datum));
    if (text.size() > Heap::largestText) throw memoryExhausted();
}

// The only item of a list of one counts as that item.
const Datum& single(const Datum& datum) {
    const auto* list = datum.list();
    return list && list->items().size() == 1 ? list->items().front() : datum;
}

} // namespace

std::string textOf(const Datum& datum, Steps& steps) {
    std::string text;
    appendText(text, datum, steps);
    return text;
}

Datum numberOf(const Datum& datum) {
    if (const auto number = numberIn(datum)) return *number;
    throw cantMake(describe(datum), "number");
}

int64_t integerOf(const Datum& datum) {
    const auto number = numberIn(datum);
    if (!number) throw cantMake(describe(datum), "integer");
    if (const auto* integer = number->as<int64_t>()) return *integer;
    constexpr double limit = 9223372036854775808.0; // 2^63
    const double rounded = std::round(asReal(*number));
    if (!(rounded >= -limit && rounded < limit)) throw cantMake(describe(datum), "integer");
    return static_cast<int64_t>(rounded);
}

bool truthOf(const Datum& datum) {
    if (const auto* truth = datum.as<bool>()) return *truth;
    if (const auto* text = datum.text()) {
        if (isSameText(*text, "true")) return true;
        if (isSameText(*text, "false")) return false;
    }
    if (const auto* integer = datum.as<int64_t>(); integer && (*integer == 0 || *integer == 1)) return *integer == 1;
    throw cantMake(describe(datum), "boolean");
}

ListReference listOf(const Datum& datum, Heap& heap) {
    if (const auto* list = datum.as<ListReference>()) return *list;
    auto list = heap.list();
    if (const auto* record = datum.record())
        for (const auto& value : record->values())
            list->append(value);
    else
        list->append(datum);
    return list;
}

Datum coerce(const Datum& datum, const std::string& className, Heap& heap, Steps& steps) {
    if (className == "text") return datum.text() ? datum : heap.text(textOf(datum, steps));
    if (className == "list") return listOf(datum, heap);
    if (isOfClass(datum, className)) return datum;
    const auto& inner = single(datum);
    if (className == "integer") return integerOf(inner);
    if (className == "number") return numberOf(inner);
    if (className == "real") {
        if (const auto number = numberIn(inner)) return asReal(*number);
        throw cantMake(describe(datum), "real");
    }
    if (className == "boolean") return truthOf(inner);
    if (isOfClass(inner, className)) return inner;
    throw cantMake(describe(datum), className);
}

std::string classOf(const Datum& datum) {
    struct Namer {
        std::string operator()(const Nothing&) const { return "class"; }
        std::string operator()(const MissingValue&) const { return "class"; }
        std::string operator()(bool) const { return "boolean"; }
        std::string operator()(int64_t) const { return "integer"; }
        std::string operator()(double) const { return "real"; }
        std::string operator()(const Text&) const { return "text"; }
        std::string operator()(const Constant&) const { return "constant"; }
        std::string operator()(const ClassName&) const { return "class"; }
        std::string operator()(const File&) const { return "file"; }
        std::string operator()(const ListReference&) const { return "list"; }
        std::string operator()(const RecordReference&) const { return "record"; }
        std::string operator()(const InsertionPoint&) const { return "insertion point"; }
        std::string operator()(const ObjectPointer& object) const { return object->className(); }
    };
    return std::visit(Namer{}, static_cast<const Datum::variant&>(datum));
}

bool isOfClass(const Datum& datum, const std::string& className) {
    if (className == "item") return true;
    if (className == "number") return datum.is<int64_t>() || datum.is<double>();
    return classOf(datum) == className;
}

} // namespace bridge::applescript
