#include "adapters/applescript/script.h"
#include "base/text.h"
#include "tests/fakes/memory_application.h"
#include "tests/fakes/memory_vocabulary.h"
#include "tests/fuzz/fuzz.h"

namespace bridge {

namespace {

using namespace applescript;

// An application that takes whatever it's given.
std::unique_ptr<MemoryApplication> patientShop() {
    auto shop = std::make_unique<MemoryApplication>("Shop", shopVocabulary());
    for (const auto* command : {"make", "delete", "duplicate", "open"})
        shop->actions[command] = [](const Command&, ScriptCall&) { return MissingValue{}; };
    shop->actions["sell"] = [](const Command& command, ScriptCall&) { return command.direct.value_or(MissingValue{}); };
    shop->actions["fail"] = [](const Command&, ScriptCall&) -> Value { throw std::runtime_error("Broken"); };
    shop->actions["wait"] = [](const Command&, ScriptCall& call) -> Value { return call.check(), true; };
    return shop;
}

void furnish(MemoryApplication& shop) {
    shop.commands.clear();
    shop.root = std::make_shared<MemoryObject>("application");
    for (const auto* name : {"Left", "Right"}) {
        auto shelf = shop.root->add("shelf", {{"name", name}, {"id", int64_t{7}}, {"colour", Constant{"red"}}});
        for (int64_t price : {5, 10, 15})
            shelf->add("good", {{"name", "Tea"}, {"price", price}});
    }
    shop.root->properties["favourite shelf"] = ObjectPointer(shop.root->children["shelf"].front());
}

std::optional<TypedAppleScriptValue> run(const std::string& source) {
    static MemoryApplication* shop = nullptr;
    static const ApplicationList applications = [] {
        std::vector<std::unique_ptr<Application>> all;
        auto made = patientShop();
        shop = made.get();
        all.push_back(std::move(made));
        return ApplicationList(std::move(all));
    }();
    furnish(*shop);
    // Short enough for endless loops, which the fuzzer loves.
    ScriptCall call(std::chrono::milliseconds(5));
    try {
        return runScript(readScript(source, applications), applications, call);
    } catch (const ScriptError& error) {
        must(!std::string(error.what()).empty());
    } catch (const NoScriptError&) {
        must(!isUTF8(source));
    }
    return std::nullopt;
}

std::string literal(std::string_view text) {
    std::string source = "\"";
    for (const char byte : text) {
        if (byte == '\\' || byte == '"') source += '\\';
        source += byte;
    }
    return source + '"';
}

} // namespace

void fuzz(std::string_view input) {
    const std::string source(input);
    run(source);
    run("tell application \"Shop\"\n" + source + "\nend tell");
    if (!isUTF8(source)) return;
    const auto same = run(literal(source));
    must(!same || same->stringValue == source);
}

} // namespace bridge
