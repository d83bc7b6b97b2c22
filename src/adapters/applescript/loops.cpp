#include "adapters/applescript/evaluator.h"
#include "adapters/applescript/numbers.h"

namespace bridge::applescript {

namespace {

// i + step, or nullopt when that is beyond all numbers, and so beyond the end of the loop.
std::optional<int64_t> next(int64_t position, int64_t step) {
    int64_t sum = 0;
    return __builtin_add_overflow(position, step, &sum) ? std::nullopt : std::optional(sum);
}

std::optional<double> next(double position, double step) {
    return position + step;
}

} // namespace

Evaluator::Flow Evaluator::execute(const RepeatTimes& statement) {
    const int64_t times = statement.times ? integerOf(value(statement.times)) : 0;
    for (int64_t time = 0; !statement.times || time < times; ++time) {
        m_steps.take();
        const auto flow = execute(statement.body);
        if (flow == Flow::returns) return flow;
        if (flow == Flow::leavesLoop) break;
    }
    return Flow::goesOn;
}

Evaluator::Flow Evaluator::execute(const RepeatWhile& statement) {
    while (truthOf(value(statement.condition)) != statement.endsWhen) {
        m_steps.take();
        const auto flow = execute(statement.body);
        if (flow == Flow::returns) return flow;
        if (flow == Flow::leavesLoop) break;
    }
    return Flow::goesOn;
}

Evaluator::Flow Evaluator::execute(const RepeatFrom& statement) {
    const auto first = numberOf(value(statement.first));
    const auto last = numberOf(value(statement.last));
    const auto step = statement.step ? numberOf(value(statement.step)) : Datum(int64_t{1});
    const auto loop = [&](auto position, auto end, auto by) {
        while (by < 0 ? position >= end : position <= end) {
            m_steps.take();
            assign(statement.variable, position);
            const auto flow = execute(statement.body);
            if (flow == Flow::returns) return flow;
            const auto following = next(position, by);
            if (flow == Flow::leavesLoop || !following) break;
            position = *following;
        }
        return Flow::goesOn;
    };
    if (first.is<int64_t>() && last.is<int64_t>() && step.is<int64_t>())
        return loop(*first.as<int64_t>(), *last.as<int64_t>(), *step.as<int64_t>());
    return loop(asReal(first), asReal(last), asReal(step));
}

Evaluator::Flow Evaluator::execute(const RepeatIn& statement) {
    const auto source = value(statement.list);
    const auto list = source.text() ? listOf(elementsOf(source, "character")) : source;
    const auto items = bridge::applescript::listOf(list, m_heap);
    // As many as there are now: a loop that appends to its own list ends.
    const size_t count = items->items().size();
    for (size_t index = 0; index < count && index < items->items().size(); ++index) {
        m_steps.take();
        assign(statement.variable, items->items()[index]);
        const auto flow = execute(statement.body);
        if (flow == Flow::returns) return flow;
        if (flow == Flow::leavesLoop) break;
    }
    return Flow::goesOn;
}

} // namespace bridge::applescript
