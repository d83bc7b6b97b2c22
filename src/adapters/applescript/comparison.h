#pragma once

#include "adapters/applescript/coercion.h"
#include "adapters/applescript/text_comparison.h"
#include "adapters/applescript/tree.h"

namespace bridge::applescript {

// = contains, begins with and the like. A text never equals a number; lists and records compare by what is in them.
class Comparison {
public:
    Comparison(Case letterCase, Steps& steps) : m_case(letterCase), m_steps(steps) {}

    bool isSame(const Datum& one, const Datum& other) const;
    // Below, at or above zero; the right one is read as the kind of the left one.
    int order(const Datum& left, const Datum& right) const;
    bool contains(const Datum& whole, const Datum& part) const { return matches(whole, part, Where::anywhere); }
    bool beginsWith(const Datum& whole, const Datum& part) const { return matches(whole, part, Where::first); }
    bool endsWith(const Datum& whole, const Datum& part) const { return matches(whole, part, Where::last); }

private:
    enum class Where { anywhere, first, last };

    bool matches(const Datum& whole, const Datum& part, Where where) const;
    bool matchTexts(const Datum& whole, const Datum& part, Where where) const;
    bool matchLists(const std::vector<Datum>& whole, const std::vector<Datum>& part, Where where) const;
    bool areSame(const std::vector<Datum>& one, const std::vector<Datum>& other) const;
    bool isWithin(const RecordCell& part, const RecordCell& whole) const;

    Case m_case;
    Steps& m_steps;
};

} // namespace bridge::applescript
