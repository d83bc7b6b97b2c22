#pragma once

#include "adapters/applescript/dictionary.h"
#include "adapters/applescript/script_call.h"
#include "adapters/applescript/value.h"
#include "platform/script_engine.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bridge::applescript {

// Something of an application that a script can point at: a document, a slide, a track. All calls happen on the
// script's thread, and may block as long as the call has time left. Whatever fails throws ScriptError.
class Object {
public:
    virtual ~Object() = default;

    virtual std::string className() const = 0;

    // For error messages: "slide 2 of document \"Plan\"".
    virtual std::string description() const = 0;

    virtual Value property(const std::string& name, ScriptCall& call) = 0;
    virtual void setProperty(const std::string& name, const Value& value, ScriptCall& call) = 0;

    // All elements of the class, in order.
    virtual std::vector<ObjectPointer> elements(const std::string& className, ScriptCall& call) = 0;
    // nullptr when there is no such one. Positions begin with 1. What is not overridden looks through elements().
    virtual ObjectPointer elementAt(const std::string& className, size_t position, ScriptCall& call);
    virtual ObjectPointer elementNamed(const std::string& className, const std::string& name, ScriptCall& call);
    virtual ObjectPointer elementWithID(const std::string& className, const Value& id, ScriptCall& call);
    virtual size_t count(const std::string& className, ScriptCall& call);
    // A property of every element at once; nullopt when it has no faster way than to ask each.
    virtual std::optional<std::vector<Value>> propertyOfElements(const std::string& className, const std::string& name,
                                                                 ScriptCall& call);
    // The elements whose property is the value; nullopt when it has no faster way than to ask each.
    virtual std::optional<std::vector<ObjectPointer>>
    elementsWhere(const std::string& className, const std::string& property, const Value& value, ScriptCall& call);

    // Whether both are the same thing of the application.
    virtual bool isSameAs(const Object& other) const { return this == &other; }
};

// One command as the script gave it. Objects that were pointed at are found already.
struct Command {
    std::string name; // "export"
    // The direct parameter; otherwise the target of the tell, and nothing when that is the application itself.
    std::optional<Value> direct = std::nullopt;
    std::vector<std::pair<std::string, Value>> parameters; // by label: {"to", File{…}}

    const Value* parameter(std::string_view label) const;
};

// An application that scripts can talk to. It belongs to one engine and is used by one script at a time, each from
// its first word to it until the script ends.
class Application : public Object {
public:
    // As scripts write it, "Music"; looked up without regard to case.
    virtual std::string name() const = 0;
    virtual const Dictionary& dictionary() const = 0;
    // On the main thread; never starts it.
    virtual bool isRunning() const = 0;

    // Does what isn't get, set, count or exists, which the language does by means of the objects. Throws -1708 for
    // what it doesn't understand.
    virtual Value perform(const Command& command, ScriptCall& call) = 0;

    // The script is over, in whatever way. Gives back what the script has left open. Must not throw.
    virtual void scriptEnded() = 0;
};

} // namespace bridge::applescript
