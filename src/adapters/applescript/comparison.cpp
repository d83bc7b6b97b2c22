#include "adapters/applescript/comparison.h"

#include "adapters/applescript/application.h"
#include "adapters/applescript/describe.h"
#include "adapters/applescript/numbers.h"

#include <algorithm>
#include <cstring>

namespace bridge::applescript {

namespace {

bool isNumber(const Datum& datum) {
    return datum.is<int64_t>() || datum.is<double>();
}

int orderOf(const Datum& one, const Datum& other) {
    if (const auto* left = one.as<int64_t>(), *right = other.as<int64_t>(); left && right)
        return *left < *right ? -1 : *left > *right ? 1 : 0;
    const double left = asReal(one);
    const double right = asReal(other);
    return left < right ? -1 : left > right ? 1 : 0;
}

} // namespace

bool Comparison::isSame(const Datum& one, const Datum& other) const {
    m_steps.take();
    if (isNumber(one) && isNumber(other)) return orderOf(one, other) == 0;
    if (one.index() != other.index()) return false;
    if (const auto* text = one.text()) return isSameText(*text, *other.text(), m_case);
    if (const auto* list = one.list()) return list == other.list() || areSame(list->items(), other.list()->items());
    if (const auto* record = one.record())
        return record->size() == other.record()->size() && isWithin(*record, *other.record());
    if (auto* object = one.object()) return object->isSameAs(*other.object());
    if (const auto* truth = one.as<bool>()) return *truth == *other.as<bool>();
    if (const auto* constant = one.as<Constant>()) return *constant == *other.as<Constant>();
    if (const auto* name = one.as<ClassName>()) return *name == *other.as<ClassName>();
    if (const auto* file = one.as<File>()) return *file == *other.as<File>();
    return !one.is<InsertionPoint>();
}

bool Comparison::areSame(const std::vector<Datum>& one, const std::vector<Datum>& other) const {
    const Steps::Level level(m_steps);
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [this](const Datum& left, const Datum& right) { return isSame(left, right); });
}

bool Comparison::isWithin(const RecordCell& part, const RecordCell& whole) const {
    const Steps::Level level(m_steps);
    for (size_t index = 0; index < part.size(); ++index) {
        const auto* value = whole.find(part.key(index));
        if (!value || !isSame(part.values()[index], *value)) return false;
    }
    return true;
}

int Comparison::order(const Datum& left, const Datum& right) const {
    if (isNumber(left)) return orderOf(left, numberOf(right));
    if (const auto* text = left.text()) return orderOfTexts(*text, textOf(right, m_steps), m_case);
    throw cantMake(describe(left), "number");
}

bool Comparison::matches(const Datum& whole, const Datum& part, Where where) const {
    if (const auto* list = whole.list()) {
        if (const auto* parts = part.list()) return matchLists(list->items(), parts->items(), where);
        return matchLists(list->items(), {part}, where);
    }
    const auto *record = whole.record(), *fields = part.record();
    if (record && fields && where == Where::anywhere) return isWithin(*fields, *record);
    return matchTexts(whole, part, where);
}

bool Comparison::matchTexts(const Datum& whole, const Datum& part, Where where) const {
    const auto text = comparable(textOf(whole, m_steps), m_case);
    const auto wanted = comparable(textOf(part, m_steps), m_case);
    if (where == Where::first) return text.starts_with(wanted);
    if (where == Where::last) return text.ends_with(wanted);
    // Takes time in proportion to the texts, whatever is in them, which std::string::find doesn't.
    return ::memmem(text.data(), text.size(), wanted.data(), wanted.size()) != nullptr;
}

bool Comparison::matchLists(const std::vector<Datum>& whole, const std::vector<Datum>& part, Where where) const {
    const Steps::Level level(m_steps);
    if (part.size() > whole.size()) return false;
    const size_t last = whole.size() - part.size();
    const auto standsAt = [&](size_t start) {
        m_steps.take();
        return std::equal(part.begin(), part.end(), whole.begin() + static_cast<std::ptrdiff_t>(start),
                          [this](const Datum& left, const Datum& right) { return isSame(left, right); });
    };
    if (where == Where::first) return standsAt(0);
    if (where == Where::last) return standsAt(last);
    for (size_t start = 0; start <= last; ++start)
        if (standsAt(start)) return true;
    return false;
}

} // namespace bridge::applescript
