#pragma once

#include "base/base64.h"
#include "base/date.h"
#include "base/decode_path.h"
#include "base/json_value.h"
#include "base/json_writer.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <exception>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <type_traits>
#include <variant>
#include <vector>

// Records and JSON. A record lists its fields once; encoding, decoding and the published schema walk that list:
//
//     struct ListFilesRequest {
//         std::string rootID;
//         std::optional<int64_t> limit;
//         static constexpr auto fields() {
//             return std::tuple{required("rootID", &ListFilesRequest::rootID), optional("limit",
//             &ListFilesRequest::limit)};
//         }
//     };
//     static_assert(listsEveryMember<ListFilesRequest>());
//
// Objects are written with their names in ascending byte order and without absent fields. When reading, unknown names
// are ignored and null is the same as absent. A value of the wrong shape throws DecodingError with its place.

namespace bridge {

template <typename Record, typename Member> struct RecordField {
    std::string_view name;
    Member Record::*member;
    bool isRequired;
};

template <typename> inline constexpr bool isOptional = false;
template <typename T> inline constexpr bool isOptional<std::optional<T>> = true;

template <typename Record, typename Member> consteval auto required(std::string_view name, Member Record::*member) {
    static_assert(!isOptional<Member>, "a std::optional member is optional() in the field list");
    return RecordField<Record, Member>{name, member, true};
}

template <typename Record, typename Member> consteval auto optional(std::string_view name, Member Record::*member) {
    static_assert(isOptional<Member>, "only a std::optional member can be absent");
    return RecordField<Record, Member>{name, member, false};
}

template <typename T>
concept Record = requires {
    T::fields();
};

template <Record T> constexpr size_t fieldCount = std::tuple_size_v<decltype(T::fields())>;

namespace detail {

// Never converted, but clang wants the body for types that have no linkage.
struct AnyMember {
    template <typename T> [[noreturn]] operator T() const { std::terminate(); }
};

template <typename T, typename... Members> constexpr size_t memberCount() {
    if constexpr (requires { T{Members{}..., AnyMember{}}; })
        return memberCount<T, Members..., AnyMember>();
    else
        return sizeof...(Members);
}

// The order in which a record's fields are written.
template <Record T> consteval auto sortedFields() {
    std::array<std::string_view, fieldCount<T>> names =
        std::apply([](const auto&... field) { return std::array{field.name...}; }, T::fields());
    std::array<size_t, fieldCount<T>> order{};
    for (size_t index = 0; index < order.size(); ++index)
        order[index] = index;
    for (size_t end = order.size(); end > 1; --end)
        for (size_t index = 1; index < end; ++index)
            if (names[order[index]] < names[order[index - 1]]) std::swap(order[index], order[index - 1]);
    return order;
}

} // namespace detail

// For a static_assert beside each record: a member that the field list forgets does not build.
template <Record T> consteval bool listsEveryMember() {
    return detail::memberCount<T>() == fieldCount<T>;
}

template <typename T> struct Codec;

template <typename T> void encode(JSONWriter& writer, const T& value) {
    Codec<T>::encode(writer, value);
}

template <typename T> T decode(const JSONValue& value, const DecodePath& path = {}) {
    return Codec<T>::decode(value, path);
}

template <typename T> std::string encodeJSON(const T& value) {
    JSONWriter writer;
    encode(writer, value);
    return writer.take();
}

template <> struct Codec<std::string> {
    static void encode(JSONWriter& writer, const std::string& value) { writer.string(value); }
    static std::string decode(const JSONValue& value, const DecodePath& path) {
        if (const auto* text = value.string()) return *text;
        path.fail("expected a string");
    }
};

template <> struct Codec<bool> {
    static void encode(JSONWriter& writer, bool value) { writer.boolean(value); }
    static bool decode(const JSONValue& value, const DecodePath& path) {
        if (const auto* flag = value.boolean()) return *flag;
        path.fail("expected true or false");
    }
};

template <> struct Codec<double> {
    static void encode(JSONWriter& writer, double value) { writer.number(value); }
    static double decode(const JSONValue& value, const DecodePath& path) {
        if (const auto* number = value.number()) return *number;
        path.fail("expected a number");
    }
};

template <> struct Codec<int64_t> {
    static void encode(JSONWriter& writer, int64_t value) { writer.integer(value); }
    static int64_t decode(const JSONValue& value, const DecodePath& path) {
        const auto* number = value.number();
        // 2^63 itself is a double and already too large; what is below it fits.
        constexpr double limit = 9223372036854775808.0;
        if (!number || std::trunc(*number) != *number || *number < -limit || *number >= limit)
            path.fail("expected an integer");
        return static_cast<int64_t>(*number);
    }
};

template <> struct Codec<Date> {
    static void encode(JSONWriter& writer, Date value) { writer.string(formatDate(value)); }
    static Date decode(const JSONValue& value, const DecodePath& path) {
        if (const auto* text = value.string())
            if (const auto date = parseDate(*text)) return *date;
        path.fail("expected a date such as 2026-08-14T11:28:41Z");
    }
};

// A blob of bytes; a base64 string in JSON.
struct Bytes {
    std::string value;
    bool operator==(const Bytes&) const = default;
};

template <> struct Codec<Bytes> {
    static void encode(JSONWriter& writer, const Bytes& bytes) { writer.string(encodeBase64(bytes.value)); }
    static Bytes decode(const JSONValue& value, const DecodePath& path) {
        if (const auto* text = value.string())
            if (auto bytes = decodeBase64(*text)) return {std::move(*bytes)};
        path.fail("expected base64");
    }
};

template <> struct Codec<JSONValue> {
    static void encode(JSONWriter& writer, const JSONValue& value) { bridge::encode(writer, value); }
    static JSONValue decode(const JSONValue& value, const DecodePath&) { return value; }
};

template <typename T> struct Codec<std::vector<T>> {
    static void encode(JSONWriter& writer, const std::vector<T>& values) {
        writer.beginArray();
        for (const auto& value : values)
            bridge::encode(writer, value);
        writer.endArray();
    }
    static std::vector<T> decode(const JSONValue& value, const DecodePath& path) {
        const auto* array = value.array();
        if (!array) path.fail("expected an array");
        std::vector<T> values;
        values.reserve(array->size());
        for (size_t index = 0; index < array->size(); ++index)
            values.push_back(bridge::decode<T>((*array)[index], path.index(index)));
        return values;
    }
};

template <typename T> struct Codec<std::map<std::string, T>> {
    static void encode(JSONWriter& writer, const std::map<std::string, T>& values) {
        writer.beginObject();
        for (const auto& [name, value] : values) {
            writer.name(name);
            bridge::encode(writer, value);
        }
        writer.endObject();
    }
    static std::map<std::string, T> decode(const JSONValue& value, const DecodePath& path) {
        const auto* object = value.object();
        if (!object) path.fail("expected an object");
        std::map<std::string, T> values;
        for (const auto& [name, member] : *object)
            values.emplace(name, bridge::decode<T>(member, path.key(name)));
        return values;
    }
};

// An enumeration whose cases are strings on the wire: give it `std::string_view wireName(E)` and
// `std::optional<E> fromWireName(std::string_view, std::type_identity<E>)` beside its declaration.
template <typename E>
requires std::is_enum_v<E>
struct Codec<E> {
    static void encode(JSONWriter& writer, E value) { writer.string(wireName(value)); }
    static E decode(const JSONValue& value, const DecodePath& path) {
        if (const auto* text = value.string())
            if (const auto found = fromWireName(*text, std::type_identity<E>())) return *found;
        path.fail("expected one of the known names");
    }
};

template <Record T> struct Codec<T> {
    static void encode(JSONWriter& writer, const T& record) {
        constexpr auto order = detail::sortedFields<T>();
        writer.beginObject();
        [&]<size_t... I>(std::index_sequence<I...>) {
            (encodeField(writer, record, std::get<order[I]>(T::fields())), ...);
        }
        (std::make_index_sequence<order.size()>());
        writer.endObject();
    }

    static T decode(const JSONValue& value, const DecodePath& path) {
        const auto* object = value.object();
        if (!object) path.fail("expected an object");
        T record;
        std::apply([&](const auto&... field) { (decodeField(*object, record, field, path), ...); }, T::fields());
        return record;
    }

private:
    template <typename Member>
    static void encodeField(JSONWriter& writer, const T& record, const RecordField<T, Member>& field) {
        const auto& member = record.*field.member;
        if constexpr (isOptional<Member>) {
            if (!member) return;
            writer.name(field.name);
            bridge::encode(writer, *member);
        } else {
            writer.name(field.name);
            bridge::encode(writer, member);
        }
    }

    template <typename Member>
    static void decodeField(const JSONValue::Object& object, T& record, const RecordField<T, Member>& field,
                            const DecodePath& path) {
        const auto found = object.find(field.name);
        const bool absent = found == object.end() || found->second.isNull();
        if constexpr (isOptional<Member>) {
            if (!absent)
                record.*field.member = bridge::decode<typename Member::value_type>(found->second, path.key(field.name));
        } else {
            if (absent) path.key(field.name).fail("required, but missing");
            record.*field.member = bridge::decode<Member>(found->second, path.key(field.name));
        }
    }
};

} // namespace bridge
