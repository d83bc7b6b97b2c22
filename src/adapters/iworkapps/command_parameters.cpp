#include "adapters/iworkapps/command_parameters.h"

#include "adapters/iworkapps/arguments.h"
#include "adapters/iworkapps/refusals.h"

namespace bridge::iworkapps {

const Value& required(const Command& command, std::string_view label) {
    const auto* value = command.parameter(label);
    if (!value) isMissing(std::string(label), command);
    return *value;
}

std::optional<std::string> optionalPath(const Command& command, std::string_view label) {
    const auto* value = command.parameter(label);
    return value ? std::optional(pathArgument(*value)) : std::nullopt;
}

OfficeDocument::Saving savingOf(const Command& command) {
    using Saving = OfficeDocument::Saving;
    const auto* value = command.parameter("saving");
    if (!value) return command.parameter("saving in") ? Saving::yes : Saving::ask;
    const auto* word = value->as<Constant>();
    if (word && word->name == "yes") return Saving::yes;
    if (word && word->name == "no") return Saving::no;
    if (word && word->name == "ask") return Saving::ask;
    cantMakeInto(*value, "save options");
}

const Record* recordParameter(const Command& command) {
    const auto* value = command.parameter("with properties");
    if (!value) return nullptr;
    const auto* record = value->as<Record>();
    if (!record || !*record) cantMakeInto(*value, "record");
    return record;
}

} // namespace bridge::iworkapps
