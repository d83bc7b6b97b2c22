#pragma once

#include "adapters/applescript/heap.h"
#include "adapters/applescript/steps.h"
#include "platform/script_engine.h"

namespace bridge::applescript {

// Values are copied between a script and its applications, so that neither's lists depend on the other's.
Datum fromApplication(const Value& value, Heap& heap, Steps& steps);
Value toApplication(const Datum& datum, Steps& steps);

// What the script is read as by whoever ran it.
TypedAppleScriptValue resultOf(const Datum& datum, Steps& steps);

} // namespace bridge::applescript
