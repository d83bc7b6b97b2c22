#include "adapters/applescript/arithmetic.h"
#include "adapters/applescript/describe.h"
#include "adapters/applescript/evaluator.h"

namespace bridge::applescript {

Datum Evaluator::evaluate(const Expression& expression) {
    m_steps.take();
    checkStack();
    return std::visit([this](const auto& content) { return evaluate(content); }, expression->content);
}

Datum Evaluator::value(const Expression& expression) {
    auto result = evaluate(expression);
    if (result.is<Nothing>()) throw ScriptError(noResult, "No result was returned from some part of this expression.");
    return result;
}

Datum Evaluator::evaluate(const Literal& literal) {
    return bring(literal.value);
}

Datum Evaluator::evaluate(const ListLiteral& list) {
    auto made = m_heap.list();
    for (const auto& item : list.items)
        made->append(value(item));
    return made;
}

Datum Evaluator::evaluate(const RecordLiteral& record) {
    auto made = m_heap.record();
    for (const auto& [key, field] : record.fields)
        made->set(key, value(field));
    return made;
}

Datum Evaluator::evaluate(const Self& self) {
    if (self == Self::result) {
        if (!m_frame->result.is<Nothing>()) return m_frame->result;
        throw ScriptError(ScriptError::undefinedVariable, "The variable result is not defined.");
    }
    const bool isTold = self == Self::it && !m_target.it.is<Nothing>();
    return isTold ? m_target.it : Constant{"current script"};
}

Datum Evaluator::evaluate(const ApplicationName& name) {
    // It belongs to the engine, which outlives the script.
    return ObjectPointer(ObjectPointer(), &m_applications(name.name));
}

Datum Evaluator::evaluate(const FileName& file) {
    const auto path = value(file.path);
    if (const auto* same = path.as<File>()) return *same;
    constexpr size_t longest = 65536;
    auto text = textOf(path, m_steps);
    if (text.size() > longest) throw cantMake(describe(path), "file");
    return File{std::move(text)};
}

Datum Evaluator::evaluate(const Chain& chain) {
    auto result = value(chain.first);
    for (const auto& link : chain.links)
        result = apply(link, result);
    return result;
}

Datum Evaluator::apply(const Chain::Link& link, const Datum& left) {
    if (link.sign == Operator::coerce)
        return coerce(left, contentOf<Literal>(link.operand)->value.as<ClassName>()->name, m_heap, m_steps);
    if (link.sign == Operator::both && !truthOf(left)) return false;
    if (link.sign == Operator::either && truthOf(left)) return true;
    const auto right = value(link.operand);
    switch (link.sign) {
    case Operator::both:
    case Operator::either:
        return truthOf(right);
    case Operator::concatenate:
        return concatenate(left, right);
    case Operator::add:
    case Operator::subtract:
    case Operator::multiply:
    case Operator::divide:
    case Operator::quotient:
    case Operator::remainder:
    case Operator::power:
        return calculate(link.sign, left, right);
    default:
        return compare(link, left, right);
    }
}

Datum Evaluator::compare(const Chain::Link& link, const Datum& left, const Datum& right) {
    const auto holds = [&] {
        switch (link.sign) {
        case Operator::less:
            return comparison().order(left, right) < 0;
        case Operator::greater:
            return comparison().order(left, right) > 0;
        case Operator::atMost:
            return comparison().order(left, right) <= 0;
        case Operator::atLeast:
            return comparison().order(left, right) >= 0;
        case Operator::contains:
            return comparison().contains(left, right);
        case Operator::within:
            return comparison().contains(right, left);
        case Operator::beginsWith:
            return comparison().beginsWith(left, right);
        case Operator::endsWith:
            return comparison().endsWith(left, right);
        default:
            return comparison().isSame(left, right);
        }
    };
    return holds() != link.isNegated;
}

Datum Evaluator::concatenate(const Datum& left, const Datum& right) {
    if (const auto* text = left.text()) {
        const auto more = textOf(right, m_steps);
        if (text->size() + more.size() > Heap::largestText) throw memoryExhausted();
        return m_heap.text(*text + more);
    }
    const auto *record = left.record(), *other = right.record();
    if (record && other) {
        auto merged = m_heap.record();
        for (const auto* part : {other, record})
            for (size_t index = 0; index < part->size(); ++index)
                merged->set(part->key(index), part->values()[index]);
        return merged;
    }
    auto joined = m_heap.list();
    for (const auto* part : {&left, &right}) {
        const auto items = bridge::applescript::listOf(*part, m_heap);
        for (const auto& item : items->items())
            joined->append(item);
    }
    return joined;
}

Datum Evaluator::evaluate(const Negation& negation) {
    const auto operand = value(negation.operand);
    if (negation.kind == Negation::Kind::logical) return !truthOf(operand);
    return negative(operand);
}

} // namespace bridge::applescript
