#pragma once

#include "tests/fakes/memory_object.h"

namespace bridge::applescript {

// An application whose objects lie in memory: it makes, duplicates and deletes them, opens what `open` says, and keeps
// a record of every command. Its own commands are given as functions.
class MemoryApplication : public Application {
public:
    using Action = std::function<Value(const Command&, ScriptCall&)>;

    MemoryApplication(std::string name, Dictionary dictionary)
        : root(std::make_shared<MemoryObject>("application")),
          m_name(std::move(name)),
          m_dictionary(std::move(dictionary)) {
        root->properties["name"] = m_name;
    }

    std::string name() const override { return m_name; }
    const Dictionary& dictionary() const override { return m_dictionary; }
    bool isRunning() const override { return running; }
    void scriptEnded() override { ++ended; }

    std::string className() const override { return "application"; }
    std::string description() const override { return "application \"" + m_name + "\""; }
    Value property(const std::string& name, ScriptCall& call) override { return root->property(name, call); }
    void setProperty(const std::string& name, const Value& value, ScriptCall& call) override {
        root->setProperty(name, value, call);
    }
    std::vector<ObjectPointer> elements(const std::string& kind, ScriptCall& call) override {
        return root->elements(kind, call);
    }

    Value perform(const Command& command, ScriptCall& call) override {
        commands.push_back(command);
        if (const auto found = actions.find(command.name); found != actions.end()) return found->second(command, call);
        if (command.name == "make") return make(command);
        if (command.name == "delete") return remove(*command.direct), MissingValue{};
        if (command.name == "duplicate") return duplicate(command);
        if (command.name == "save" || command.name == "close") return MissingValue{};
        throw ScriptError(-1708, description() + " doesn’t understand the “" + command.name + "” message.");
    }

    // The commands in a line each, for comparing: "close document \"Plan\" saving yes".
    std::vector<std::string> said() const {
        std::vector<std::string> lines;
        for (const auto& command : commands) {
            std::string line = command.name;
            if (command.direct) line += " " + write(*command.direct);
            for (const auto& [label, value] : command.parameters)
                line += " " + label + " " + write(value);
            lines.push_back(line);
        }
        return lines;
    }
    static std::string write(const Value& value) {
        if (const auto* text = value.as<std::string>()) return "\"" + *text + "\"";
        if (const auto* integer = value.as<int64_t>()) return std::to_string(*integer);
        if (const auto* truth = value.as<bool>()) return *truth ? "true" : "false";
        if (const auto* constant = value.as<Constant>()) return constant->name;
        if (const auto* kind = value.as<ClassName>()) return kind->name;
        if (const auto* file = value.as<File>()) return "file " + file->path;
        if (const auto* object = value.as<ObjectPointer>()) return (*object)->description();
        if (const auto* point = value.as<InsertionPoint>()) return "the end of " + point->className;
        if (const auto* fields = value.as<Record>()) {
            std::string text = "{";
            for (const auto& [key, field] : **fields)
                text += (text.size() > 1 ? ", " : "") + key + ":" + write(field);
            return text + "}";
        }
        if (const auto* items = value.as<List>()) {
            std::string text = "{";
            for (const auto& item : **items)
                text += (text.size() > 1 ? ", " : "") + write(item);
            return text + "}";
        }
        return "missing value";
    }

    std::shared_ptr<MemoryObject> root;
    std::vector<Command> commands;
    std::map<std::string, Action> actions;
    // Makes a new one of the class; what is not here has no properties.
    std::map<std::string, std::function<std::shared_ptr<MemoryObject>()>> kinds;
    bool running = true;
    int ended = 0;

private:
    Value make(const Command& command) {
        const auto kind = command.parameter("new")->as<ClassName>()->name;
        const auto made = kinds.contains(kind) ? kinds[kind]() : std::make_shared<MemoryObject>(kind);
        if (const auto* with = command.parameter("with properties"))
            for (const auto& [key, value] : **with->as<Record>())
                made->properties[key] = value;
        auto* container = root.get();
        if (const auto* at = command.parameter("at"))
            container = dynamic_cast<MemoryObject*>(at->as<InsertionPoint>()->container.get());
        container->add(made);
        return ObjectPointer(made);
    }
    Value duplicate(const Command& command) {
        const auto* original = dynamic_cast<MemoryObject*>(command.direct->as<ObjectPointer>()->get());
        auto* target = dynamic_cast<MemoryObject*>(command.parameter("to")->as<ObjectPointer>()->get());
        return ObjectPointer(target->add(std::make_shared<MemoryObject>(*original)));
    }
    void remove(const Value& what) {
        if (const auto* items = what.as<List>()) {
            for (const auto& item : **items)
                remove(item);
            return;
        }
        root->remove(**what.as<ObjectPointer>());
        for (auto& [kind, all] : root->children)
            for (const auto& child : all)
                child->remove(**what.as<ObjectPointer>());
    }

    std::string m_name;
    Dictionary m_dictionary;
};

} // namespace bridge::applescript
