#include "adapters/iworkapps/refusals.h"

#include "adapters/applescript/errors.h"

#include <fmt/format.h>

namespace bridge::iworkapps {

namespace {

// A message tells which text it was without repeating a novel.
constexpr size_t longestQuotation = 60;

struct SourceText {
    std::string operator()(MissingValue) const { return "missing value"; }
    std::string operator()(bool value) const { return value ? "true" : "false"; }
    std::string operator()(int64_t value) const { return fmt::format("{}", value); }
    std::string operator()(double value) const { return fmt::format("{}", value); }
    std::string operator()(const std::string& value) const {
        if (value.size() <= longestQuotation) return '"' + value + '"';
        auto end = longestQuotation;
        while (end > 0 && (static_cast<unsigned char>(value[end]) & 0xC0) == 0x80)
            --end;
        return '"' + value.substr(0, end) + "…\"";
    }
    std::string operator()(const Constant& value) const { return value.name; }
    std::string operator()(const ClassName& value) const { return value.name; }
    std::string operator()(const File& value) const { return "POSIX file \"" + value.path + '"'; }
    std::string operator()(const List&) const { return "a list"; }
    std::string operator()(const Record&) const { return "a record"; }
    std::string operator()(const InsertionPoint& value) const {
        return (value.place == InsertionPoint::Place::end ? "end of " : "beginning of ") + value.className;
    }
    std::string operator()(const ObjectPointer& value) const { return value ? value->description() : "nothing"; }
};

} // namespace

std::string sourceText(const Value& value) {
    return std::visit(SourceText{}, static_cast<const Value::variant&>(value));
}

void cantGet(const std::string& what) {
    throw ScriptError(ScriptError::noSuchObject, "Can’t get " + what + ".");
}

void cantGet(const std::string& property, const Object& owner) {
    cantGet(property + " of " + owner.description());
}

void cantSet(const std::string& property, const Object& owner, const Value& value) {
    throw ScriptError(applescript::cantSet,
                      fmt::format("Can’t set {} of {} to {}.", property, owner.description(), sourceText(value)));
}

void cantMakeInto(const Value& value, const std::string& type) {
    throw ScriptError(applescript::cantCoerce, fmt::format("Can’t make {} into type {}.", sourceText(value), type));
}

void cantMakeClass(const std::string& className, const std::string& because) {
    throw ScriptError(applescript::cantCreate,
                      "Can’t make class " + className + (because.empty() ? "." : ": " + because));
}

void doesNotUnderstand(const std::string& who, const Command& command) {
    throw ScriptError(applescript::notUnderstood,
                      fmt::format("{} doesn’t understand the “{}” message.", who, command.name));
}

void isMissing(const std::string& parameter, const Command& command) {
    throw ScriptError(applescript::parameterMissing,
                      fmt::format("The “{}” parameter is missing for {}.", parameter, command.name));
}

void cantAsk(const std::string& message) {
    throw ScriptError(applescript::noUserInteraction, message);
}

void fails(const std::string& message) {
    throw ScriptError(applescript::eventFailed, message);
}

} // namespace bridge::iworkapps
