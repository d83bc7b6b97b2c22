#include "adapters/iworkapps/pages_document.h"

#include "adapters/iworkapps/arguments.h"

namespace bridge::iworkapps {

Value PagesDocument::property(const std::string& name, ScriptCall& call) {
    if (name == "body text") return office(call).bodyText(id(), call);
    return OfficeDocument::property(name, call);
}

void PagesDocument::setProperty(const std::string& name, const Value& value, ScriptCall& call) {
    if (name != "body text") return OfficeDocument::setProperty(name, value, call);
    const auto text = textArgument(value);
    auto& office = this->office(call);
    markChanged();
    office.setBodyText(id(), text, call);
}

} // namespace bridge::iworkapps
