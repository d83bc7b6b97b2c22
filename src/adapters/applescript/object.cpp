#include "adapters/applescript/application.h"
#include "adapters/applescript/text_comparison.h"

#include <algorithm>

namespace bridge::applescript {

namespace {

std::optional<double> numberOf(const Value& value) {
    if (const auto* integer = value.as<int64_t>()) return static_cast<double>(*integer);
    if (const auto* real = value.as<double>()) return *real;
    return std::nullopt;
}

bool isSameID(const Value& one, const Value& other) {
    if (const auto* left = one.as<std::string>(), *right = other.as<std::string>(); left && right)
        return isSameText(*left, *right);
    const auto left = numberOf(one);
    return left && left == numberOf(other);
}

template <typename Matches>
ObjectPointer find(Object& container, const std::string& className, ScriptCall& call, Matches matches) {
    for (auto& element : container.elements(className, call)) {
        call.check();
        if (matches(*element)) return std::move(element);
    }
    return nullptr;
}

} // namespace

ObjectPointer Object::elementAt(const std::string& className, size_t position, ScriptCall& call) {
    auto all = elements(className, call);
    return position >= 1 && position <= all.size() ? std::move(all[position - 1]) : nullptr;
}

ObjectPointer Object::elementNamed(const std::string& className, const std::string& name, ScriptCall& call) {
    return find(*this, className, call, [&](Object& element) {
        const auto its = element.property("name", call);
        const auto* text = its.as<std::string>();
        return text && isSameText(*text, name);
    });
}

ObjectPointer Object::elementWithID(const std::string& className, const Value& id, ScriptCall& call) {
    return find(*this, className, call, [&](Object& element) { return isSameID(element.property("id", call), id); });
}

size_t Object::count(const std::string& className, ScriptCall& call) {
    return elements(className, call).size();
}

std::optional<std::vector<Value>> Object::propertyOfElements(const std::string&, const std::string&, ScriptCall&) {
    return std::nullopt;
}

std::optional<std::vector<ObjectPointer>> Object::elementsWhere(const std::string&, const std::string&, const Value&,
                                                                ScriptCall&) {
    return std::nullopt;
}

const Value* Command::parameter(std::string_view label) const {
    const auto found = std::find_if(parameters.begin(), parameters.end(),
                                    [&](const auto& parameter) { return parameter.first == label; });
    return found == parameters.end() ? nullptr : &found->second;
}

} // namespace bridge::applescript
