#include "adapters/applescript/describe.h"
#include "adapters/applescript/evaluator.h"

#include "base/text.h"

namespace bridge::applescript {

// What is told, where no container is given.
Datum Evaluator::containerOf(const Expression& expression, const std::string& what) {
    if (expression) return value(expression);
    if (m_target.it.is<Nothing>()) throw cantGet(what);
    return m_target.it;
}

Datum Evaluator::evaluate(const Property& property) {
    const auto* self = contentOf<Self>(property.container);
    if ((self && *self == Self::me) || (!property.container && m_target.it.is<Nothing>()))
        return read(property.name, property.name);
    if (auto values = propertyAtOnce(property)) return std::move(*values);
    return propertyOf(containerOf(property.container, property.name), property.name);
}

// "value of cells of …": asked of the container first, which may have all of them in one go.
std::optional<Datum> Evaluator::propertyAtOnce(const Property& property) {
    const auto* element = contentOf<Element>(property.container);
    if (!element || element->selection != Element::Selection::every || element->condition) return std::nullopt;
    const auto container = containerOf(element->container, element->className);
    auto* object = container.object();
    if (!object) return propertyOf(select(*element, container), property.name);
    const auto values = ask([&] { return object->propertyOfElements(element->className, property.name, m_call); });
    if (!values) return propertyOf(select(*element, container), property.name);
    auto list = m_heap.list();
    for (const auto& value : *values)
        list->append(bring(value));
    return list;
}

Datum Evaluator::propertyOf(const Datum& owner, const std::string& name) {
    if (auto* object = owner.object()) {
        if (name == "class") return ClassName{classOf(owner)};
        return bring(ask([&] { return object->property(name, m_call); }));
    }
    if (const auto* record = owner.record())
        if (const auto* field = record->find(name)) return *field;
    if (name == "class") return ClassName{classOf(owner)};
    if (name == "contents") return owner;
    if (const auto* list = owner.as<ListReference>()) return propertyOfList(*list, name);
    if (const auto* record = owner.record(); record && name == "length") return static_cast<int64_t>(record->size());
    if (const auto* text = owner.text()) {
        if (name == "text") return owner;
        if (name == "length") return static_cast<int64_t>(graphemeCount(*text));
    }
    if (const auto* file = owner.as<File>(); file && name == "posix path") return m_heap.text(file->path);
    throw cantGet(name + " of " + describe(owner));
}

Datum Evaluator::propertyOfList(const ListReference& list, const std::string& name) {
    const auto& items = list->items();
    if (name == "length") return static_cast<int64_t>(items.size());
    if (name == "reverse") return listOf(Pool(items.rbegin(), items.rend()));
    if (name == "rest") {
        if (items.empty()) throw cantGet("rest of {}");
        return listOf(Pool(items.begin() + 1, items.end()));
    }
    // Of every element that was asked for.
    const Steps::Level level(m_steps);
    const auto owners = items;
    auto values = m_heap.list();
    for (const auto& owner : owners) {
        if (!owner.object() && !owner.list()) throw cantGet(name + " of " + describe(list));
        values->append(propertyOf(owner, name));
    }
    return values;
}

Datum Evaluator::evaluate(const Insertion& insertion) {
    const auto* element = contentOf<Element>(insertion.container);
    if (element && element->selection == Element::Selection::every && !element->condition) {
        const auto container = containerOf(element->container, element->className);
        if (const auto* object = container.as<ObjectPointer>())
            return InsertionPoint{*object, element->className, insertion.place};
    }
    const auto container = containerOf(insertion.container, "end");
    if (const auto* object = container.as<ObjectPointer>()) return InsertionPoint{*object, "", insertion.place};
    const auto* list = container.list();
    if (!list || list->items().empty()) throw cantGet("end of " + describe(container));
    return insertion.place == InsertionPoint::Place::end ? list->items().back() : list->items().front();
}

Datum Evaluator::evaluate(const Count& count) {
    const auto* element = contentOf<Element>(count.operand);
    if (element && count.className.empty() && element->selection == Element::Selection::every && !element->condition)
        return static_cast<int64_t>(countOf(containerOf(element->container, element->className), element->className));
    const auto counted = value(count.operand);
    return static_cast<int64_t>(countOf(counted, count.className.empty() ? "item" : count.className));
}

} // namespace bridge::applescript
