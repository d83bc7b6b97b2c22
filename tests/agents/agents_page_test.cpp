#include "server/operation.h"
#include "server/wire_errors.h"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

namespace bridge {

namespace {

// The rows of the table below the given heading, up to the text that the code doesn't know.
std::vector<std::string> rowsBelow(const std::string& heading, int columns) {
    std::ifstream page(BRIDGE_DOCS "/agents.md");
    std::vector<std::string> rows;
    std::string line;
    while (std::getline(page, line) && line != heading) {
    }
    while (std::getline(page, line) && !line.starts_with("## ")) {
        if (!line.starts_with("| `")) continue;
        size_t end = 0;
        for (int column = 0; column < columns; ++column)
            end = line.find(" |", end + 1);
        rows.push_back(line.substr(0, end));
    }
    return rows;
}

std::string quoted(std::string_view text) {
    return "`" + std::string(text) + "`";
}

std::string capabilitiesOf(const Operation& operation) {
    if (operation.capability) return quoted(rawValue(*operation.capability));
    std::string names;
    for (const auto capability : operation.dependentCapabilities)
        names += (names.empty() ? "" : ", ") + quoted(rawValue(capability));
    return names.empty() ? "none" : names;
}

std::string confirmationOf(const Operation& operation) {
    switch (operation.confirm) {
    case Confirm::never:
        return "";
    case Confirm::always:
        return "always";
    case Confirm::whenOverwriting:
        return "with `overwrite`";
    }
    return "?";
}

TEST(AgentsPage, SaysOfEveryErrorWhatToDo) {
    std::vector<std::string> expected;
    for (const auto& error : everyWireError())
        expected.push_back("| " + quoted(error.code) + " | " + std::to_string(error.status));
    EXPECT_THAT(rowsBelow("## Refusals, and what to do", 2), testing::UnorderedElementsAreArray(expected));
}

TEST(AgentsPage, SaysOfEveryOperationWhatItNeeds) {
    std::vector<std::string> expected;
    for (const auto group : operationGroups())
        for (const auto& operation : group) {
            const auto confirmation = confirmationOf(operation);
            expected.push_back("| " + quoted(operation.name) + " | " + capabilitiesOf(operation) + " |" +
                               (confirmation.empty() ? "" : " " + confirmation));
        }
    EXPECT_THAT(rowsBelow("## What there is", 3), testing::ElementsAreArray(expected));
}

} // namespace

} // namespace bridge
