#include "adapters/applescript/evaluator.h"

#include "adapters/applescript/numbers.h"

#include <algorithm>
#include <cmath>

namespace bridge::applescript {

Evaluator::Evaluator(const Program& program, const Applications& applications, ScriptCall& call)
    : m_program(program), m_applications(applications), m_call(call), m_steps(call) {}

TypedAppleScriptValue Evaluator::run() {
    const ScriptCall::Limit limit(m_call, ScriptCall::usualTime);
    m_stack = static_cast<const char*>(__builtin_frame_address(0));
    execute(m_program.body);
    return resultOf(m_globals.result, m_steps);
}

void Evaluator::checkStack() {
    const auto* here = static_cast<const char*>(__builtin_frame_address(0));
    if (static_cast<size_t>(std::abs(m_stack - here)) > largestStack) throw tooDeep();
}

Evaluator::Flow Evaluator::execute(const Block& block) {
    for (const auto& statement : block)
        if (const auto flow = execute(statement); flow != Flow::goesOn) return flow;
    return Flow::goesOn;
}

Evaluator::Flow Evaluator::execute(const Statement& statement) {
    m_steps.take();
    checkStack();
    return std::visit([this](const auto& content) { return execute(content); }, statement.content);
}

Evaluator::Flow Evaluator::execute(const Evaluate& statement) {
    m_frame->result = evaluate(statement.expression);
    return Flow::goesOn;
}

Evaluator::Flow Evaluator::execute(const Assign& statement) {
    auto assigned = value(statement.value);
    assign(statement.target, assigned);
    m_frame->result = std::move(assigned);
    return Flow::goesOn;
}

Evaluator::Target Evaluator::targetOf(const Expression& expression) {
    if (const auto* self = contentOf<Self>(expression); self && *self == Self::me) return {};
    Target target{value(expression), m_target.application};
    // Whose object it is, if the expression says that.
    for (const auto* part = &expression; *part;) {
        if (const auto* name = contentOf<ApplicationName>(*part)) target.application = &m_applications(name->name);
        if (const auto* property = contentOf<Property>(*part))
            part = &property->container;
        else if (const auto* element = contentOf<Element>(*part))
            part = &element->container;
        else
            break;
    }
    return target;
}

Evaluator::Flow Evaluator::execute(const Tell& statement) {
    const Instead<Target> target(m_target, targetOf(statement.target));
    return execute(statement.body);
}

Evaluator::Flow Evaluator::execute(const Timeout& statement) {
    constexpr double longest = 1e6; // beyond what any script has
    const double seconds = std::clamp(asReal(numberOf(value(statement.seconds))), 0.0, longest);
    const std::chrono::duration<double> time(seconds);
    const ScriptCall::Limit limit(m_call, std::chrono::duration_cast<ScriptCall::Clock::duration>(time));
    return execute(statement.body);
}

Evaluator::Flow Evaluator::execute(const CaseBlock& statement) {
    const Instead<Case> letterCase(m_case, statement.letterCase.value_or(m_case));
    return execute(statement.body);
}

Evaluator::Flow Evaluator::execute(const If& statement) {
    for (const auto& branch : statement.branches)
        if (!branch.condition || truthOf(value(branch.condition))) return execute(branch.body);
    return Flow::goesOn;
}

Evaluator::Flow Evaluator::execute(const Fail& statement) {
    const auto number = statement.number ? std::optional(integerOf(value(statement.number))) : std::nullopt;
    std::string message =
        number ? "An error of type " + std::to_string(*number) + " has occurred." : "An error has occurred.";
    if (statement.message) message = textOf(value(statement.message), m_steps);
    throw ScriptError(static_cast<int>(number.value_or(generalError)), message);
}

Evaluator::Flow Evaluator::execute(const Return& statement) {
    m_frame->result = statement.value ? value(statement.value) : Nothing{};
    return Flow::returns;
}

Evaluator::Flow Evaluator::execute(const ExitRepeat&) {
    return Flow::leavesLoop;
}

Evaluator::Flow Evaluator::execute(const Global& statement) {
    m_frame->globals.insert(statement.names.begin(), statement.names.end());
    return Flow::goesOn;
}

} // namespace bridge::applescript
