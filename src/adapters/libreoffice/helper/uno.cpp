#include "adapters/libreoffice/helper/uno.h"

namespace bridge::office {

OUString toUno(std::string_view text) {
    return OUString(text.data(), static_cast<sal_Int32>(text.size()), RTL_TEXTENCODING_UTF8);
}

std::string fromUno(const OUString& text) {
    const rtl::OString bytes = rtl::OUStringToOString(text, RTL_TEXTENCODING_UTF8);
    return {bytes.getStr(), static_cast<size_t>(bytes.getLength())};
}

Arguments makeArguments(const std::vector<std::pair<const char*, css::uno::Any>>& values) {
    Arguments arguments(static_cast<sal_Int32>(values.size()));
    auto* next = arguments.getArray();
    for (const auto& [name, value] : values) {
        next->Name = OUString::createFromAscii(name);
        next->Value = value;
        ++next;
    }
    return arguments;
}

css::uno::Any property(const Ref<css::uno::XInterface>& object, const char* name) {
    return as<css::beans::XPropertySet>(object)->getPropertyValue(OUString::createFromAscii(name));
}

void setProperty(const Ref<css::uno::XInterface>& object, const char* name, const css::uno::Any& value) {
    as<css::beans::XPropertySet>(object)->setPropertyValue(OUString::createFromAscii(name), value);
}

} // namespace bridge::office
