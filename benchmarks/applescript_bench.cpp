#include "adapters/applescript/script.h"
#include "benchmarks/measure.h"
#include "tests/fakes/memory_application.h"
#include "tests/fakes/memory_table.h"
#include "tests/fakes/memory_vocabulary.h"

#include <cstdlib>
#include <fmt/format.h>

namespace {

using namespace bridge;
using namespace bridge::applescript;
using namespace bridge::bench;

constexpr int cells = 10'000;
constexpr int columns = 26;

std::string cellName(int number) {
    return fmt::format("{:c}{}", 'A' + number % columns, number / columns + 1);
}

std::string statements() {
    std::string source;
    for (int number = 0; number < cells; ++number)
        source += fmt::format("set value of cell \"{}\" to \"{}.5\"\n", cellName(number), number);
    return source;
}

// An application with a table that takes every value, and a script that fills it.
struct Filling {
    Filling() {
        auto application = std::make_unique<MemoryApplication>("Numbers", officeVocabulary());
        numbers = application.get();
        numbers->root->add(table);
        std::vector<std::unique_ptr<Application>> all;
        all.push_back(std::move(application));
        applications.emplace(std::move(all));
    }

    Program read() const { return readScript(source, *applications); }
    void run(const Program& program) const {
        ScriptCall call;
        runScript(program, *applications, call);
    }
    void fillDirectly() const {
        ScriptCall call;
        for (int number = 0; number < cells; ++number)
            table->elementNamed("cell", cellName(number), call)
                ->setProperty("value", std::to_string(number) + ".5", call);
    }

    std::shared_ptr<MemoryTable> table = std::make_shared<MemoryTable>();
    MemoryApplication* numbers = nullptr;
    std::optional<ApplicationList> applications;
    const std::string source = "tell application \"Numbers\"\ntell table 1\n" + statements() + "end tell\nend tell";
};

double milliseconds(const std::function<void()>& action) {
    return secondsFor(action) * 1e3;
}

} // namespace

int main() {
    constexpr int rounds = 21;
    const Filling filling;
    const auto program = filling.read();
    filling.run(program);

    const auto bare = [&] { return milliseconds([&] { filling.fillDirectly(); }); };
    report("10,000 cells set by a script that is read, against calls",
           compare(rounds, bare, [&] { return milliseconds([&] { filling.run(program); }); }), "ms");
    report("10,000 cells set by a script, reading included, against calls",
           compare(rounds, bare, [&] { return milliseconds([&] { filling.run(filling.read()); }); }), "ms");
    return EXIT_SUCCESS;
}
