#include "adapters/applescript/describe.h"
#include "adapters/applescript/evaluator.h"

namespace bridge::applescript {

namespace {

ScriptError misunderstood(const Datum& target, const std::string& message) {
    const auto who = target.is<Nothing>() ? "The script" : describe(target);
    return {notUnderstood, who + " doesn’t understand the “" + message + "” message."};
}

} // namespace

Datum Evaluator::evaluate(const Call& call) {
    const auto found = m_program.handlers.find(call.name);
    if (found == m_program.handlers.end()) throw misunderstood(Nothing{}, call.spelled);
    const auto& handler = found->second;
    if (handler.parameters.size() != call.arguments.size())
        throw ScriptError(notUnderstood, "“" + call.spelled + "” takes " + std::to_string(handler.parameters.size()) +
                                             " parameters, not " + std::to_string(call.arguments.size()) + ".");
    Frame frame;
    for (size_t index = 0; index < call.arguments.size(); ++index)
        frame.variables[handler.parameters[index]] = value(call.arguments[index]);
    const Instead<Frame*> inner(m_frame, &frame);
    const Instead<Target> target(m_target, Target{});
    execute(handler.body);
    return std::move(frame.result);
}

Datum Evaluator::evaluate(const CommandCall& call) {
    Command command;
    command.name = call.name;
    auto* application = m_target.application;
    if (!application) throw misunderstood(m_target.it, call.name);
    if (call.direct)
        command.direct = give(value(call.direct));
    else if (!m_target.it.is<Nothing>() && m_target.it.object() != application)
        command.direct = give(m_target.it);
    for (const auto& [label, expression] : call.parameters)
        command.parameters.emplace_back(label, give(value(expression)));
    return bring(ask([&] { return application->perform(command, m_call); }));
}

} // namespace bridge::applescript
