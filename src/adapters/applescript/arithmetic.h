#pragma once

#include "adapters/applescript/datum.h"
#include "adapters/applescript/tree.h"

namespace bridge::applescript {

// + - * / div mod ^ of what is or reads as numbers. Integers that overflow become reals; reals that do are an error.
Datum calculate(Operator sign, const Datum& left, const Datum& right);
Datum negative(const Datum& datum);

} // namespace bridge::applescript
