#pragma once

#include "adapters/applescript/application.h"

#include <algorithm>
#include <functional>
#include <map>

namespace bridge::applescript {

// An object of an application that lies in memory. It remembers what it was asked.
class MemoryObject : public Object {
public:
    explicit MemoryObject(std::string className, std::map<std::string, Value> its = {})
        : properties(std::move(its)), m_class(std::move(className)) {}

    std::string className() const override { return m_class; }
    std::string description() const override {
        const auto name = properties.find("name");
        if (name == properties.end() || !name->second.is<std::string>()) return m_class;
        return m_class + " \"" + *name->second.as<std::string>() + "\"";
    }
    Value property(const std::string& name, ScriptCall&) override {
        ++asked;
        const auto found = properties.find(name);
        if (found == properties.end()) throw noSuch(name);
        return found->second;
    }
    void setProperty(const std::string& name, const Value& value, ScriptCall&) override {
        if (refused == name) throw ScriptError(-10006, "Can’t set " + name + " of " + description() + ".");
        properties[name] = value;
    }
    std::vector<ObjectPointer> elements(const std::string& kind, ScriptCall&) override {
        ++asked;
        const auto& found = children[kind];
        return {found.begin(), found.end()};
    }
    std::optional<std::vector<Value>> propertyOfElements(const std::string& kind, const std::string& name,
                                                         ScriptCall& call) override {
        if (!knowsAllAtOnce) return std::nullopt;
        ++askedAtOnce;
        std::vector<Value> values;
        for (const auto& child : children[kind])
            values.push_back(child->property(name, call));
        return values;
    }
    std::optional<std::vector<ObjectPointer>> elementsWhere(const std::string& kind, const std::string& name,
                                                            const Value& value, ScriptCall&) override {
        if (!knowsAllAtOnce || !value.is<std::string>()) return std::nullopt;
        ++askedAtOnce;
        std::vector<ObjectPointer> found;
        for (const auto& child : children[kind])
            if (const auto* text = child->properties[name].as<std::string>(); text && *text == *value.as<std::string>())
                found.push_back(child);
        return found;
    }

    std::shared_ptr<MemoryObject> add(std::shared_ptr<MemoryObject> child) {
        children[child->className()].push_back(child);
        return child;
    }
    std::shared_ptr<MemoryObject> add(std::string kind, std::map<std::string, Value> its) {
        return add(std::make_shared<MemoryObject>(std::move(kind), std::move(its)));
    }
    void remove(const Object& child) {
        for (auto& [kind, all] : children)
            std::erase_if(all, [&](const auto& each) { return each.get() == &child; });
    }

    std::map<std::string, Value> properties;
    std::map<std::string, std::vector<std::shared_ptr<MemoryObject>>> children;
    bool knowsAllAtOnce = false;
    std::string refused; // a property that can't be set
    int asked = 0, askedAtOnce = 0;

protected:
    ScriptError noSuch(const std::string& what) const {
        return {ScriptError::noSuchObject, "Can’t get " + what + " of " + description() + "."};
    }

private:
    std::string m_class;
};

} // namespace bridge::applescript
