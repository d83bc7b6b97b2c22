#pragma once

#include "adapters/applescript/script.h"
#include "tests/fakes/memory_application.h"
#include "tests/fakes/memory_table.h"
#include "tests/fakes/memory_vocabulary.h"

#include <gmock/gmock.h>

namespace bridge::applescript {

// Runs scripts on this thread against applications that lie in memory.
class ScriptTest : public testing::Test {
protected:
    TypedAppleScriptValue run(const std::string& source) {
        ScriptCall call;
        return runScript(readScript(source, applications), applications, call);
    }
    // What the script gives as text; for a list the texts of its items.
    std::string text(const std::string& source) { return write(run(source)); }
    std::string errorText(const std::string& source) {
        try {
            run(source);
        } catch (const ScriptError& error) {
            return error.what();
        }
        return "no error";
    }
    int errorNumber(const std::string& source) {
        try {
            run(source);
        } catch (const ScriptError& error) {
            return error.number().value_or(0);
        }
        return 1;
    }

    static std::string write(const TypedAppleScriptValue& value) {
        if (value.items.empty()) return value.isNull ? "null" : value.stringValue.value_or("absent");
        std::string items;
        for (const auto& item : value.items)
            items += (items.empty() ? "" : ", ") + write(item);
        return "{" + items + "}";
    }

    ApplicationList applications{made()};
    MemoryApplication* pages = named("Pages");
    MemoryApplication* numbers = named("Numbers");
    MemoryApplication* keynote = named("Keynote");
    MemoryApplication* music = named("Music");
    MemoryApplication* shop = named("Shop");

private:
    static std::vector<std::unique_ptr<Application>> made() {
        std::vector<std::unique_ptr<Application>> all;
        for (const auto* name : {"Pages", "Numbers", "Keynote"})
            all.push_back(std::make_unique<MemoryApplication>(name, officeVocabulary()));
        all.push_back(std::make_unique<MemoryApplication>("Music", musicVocabulary()));
        all.push_back(std::make_unique<MemoryApplication>("Shop", shopVocabulary()));
        return all;
    }
    MemoryApplication* named(const std::string& name) {
        return dynamic_cast<MemoryApplication*>(applications.find(name));
    }
};

} // namespace bridge::applescript
