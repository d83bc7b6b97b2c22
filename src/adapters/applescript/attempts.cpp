#include "adapters/applescript/evaluator.h"

namespace bridge::applescript {

std::optional<ScriptError> Evaluator::attempt(const Block& block, Flow& flow) {
    try {
        flow = execute(block);
        return std::nullopt;
    } catch (const ScriptError& error) {
        return error;
    } catch (const std::bad_alloc&) {
        return memoryExhausted();
    }
}

Evaluator::Flow Evaluator::execute(const Try& statement) {
    auto flow = Flow::goesOn;
    const auto error = attempt(statement.body, flow);
    if (!error) return flow;
    // When the time is over it is over for whatever would be done about it.
    m_call.check();
    if (const auto* literal = contentOf<Literal>(statement.number)) {
        const auto* number = literal->value.as<int64_t>();
        if (!number || *number != error->number()) throw ScriptError(*error);
    }
    setErrorVariables(statement, *error);
    return execute(statement.onError);
}

void Evaluator::setErrorVariables(const Try& statement, const ScriptError& error) {
    if (statement.message) assign(statement.message, m_heap.text(error.message().value_or(error.what())));
    if (contentOf<Variable>(statement.number)) assign(statement.number, int64_t{error.number().value_or(eventFailed)});
    for (const auto& other : statement.others)
        assign(other, MissingValue{});
}

Datum Evaluator::evaluate(const Existence& existence) {
    try {
        const auto found = value(existence.operand);
        const auto* list = found.list();
        return !list || !list->items().empty();
    } catch (const ScriptError& error) {
        if (error.number() != ScriptError::noSuchObject && error.number() != invalidIndex) throw;
        return false;
    }
}

} // namespace bridge::applescript
