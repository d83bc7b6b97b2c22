#include "adapters/applescript/evaluator.h"

namespace bridge::applescript {

Datum Evaluator::filter(const Element& element, const Datum& container) {
    if (auto found = quickFilter(element, container)) return choose(element, *found, container);
    // As many as are needed; "first track whose …" looks no further than that.
    size_t wanted = 0;
    if (element.selection == Element::Selection::at)
        if (const auto position = integerOf(value(element.key)); position > 0) wanted = static_cast<size_t>(position);
    Pool found;
    for (const auto& each : elementsOf(container, element.className)) {
        m_steps.take();
        if (holdsFor(element.condition, each)) found.push_back(each);
        if (wanted > 0 && found.size() == wanted) break;
    }
    return choose(element, found, container);
}

bool Evaluator::holdsFor(const Expression& condition, const Datum& element) {
    const Instead<Target> target(m_target, Target{element, m_target.application});
    return truthOf(value(condition));
}

// "whose persistent ID is …": the application may have an index for that.
std::optional<Evaluator::Pool> Evaluator::quickFilter(const Element& element, const Datum& container) {
    auto* object = container.object();
    const auto* chain = contentOf<Chain>(element.condition);
    if (!object || !chain || chain->links.size() != 1 || m_case == Case::considered) return std::nullopt;
    const auto& link = chain->links.front();
    const auto* property = contentOf<Property>(chain->first);
    if (!property || link.sign != Operator::equal || link.isNegated) return std::nullopt;
    const auto* self = contentOf<Self>(property->container);
    if (property->container && !(self && *self == Self::it)) return std::nullopt;
    // Anything else might say something of each element.
    if (!contentOf<Literal>(link.operand) && !contentOf<Variable>(link.operand)) return std::nullopt;
    const auto wanted = give(value(link.operand));
    const auto found = ask([&] { return object->elementsWhere(element.className, property->name, wanted, m_call); });
    if (!found) return std::nullopt;
    return Pool(found->begin(), found->end());
}

} // namespace bridge::applescript
