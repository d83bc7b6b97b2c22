#pragma once

#include "adapters/iworkapps/language.h"

#include <string>

namespace bridge::iworkapps {

// What the applications answer when they can't, as ScriptError with AppleScript's numbers and in its words.

// -1728: Can’t get sheet "X" of document "Plan".
[[noreturn]] void cantGet(const std::string& what);
[[noreturn]] void cantGet(const std::string& property, const Object& owner);
// -10006: Can’t set name of document "Plan" to "x".
[[noreturn]] void cantSet(const std::string& property, const Object& owner, const Value& value);
// -1700: Can’t make {} into type text.
[[noreturn]] void cantMakeInto(const Value& value, const std::string& type);
// -2710: Can’t make class sheet. With what stands in the way, if there is more to say.
[[noreturn]] void cantMakeClass(const std::string& className, const std::string& because = {});
// -1708: document "Plan" doesn’t understand the “sort” message.
[[noreturn]] void doesNotUnderstand(const std::string& who, const Command& command);
// -1701: The “to” parameter is missing for export.
[[noreturn]] void isMissing(const std::string& parameter, const Command& command);
// -1713, of a question that nobody is there to answer.
[[noreturn]] void cantAsk(const std::string& message);
// -10000, for everything that has no number of its own.
[[noreturn]] void fails(const std::string& message);

// As it would stand in a script: "x", 12, document "Plan".
std::string sourceText(const Value& value);

} // namespace bridge::iworkapps
