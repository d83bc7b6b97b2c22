#pragma once

#include "adapters/applescript/heap.h"
#include "adapters/applescript/steps.h"

namespace bridge::applescript {

// What "as" does, and what operators do where they need another kind of value. Each throws "can't make … into type …".
std::string textOf(const Datum& datum, Steps& steps);
int64_t integerOf(const Datum& datum);
Datum numberOf(const Datum& datum);
bool truthOf(const Datum& datum);
ListReference listOf(const Datum& datum, Heap& heap);
Datum coerce(const Datum& datum, const std::string& className, Heap& heap, Steps& steps);

// What "class of" says: text, integer, list, the class of an object.
std::string classOf(const Datum& datum);
// Whether the datum belongs to the class; every datum is an item.
bool isOfClass(const Datum& datum, const std::string& className);

} // namespace bridge::applescript
