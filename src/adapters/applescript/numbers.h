#pragma once

#include "adapters/applescript/datum.h"

#include <optional>
#include <string>
#include <string_view>

namespace bridge::applescript {

// "12", "-3.5e2", with white space around it: an integer or a real. nullopt for any other text.
std::optional<Datum> readNumber(std::string_view text);

// As the language writes a real: 3.0, 0.25, 1.5E+20.
std::string writeReal(double value);

// The shortest text, 3 rather than 3.0.
std::string writeShortest(double value);

// An integer or a real, or what can be taken for one: a text that says a number, a boolean. nullopt otherwise.
std::optional<Datum> numberIn(const Datum& datum);

double asReal(const Datum& number);

} // namespace bridge::applescript
