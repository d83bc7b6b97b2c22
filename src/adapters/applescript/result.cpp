#include "adapters/applescript/application.h"
#include "adapters/applescript/border.h"
#include "adapters/applescript/numbers.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace bridge::applescript {

namespace {

using Result = TypedAppleScriptValue;

int64_t within32Bits(double value) {
    constexpr double least = std::numeric_limits<int32_t>::min();
    constexpr double most = std::numeric_limits<int32_t>::max();
    return std::isnan(value) ? 0 : static_cast<int64_t>(std::clamp(std::round(value), least, most));
}

struct Reader {
    Steps::Copy& copy;

    Result read(const Datum& datum) const {
        copy.take(sizeof(Result));
        auto result = std::visit(*this, static_cast<const Datum::variant&>(datum));
        if (datum.list()) return result;
        if (const auto number = numberIn(datum)) {
            result.doubleValue = asReal(*number);
            result.intValue = within32Bits(result.doubleValue);
        }
        return result;
    }
    Result text(const std::string& text) const {
        copy.take(text.size());
        Result result;
        result.stringValue = text;
        return result;
    }

    Result operator()(const Nothing&) const { return null(); }
    Result operator()(const MissingValue&) const { return {}; }
    Result operator()(bool truth) const { return text(truth ? "true" : "false"); }
    Result operator()(int64_t integer) const { return text(std::to_string(integer)); }
    Result operator()(double real) const { return text(writeShortest(real)); }
    Result operator()(const Text& cell) const { return text(cell->text()); }
    Result operator()(const Constant& constant) const { return constant.name == "null" ? null() : text(constant.name); }
    Result operator()(const ClassName& name) const { return text(name.name); }
    Result operator()(const File& file) const { return text(file.path); }
    Result operator()(const RecordReference&) const { return {}; }
    Result operator()(const InsertionPoint&) const { return {}; }
    Result operator()(const ObjectPointer& object) const { return text(object->description()); }
    Result operator()(const ListReference& list) const {
        const Steps::Level level(copy);
        Result result;
        for (const auto& item : list->items())
            result.items.push_back(read(item));
        return result;
    }
    static Result null() {
        Result result;
        result.isNull = true;
        return result;
    }
};

} // namespace

TypedAppleScriptValue resultOf(const Datum& datum, Steps& steps) {
    Steps::Copy copy(steps);
    return Reader{copy}.read(datum);
}

} // namespace bridge::applescript
