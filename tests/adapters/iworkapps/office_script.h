#pragma once

#include "adapters/iworkapps/office_application.h"
#include "tests/fakes/fake_office.h"

#include <gtest/gtest.h>

namespace bridge::iworkapps {

// Speaks to an application as a script would, over an office program in memory. The script ends with it.
template <typename ApplicationKind> class OfficeScript : public testing::Test {
protected:
    ~OfficeScript() override {
        application.scriptEnded();
        EXPECT_EQ(office.openDocuments(), 0U);
        EXPECT_FALSE(office.wasAskedTwiceAtOnce);
    }

    using Parameters = std::vector<std::pair<std::string, Value>>;

    Value perform(const std::string& name, std::optional<Value> direct, Parameters parameters = {}) {
        return application.perform({name, std::move(direct), std::move(parameters)}, call);
    }

    ObjectPointer make(const std::string& className, Parameters parameters = {}) {
        parameters.insert(parameters.begin(), {"new", ClassName{className}});
        return std::get<ObjectPointer>(perform("make", std::nullopt, std::move(parameters)));
    }

    ObjectPointer open(const std::string& path) { return std::get<ObjectPointer>(perform("open", File{path})); }

    static Constant yes() { return {"yes"}; }
    static Constant no() { return {"no"}; }

    // The element of an element, as in "table 1 of sheet 1 of document".
    ObjectPointer at(const ObjectPointer& container, const std::string& className, size_t position) {
        return container->elementAt(className, position, call);
    }
    ObjectPointer named(const ObjectPointer& container, const std::string& className, const std::string& name) {
        return container->elementNamed(className, name, call);
    }
    Value get(const ObjectPointer& object, const std::string& property) { return object->property(property, call); }
    ObjectPointer getObject(const ObjectPointer& object, const std::string& property) {
        return std::get<ObjectPointer>(get(object, property));
    }
    void set(const ObjectPointer& object, const std::string& property, const Value& value) {
        object->setProperty(property, value, call);
    }

    office::FakeOffice office;
    OfficeSession session{office};
    ApplicationKind application{session};
    ScriptCall call;
};

// What it was refused with, or nothing.
struct Refusal {
    int number = 0;
    std::string message;
    bool operator==(const Refusal&) const = default;
};

inline void PrintTo(const Refusal& refusal, std::ostream* out) {
    *out << refusal.number << ' ' << refusal.message;
}

template <typename Action> Refusal refusalOf(Action action) {
    try {
        action();
    } catch (const ScriptError& error) {
        return {error.number().value_or(0), error.message().value_or("")};
    }
    return {};
}

} // namespace bridge::iworkapps
