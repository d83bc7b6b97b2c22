#include "adapters/applescript/describe.h"
#include "adapters/applescript/evaluator.h"

namespace bridge::applescript {

Datum& Evaluator::variable(const std::string& name) {
    const bool isShared = m_program.properties.contains(name) || m_frame->globals.contains(name);
    return (isShared ? m_globals : *m_frame).variables[name];
}

Datum* Evaluator::findVariable(const std::string& name) {
    const bool isShared = m_program.properties.contains(name) || m_frame->globals.contains(name);
    auto& variables = (isShared ? m_globals : *m_frame).variables;
    const auto found = variables.find(name);
    return found == variables.end() ? nullptr : &found->second;
}

Datum Evaluator::read(const std::string& name, const std::string& spelled) {
    if (const auto* found = findVariable(name)) return *found;
    throw ScriptError(ScriptError::undefinedVariable, "The variable " + spelled + " is not defined.");
}

Datum Evaluator::evaluate(const Variable& variable) {
    return read(variable.name, variable.spelled);
}

void Evaluator::assign(const Expression& target, const Datum& value) {
    if (const auto* name = contentOf<Variable>(target))
        variable(name->name) = value;
    else if (const auto* pattern = contentOf<ListLiteral>(target))
        assignItems(*pattern, value);
    else if (const auto* property = contentOf<Property>(target))
        assignProperty(*property, value);
    else if (const auto* element = contentOf<Element>(target))
        assignElement(*element, value);
    else
        insert(*contentOf<Insertion>(target), value);
}

// set {a, b} to {1, 2}
void Evaluator::assignItems(const ListLiteral& pattern, const Datum& value) {
    const auto* list = value.list();
    if (!list || list->items().size() < pattern.items.size())
        throw cantGet("item " + std::to_string(list ? list->items().size() + 1 : 1) + " of " + describe(value));
    const auto values = list->items();
    for (size_t index = 0; index < pattern.items.size(); ++index)
        assign(pattern.items[index], values[index]);
}

void Evaluator::assignProperty(const Property& property, const Datum& value) {
    const auto* self = contentOf<Self>(property.container);
    if ((self && *self == Self::me) || (!property.container && m_target.it.is<Nothing>())) {
        variable(property.name) = value;
        return;
    }
    setPropertyOf(containerOf(property.container, property.name), property.name, value);
}

void Evaluator::setPropertyOf(const Datum& owner, const std::string& name, const Datum& value) {
    if (auto* object = owner.object()) {
        const auto given = give(value);
        ask([&] { return object->setProperty(name, given, m_call), true; });
        return;
    }
    if (auto* record = owner.record()) return record->set(name, value);
    const auto* list = owner.list();
    if (!list || list->items().empty() || !list->items().front().object())
        throw ScriptError(cantSet, "Can’t set " + name + " of " + describe(owner) + " to " + describe(value) + ".");
    const auto owners = list->items();
    for (const auto& each : owners)
        setPropertyOf(each, name, value);
}

void Evaluator::assignElement(const Element& element, const Datum& value) {
    const auto container = containerOf(element.container, element.className);
    auto* list = container.list();
    if (!list || element.className != "item" || element.selection != Element::Selection::at || element.condition)
        throw ScriptError(cantSet, "Can’t set " + element.className + " of " + describe(container) + ".");
    const auto index = positionOf(integerOf(this->value(element.key)), list->items().size());
    if (index == 0) throw notThere(element, container);
    list->replace(index - 1, value);
}

void Evaluator::insert(const Insertion& place, const Datum& value) {
    const auto container = containerOf(place.container, "end");
    auto* list = container.list();
    if (!list) throw ScriptError(cantSet, "Can’t set the end of " + describe(container) + ".");
    if (place.place == InsertionPoint::Place::end)
        list->append(value);
    else
        list->prepend(value);
}

} // namespace bridge::applescript
