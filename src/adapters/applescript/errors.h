#pragma once

#include "platform/script_engine.h"

#include <string>

namespace bridge::applescript {

// Numbers of the language and of the Apple Event Manager that the port does not name.
constexpr int outOfMemory = -108;
constexpr int cantCoerce = -1700;
constexpr int parameterMissing = -1701;
constexpr int notUnderstood = -1708;
constexpr int noUserInteraction = -1713;
constexpr int invalidIndex = -1719;
constexpr int divideByZero = -2701;
constexpr int numberTooLarge = -2702;
constexpr int stackOverflow = -2706;
constexpr int cantCreate = -2710;
constexpr int generalError = -2700;
constexpr int noResult = -2763;
constexpr int cantSet = -10006;
constexpr int eventFailed = -10000;

ScriptError cantGet(const std::string& what);                           // "Can’t get slide 3."
ScriptError cantMake(const std::string& what, const std::string& type); // "Can’t make 3 into type list."
ScriptError syntaxFault(int line, const std::string& message);
ScriptError memoryExhausted();
ScriptError tooDeep();

} // namespace bridge::applescript
