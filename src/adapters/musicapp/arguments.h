#pragma once

#include "adapters/musicapp/language.h"

#include <optional>

namespace bridge::musicapp {

// As scripts see a persistent id: 16 upper-case hexadecimal digits.
std::string idText(uint64_t id);
// nullopt for a text that is no such id; case does not count, as in every comparison of a script.
std::optional<uint64_t> idOf(const Value& value);

// What commands were given. Each throws -1700 for what isn't such a thing, and -1701 when it is missing.
const Value& required(const Command& command, std::string_view label);
std::string textArgument(const Value& value);

// -10006
[[noreturn]] void cantSet(const std::string& property, const Object& owner);
// -1708: track "Blue" doesn’t understand the “sort” message.
[[noreturn]] void doesNotUnderstand(const std::string& who, const Command& command);

} // namespace bridge::musicapp
