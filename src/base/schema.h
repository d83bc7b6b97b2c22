#pragma once

#include "base/record.h"
#include "base/url.h"

// What a type looks like in JSON, as JSON Schema 2020-12 says it. There is a Schema for whatever has a Codec, and those
// of records come from their field lists, so that a description can't differ from what is read and written:
//
//     SchemaBook book;
//     const JSONValue list = book.describe<std::vector<ListFilesRequest>>();
//     // {"items":{"$ref":"#/components/schemas/ListFilesRequest"},"type":"array"}, and the book knows ListFilesRequest

namespace bridge {

template <typename T> struct Schema;

// Gathers the schemas that have names, each once, for the place that references point to.
class SchemaBook {
public:
    static constexpr std::string_view place = "#/components/schemas/";

    template <typename T> JSONValue describe() { return Schema<T>::describe(*this); }

    // A reference to the schema of a type, which `body` makes when it is not in the book yet. The book's name is the
    // type's without its namespaces. Throws std::logic_error when another type has the name.
    JSONValue refer(std::string_view qualifiedType, JSONValue (*body)(SchemaBook&));

    // By name.
    JSONValue::Object take();

private:
    struct Entry {
        std::string_view qualifiedType;
        JSONValue schema;
    };
    std::map<std::string, Entry, std::less<>> m_entries;
};

namespace detail {

// With its namespaces. Both compilers write "... T = bridge::Date]" here, g++ maybe with more after a semicolon.
template <typename T> consteval std::string_view typeName() {
    std::string_view text = __PRETTY_FUNCTION__;
    constexpr std::string_view before = "T = ";
    text.remove_prefix(text.find(before) + before.size());
    return text.substr(0, text.find_first_of(";]"));
}

JSONValue arraySchema(JSONValue items);
JSONValue mapSchema(JSONValue values);

class ObjectSchema {
public:
    void add(std::string_view name, bool isRequired, JSONValue schema);
    JSONValue take();

private:
    JSONValue::Object m_properties;
    JSONValue::Array m_required; // in the order of the field list
};

} // namespace detail

template <> struct Schema<std::string> {
    static JSONValue describe(SchemaBook&) { return parseJSON(R"({"type":"string"})"); }
};

template <> struct Schema<bool> {
    static JSONValue describe(SchemaBook&) { return parseJSON(R"({"type":"boolean"})"); }
};

template <> struct Schema<double> {
    static JSONValue describe(SchemaBook&) { return parseJSON(R"({"type":"number"})"); }
};

template <> struct Schema<int64_t> {
    static JSONValue describe(SchemaBook&) { return parseJSON(R"({"type":"integer"})"); }
};

template <> struct Schema<Date> {
    static JSONValue describe(SchemaBook&) { return parseJSON(R"({"type":"string","format":"date-time"})"); }
};

template <> struct Schema<Bytes> {
    static JSONValue describe(SchemaBook&) { return parseJSON(R"({"type":"string","contentEncoding":"base64"})"); }
};

template <> struct Schema<URL> {
    static JSONValue describe(SchemaBook&) { return parseJSON(R"({"type":"string","format":"uri"})"); }
};

// Any value at all.
template <> struct Schema<JSONValue> {
    static JSONValue describe(SchemaBook&) { return parseJSON("{}"); }
};

template <typename T> struct Schema<std::vector<T>> {
    static JSONValue describe(SchemaBook& book) { return detail::arraySchema(book.describe<T>()); }
};

template <typename T> struct Schema<std::map<std::string, T>> {
    static JSONValue describe(SchemaBook& book) { return detail::mapSchema(book.describe<T>()); }
};

// An enumeration says its names: give it `wireNames(std::type_identity<E>)`, a range of std::string_view, beside its
// wireName.
template <typename E>
requires std::is_enum_v<E>
struct Schema<E> {
    static JSONValue describe(SchemaBook& book) { return book.refer(detail::typeName<E>(), &body); }

private:
    static JSONValue body(SchemaBook&) {
        JSONValue::Array names;
        for (const std::string_view name : wireNames(std::type_identity<E>()))
            names.push_back({std::string(name)});
        return {JSONValue::Object{{"type", {"string"}}, {"enum", {std::move(names)}}}};
    }
};

template <Record T> struct Schema<T> {
    static JSONValue describe(SchemaBook& book) {
        static_assert(detail::typeName<T>().find('<') == std::string_view::npos, "a template has no name of its own");
        return book.refer(detail::typeName<T>(), &body);
    }

    // The schema itself in place of a reference to it.
    static JSONValue body(SchemaBook& book) {
        detail::ObjectSchema object;
        std::apply([&](const auto&... field) { (add(object, field, book), ...); }, T::fields());
        return object.take();
    }

private:
    template <typename Member>
    static void add(detail::ObjectSchema& object, const RecordField<T, Member>& field, SchemaBook& book) {
        if constexpr (isOptional<Member>)
            object.add(field.name, field.isRequired, book.describe<typename Member::value_type>());
        else
            object.add(field.name, field.isRequired, book.describe<Member>());
    }
};

} // namespace bridge
