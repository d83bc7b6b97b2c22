#pragma once

#include "adapters/applescript/application.h"
#include "adapters/applescript/border.h"
#include "adapters/applescript/comparison.h"
#include "adapters/applescript/heap.h"
#include "adapters/applescript/instead.h"
#include "adapters/applescript/statement.h"
#include "adapters/applescript/steps.h"

#include <functional>
#include <new>
#include <random>
#include <set>
#include <unordered_map>

namespace bridge::applescript {

// The application of that name in lower case; the parser has seen that it is there.
using Applications = std::function<Application&(const std::string& name)>;

// Runs a program once. All that it can do besides computing is to talk to its applications.
class Evaluator {
public:
    Evaluator(const Program& program, const Applications& applications, ScriptCall& call);

    // What the script returns, or its last statement gave.
    TypedAppleScriptValue run();

private:
    enum class Flow { goesOn, leavesLoop, returns };
    // What is told: "it", and the application that hears commands.
    struct Target {
        Datum it;
        Application* application = nullptr;
    };
    struct Frame {
        std::unordered_map<std::string, Datum> variables;
        std::set<std::string> globals;
        Datum result;
    };
    using Pool = std::vector<Datum>;

    // Statements.
    Flow execute(const Block& block);
    Flow execute(const Statement& statement);
    Flow execute(const Evaluate& statement);
    Flow execute(const Assign& statement);
    Flow execute(const Tell& statement);
    Flow execute(const Timeout& statement);
    Flow execute(const CaseBlock& statement);
    Flow execute(const If& statement);
    Flow execute(const RepeatTimes& statement);
    Flow execute(const RepeatWhile& statement);
    Flow execute(const RepeatFrom& statement);
    Flow execute(const RepeatIn& statement);
    Flow execute(const Try& statement);
    Flow execute(const Fail& statement);
    Flow execute(const Return& statement);
    Flow execute(const ExitRepeat& statement);
    Flow execute(const Global& statement);
    std::optional<ScriptError> attempt(const Block& block, Flow& flow);
    void setErrorVariables(const Try& statement, const ScriptError& error);
    Target targetOf(const Expression& expression);

    // Variables and what else can be set.
    Datum& variable(const std::string& name);
    Datum* findVariable(const std::string& name);
    Datum read(const std::string& name, const std::string& spelled);
    void assign(const Expression& target, const Datum& value);
    void assignItems(const ListLiteral& pattern, const Datum& value);
    void assignProperty(const Property& property, const Datum& value);
    void setPropertyOf(const Datum& owner, const std::string& name, const Datum& value);
    void assignElement(const Element& element, const Datum& value);
    void insert(const Insertion& place, const Datum& value);

    // Expressions. value() is for where nothing won't do.
    Datum evaluate(const Expression& expression);
    Datum value(const Expression& expression);
    Datum evaluate(const Literal& literal);
    Datum evaluate(const ListLiteral& list);
    Datum evaluate(const RecordLiteral& record);
    Datum evaluate(const Variable& variable);
    Datum evaluate(const Self& self);
    Datum evaluate(const ApplicationName& name);
    Datum evaluate(const FileName& file);
    Datum evaluate(const Property& property);
    Datum evaluate(const Element& element);
    Datum evaluate(const Insertion& insertion);
    Datum evaluate(const Chain& chain);
    Datum evaluate(const Negation& negation);
    Datum evaluate(const Call& call);
    Datum evaluate(const CommandCall& command);
    Datum evaluate(const Count& count);
    Datum evaluate(const Existence& existence);
    Datum apply(const Chain::Link& link, const Datum& left);
    Datum compare(const Chain::Link& link, const Datum& left, const Datum& right);
    Datum concatenate(const Datum& left, const Datum& right);
    Comparison comparison() { return {m_case, m_steps}; }

    // Properties and elements.
    Datum containerOf(const Expression& expression, const std::string& what);
    std::optional<Datum> propertyAtOnce(const Property& property);
    Datum propertyOf(const Datum& owner, const std::string& name);
    Datum propertyOfList(const ListReference& list, const std::string& name);
    Datum select(const Element& element, const Datum& container);
    Datum selectFrom(Object& container, const Element& element);
    Datum filter(const Element& element, const Datum& container);
    std::optional<Pool> quickFilter(const Element& element, const Datum& container);
    bool holdsFor(const Expression& condition, const Datum& element);
    Pool elementsOf(const Datum& container, const std::string& className);
    std::optional<Datum> quickItem(const Datum& container, const std::string& className, int64_t position);
    Datum choose(const Element& element, const Pool& pool, const Datum& container);
    Datum slice(const Element& element, const Pool& pool, const Datum& container);
    Datum listOf(const Pool& pool);
    size_t positionOf(int64_t position, size_t count) const;
    size_t countOf(const Datum& container, const std::string& className);
    ScriptError notThere(const Element& element, const Datum& container);

    // Whatever an application throws becomes a ScriptError.
    template <typename Action> auto ask(Action action) {
        m_call.check();
        try {
            return action();
        } catch (const ScriptError&) {
            throw;
        } catch (const std::bad_alloc&) {
            throw memoryExhausted();
        } catch (const std::exception& error) {
            throw ScriptError(eventFailed, error.what());
        }
    }
    Datum bring(const Value& value) { return fromApplication(value, m_heap, m_steps); }
    Value give(const Datum& datum) { return toApplication(datum, m_steps); }
    void checkStack();

    // Less than any thread has, with room for what applications need.
    static constexpr size_t largestStack = 1U << 20;

    const Program& m_program;
    const Applications& m_applications;
    ScriptCall& m_call;
    Heap m_heap; // before everything that holds data
    Steps m_steps;
    Frame m_globals;
    Frame* m_frame = &m_globals;
    Target m_target;
    Case m_case = Case::ignored;
    const char* m_stack = nullptr;
    std::minstd_rand m_random{std::random_device{}()};
};

} // namespace bridge::applescript
