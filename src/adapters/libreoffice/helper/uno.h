#pragma once

#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/uno/Any.hxx>
#include <com/sun/star/uno/Reference.hxx>
#include <com/sun/star/uno/Sequence.hxx>
#include <rtl/ustring.hxx>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

// Short words for what is said often to LibreOffice.
namespace bridge::office {

namespace css = com::sun::star;
using rtl::OUString;
template <typename T> using Ref = css::uno::Reference<T>;

OUString toUno(std::string_view text);
std::string fromUno(const OUString& text);

// Throws css::uno::RuntimeException when the object doesn't offer it.
template <typename T> Ref<T> as(const css::uno::Reference<css::uno::XInterface>& object) {
    return Ref<T>(object, css::uno::UNO_QUERY_THROW);
}

using Arguments = css::uno::Sequence<css::beans::PropertyValue>;
Arguments makeArguments(const std::vector<std::pair<const char*, css::uno::Any>>& values);

css::uno::Any property(const Ref<css::uno::XInterface>& object, const char* name);
void setProperty(const Ref<css::uno::XInterface>& object, const char* name, const css::uno::Any& value);

template <typename T> Ref<T> element(const Ref<css::uno::XInterface>& list, sal_Int32 position) {
    return Ref<T>(as<css::container::XIndexAccess>(list)->getByIndex(position), css::uno::UNO_QUERY_THROW);
}

} // namespace bridge::office
