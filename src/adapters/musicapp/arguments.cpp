#include "adapters/musicapp/arguments.h"

#include <charconv>
#include <fmt/format.h>

namespace bridge::musicapp {

namespace {

constexpr size_t digits = 16;

} // namespace

std::string idText(uint64_t id) {
    return fmt::format("{:016X}", id);
}

std::optional<uint64_t> idOf(const Value& value) {
    const auto* text = value.as<std::string>();
    if (!text || text->size() != digits) return std::nullopt;
    uint64_t id = 0;
    const auto* end = text->data() + digits;
    const auto [stop, problem] = std::from_chars(text->data(), end, id, 16);
    return problem == std::errc() && stop == end ? std::optional(id) : std::nullopt;
}

const Value& required(const Command& command, std::string_view label) {
    if (const auto* value = command.parameter(label)) return *value;
    throw ScriptError(applescript::parameterMissing,
                      fmt::format("The “{}” parameter is missing for {}.", label, command.name));
}

std::string textArgument(const Value& value) {
    if (const auto* text = value.as<std::string>()) return *text;
    throw ScriptError(applescript::cantCoerce, "Can’t make a parameter into type text.");
}

void cantSet(const std::string& property, const Object& owner) {
    throw ScriptError(applescript::cantSet, fmt::format("Can’t set {} of {}.", property, owner.description()));
}

void doesNotUnderstand(const std::string& who, const Command& command) {
    throw ScriptError(applescript::notUnderstood,
                      fmt::format("{} doesn’t understand the “{}” message.", who, command.name));
}

} // namespace bridge::musicapp
