#include "adapters/iworkapps/model.h"

#include "adapters/iworkapps/refusals.h"

namespace bridge::iworkapps {

Value Model::property(const std::string& name, ScriptCall&) {
    if (name == "name" || name == "id") return std::string("Blank");
    cantGet(name, *this);
}

void Model::setProperty(const std::string& name, const Value& value, ScriptCall&) {
    cantSet(name, *this, value);
}

std::vector<ObjectPointer> Model::elements(const std::string& className, ScriptCall&) {
    cantGet("every " + className, *this);
}

bool Model::isSameAs(const Object& other) const {
    const auto* model = dynamic_cast<const Model*>(&other);
    return model && model->m_kind == m_kind;
}

} // namespace bridge::iworkapps
