#include "adapters/applescript/describe.h"
#include "adapters/applescript/evaluator.h"
#include "adapters/applescript/text_parts.h"
#include "base/text.h"

#include <algorithm>
#include <fmt/format.h>

namespace bridge::applescript {

namespace {

bool isPlainASCII(const std::string& text) {
    return std::all_of(text.begin(), text.end(),
                       [](char byte) { return static_cast<unsigned char>(byte) < 0x80 && byte != '\r'; });
}

} // namespace

// From 1, or from the end for what is negative; 0 when there is no such position.
size_t Evaluator::positionOf(int64_t position, size_t count) const {
    const auto size = static_cast<int64_t>(count);
    if (position > 0) return position <= size ? static_cast<size_t>(position) : 0;
    return position < 0 && position >= -size ? static_cast<size_t>(size + position + 1) : 0;
}

Datum Evaluator::listOf(const Pool& pool) {
    auto list = m_heap.list();
    for (const auto& item : pool)
        list->append(item);
    return list;
}

Datum Evaluator::evaluate(const Element& element) {
    const auto container = containerOf(element.container, element.className);
    return element.condition ? filter(element, container) : select(element, container);
}

Datum Evaluator::select(const Element& element, const Datum& container) {
    if (auto* object = container.object()) return selectFrom(*object, element);
    if (const auto* list = container.list(); list && !list->items().empty() && element.className != "item") {
        const auto containers = list->items();
        // "cells of every row": of each of them.
        if (std::all_of(containers.begin(), containers.end(),
                        [](const Datum& item) { return item.object() != nullptr; })) {
            Pool found;
            for (const auto& each : containers)
                found.push_back(select(element, each));
            return listOf(found);
        }
    }
    if (element.selection == Element::Selection::at) {
        const auto position = integerOf(value(element.key));
        if (auto item = quickItem(container, element.className, position)) return std::move(*item);
        const auto pool = elementsOf(container, element.className);
        const auto index = positionOf(position, pool.size());
        if (index == 0) throw notThere(element, container);
        return pool[index - 1];
    }
    if (element.className == "text" && element.selection == Element::Selection::every && container.text())
        return container;
    return choose(element, elementsOf(container, element.className), container);
}

// Without a copy of all the others.
std::optional<Datum> Evaluator::quickItem(const Datum& container, const std::string& className, int64_t position) {
    if (const auto* list = container.list(); list && className == "item") {
        const auto index = positionOf(position, list->items().size());
        if (index > 0) return list->items()[index - 1];
    }
    const auto* text = container.text();
    if (text && textPart(className) == TextPart::character && isPlainASCII(*text)) {
        const auto index = positionOf(position, text->size());
        if (index > 0) return m_heap.text(text->substr(index - 1, 1));
    }
    return std::nullopt;
}

Datum Evaluator::selectFrom(Object& container, const Element& element) {
    using Selection = Element::Selection;
    const auto& name = element.className;
    ObjectPointer found;
    switch (element.selection) {
    case Selection::every:
    case Selection::range: {
        const auto all = ask([&] { return container.elements(name, m_call); });
        const Pool pool(all.begin(), all.end());
        return choose(element, pool, ObjectPointer(ObjectPointer(), &container));
    }
    case Selection::withID: {
        const auto id = give(value(element.key));
        found = ask([&] { return container.elementWithID(name, id, m_call); });
        break;
    }
    case Selection::at: {
        const auto key = value(element.key);
        if (const auto* text = key.text()) {
            found = ask([&] { return container.elementNamed(name, *text, m_call); });
            break;
        }
        auto position = integerOf(key);
        if (position < 0) {
            const auto count = ask([&] { return container.count(name, m_call); });
            position = static_cast<int64_t>(positionOf(position, count));
        }
        if (position > 0) found = ask([&] { return container.elementAt(name, static_cast<size_t>(position), m_call); });
        break;
    }
    case Selection::middle:
    case Selection::some: {
        const auto count = ask([&] { return container.count(name, m_call); });
        if (count == 0) break;
        const size_t position = element.selection == Selection::middle ? (count + 1) / 2 : m_random() % count + 1;
        found = ask([&] { return container.elementAt(name, position, m_call); });
        break;
    }
    }
    if (!found) throw notThere(element, ObjectPointer(ObjectPointer(), &container));
    return found;
}

// Everything of the class in a list, a text or a record.
Evaluator::Pool Evaluator::elementsOf(const Datum& container, const std::string& className) {
    Pool pool;
    if (auto* object = container.object()) {
        const auto all = ask([&] { return object->elements(className, m_call); });
        return {all.begin(), all.end()};
    }
    if (const auto* text = container.text()) {
        if (const auto part = textPart(className))
            for (const auto piece : partsOf(*text, *part))
                pool.push_back(m_heap.text(std::string(piece)));
        else
            throw cantGet("every " + className + " of " + describe(container));
        return pool;
    }
    const auto* record = container.record();
    if (!record && !container.list()) throw cantGet("every " + className + " of " + describe(container));
    for (const auto& item : record ? record->values() : container.list()->items())
        if (isOfClass(item, className)) pool.push_back(item);
    return pool;
}

Datum Evaluator::choose(const Element& element, const Pool& pool, const Datum& container) {
    using Selection = Element::Selection;
    if (element.selection == Selection::every) return listOf(pool);
    if (element.selection == Selection::range) return slice(element, pool, container);
    size_t index = 0;
    if (element.selection == Selection::at)
        index = positionOf(integerOf(value(element.key)), pool.size());
    else if (!pool.empty())
        index = element.selection == Selection::middle ? (pool.size() + 1) / 2 : m_random() % pool.size() + 1;
    if (index == 0) throw notThere(element, container);
    return pool[index - 1];
}

Datum Evaluator::slice(const Element& element, const Pool& pool, const Datum& container) {
    auto first = positionOf(integerOf(value(element.key)), pool.size());
    auto last = positionOf(integerOf(value(element.last)), pool.size());
    if (first == 0 || last == 0) throw notThere(element, container);
    if (last < first) std::swap(first, last);
    const auto at = [&](size_t position) { return pool.begin() + static_cast<std::ptrdiff_t>(position); };
    const auto part = listOf(Pool(at(first - 1), at(last)));
    if (element.className != "text" || !container.text()) return part;
    return m_heap.text(textOf(part, m_steps));
}

size_t Evaluator::countOf(const Datum& container, const std::string& className) {
    if (auto* object = container.object()) return ask([&] { return object->count(className, m_call); });
    const auto* text = container.text();
    if (text && textPart(className) == TextPart::character) return graphemeCount(*text);
    if (const auto* list = container.list(); list && className == "item") return list->items().size();
    if (const auto* list = container.list(); list && !list->items().empty() && list->items().front().object() &&
                                             !isOfClass(list->items().front(), className)) {
        size_t sum = 0;
        const auto containers = list->items();
        for (const auto& each : containers)
            sum += countOf(each, className);
        return sum;
    }
    return elementsOf(container, className).size();
}

ScriptError Evaluator::notThere(const Element& element, const Datum& container) {
    using Selection = Element::Selection;
    std::string what = element.className;
    if (element.selection == Selection::at) what = fmt::format("{} {}", what, describe(value(element.key)));
    if (element.selection == Selection::withID) what = fmt::format("{} id {}", what, describe(value(element.key)));
    if (element.selection == Selection::range)
        what = fmt::format("{}s {} thru {}", what, describe(value(element.key)), describe(value(element.last)));
    if (element.selection == Selection::middle) what.insert(0, "middle ");
    if (element.selection == Selection::some) what.insert(0, "some ");
    if (element.condition)
        return {invalidIndex,
                "Can’t get " + what + " of " + describe(container) + " whose condition holds. Invalid index."};
    return cantGet(what + " of " + describe(container));
}

} // namespace bridge::applescript
