#pragma once

#include <span>

namespace bridge::playground {

// What a step needs of the machine beyond the bridge itself.
enum class Needs { nothing, places, directions };

// A text "$name" in a payload stands for a value: the tour's own, or the id that an earlier step's result had, or
// the first record of its list, under the name that the step kept it by. `code` is what the answer's error must be;
// empty for success.
struct Step {
    const char* operation;
    const char* payload = nullptr;
    bool confirmed = false;
    const char* code = "";
    const char* keep = nullptr;
    Needs needs = Needs::nothing;
};

// What is to be seen, in an order in which each step finds what it needs.
std::span<const Step> tourSteps();

} // namespace bridge::playground
