#pragma once

#include "tests/fakes/memory_object.h"

namespace bridge::applescript {

// A table with as many cells as anybody asks for, with names of one letter and a row: "B12".
class MemoryTable : public MemoryObject {
public:
    MemoryTable() : MemoryObject("table", {{"name", "Table 1"}}) {}

    ObjectPointer elementNamed(const std::string& kind, const std::string& name, ScriptCall& call) override {
        if (kind == "cell") return cell(name);
        if (kind != "range") return MemoryObject::elementNamed(kind, name, call);
        auto range = std::make_shared<MemoryObject>("range", std::map<std::string, Value>{{"name", name}});
        const auto colon = name.find(':');
        const auto first = name.substr(0, colon);
        const auto last = colon == std::string::npos ? first : name.substr(colon + 1);
        for (int row = std::stoi(first.substr(1)); row <= std::stoi(last.substr(1)); ++row)
            for (char column = first[0]; column <= last[0]; ++column)
                range->children["cell"].push_back(cell(column + std::to_string(row)));
        range->knowsAllAtOnce = knowsAllAtOnce;
        lastRange = range;
        return range;
    }

    std::shared_ptr<MemoryObject> cell(const std::string& name) {
        auto& known = m_cells[name];
        if (!known)
            known = std::make_shared<MemoryObject>("cell", std::map<std::string, Value>{{"name", name}, {"value", {}}});
        return known;
    }

    std::shared_ptr<MemoryObject> lastRange;

private:
    std::map<std::string, std::shared_ptr<MemoryObject>> m_cells;
};

} // namespace bridge::applescript
