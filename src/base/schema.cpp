#include "base/schema.h"

#include <stdexcept>

namespace bridge {

JSONValue SchemaBook::refer(std::string_view qualifiedType, JSONValue (*body)(SchemaBook&)) {
    const std::string name(qualifiedType.substr(qualifiedType.rfind(':') + 1));
    const auto [found, isNew] = m_entries.try_emplace(name, Entry{qualifiedType, {}});
    auto& entry = found->second;
    if (entry.qualifiedType != qualifiedType)
        throw std::logic_error(std::string(qualifiedType) + " and " + std::string(entry.qualifiedType) +
                               " have the same name.");
    // It stands in the book already, so a type may contain itself.
    if (isNew) entry.schema = body(*this);
    return {JSONValue::Object{{"$ref", {std::string(place) + name}}}};
}

JSONValue::Object SchemaBook::take() {
    JSONValue::Object schemas;
    for (auto& [name, entry] : m_entries)
        schemas.emplace(name, std::move(entry.schema));
    m_entries.clear();
    return schemas;
}

namespace detail {

JSONValue arraySchema(JSONValue items) {
    return {JSONValue::Object{{"type", {"array"}}, {"items", std::move(items)}}};
}

JSONValue mapSchema(JSONValue values) {
    return {JSONValue::Object{{"type", {"object"}}, {"additionalProperties", std::move(values)}}};
}

void ObjectSchema::add(std::string_view name, bool isRequired, JSONValue schema) {
    m_properties.emplace(name, std::move(schema));
    if (isRequired) m_required.push_back({std::string(name)});
}

JSONValue ObjectSchema::take() {
    JSONValue::Object schema{{"type", {"object"}}, {"properties", {std::move(m_properties)}}};
    if (!m_required.empty()) schema.emplace("required", JSONValue{std::move(m_required)});
    return {std::move(schema)};
}

} // namespace detail

} // namespace bridge
