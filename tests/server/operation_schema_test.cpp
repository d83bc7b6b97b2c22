#include "server/operation_rows.h"
#include "server/payloads.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

namespace bridge {
namespace {

using Object = JSONValue::Object;
using Array = JSONValue::Array;

template <typename Action> void forEachOperation(Action action) {
    for (const auto group : operationGroups())
        for (const auto& row : group)
            action(row);
}

// A schema with the book that its references point into.
struct Described {
    JSONValue schema;
    Object book;

    explicit Described(JSONValue (*describe)(SchemaBook&)) {
        SchemaBook schemas;
        schema = describe(schemas);
        book = schemas.take();
    }

    const Object& resolve(const JSONValue& place) const {
        const auto& object = *place.object();
        const auto reference = object.find("$ref");
        if (reference == object.end()) return object;
        return *book.find(reference->second.string()->substr(SchemaBook::place.size()))->second.object();
    }
    const Object& whole() const { return resolve(schema); }
};

const Object& propertiesOf(const Object& schema) {
    return *schema.find("properties")->second.object();
}

bool isRequired(const Object& schema, const std::string& name) {
    const auto found = schema.find("required");
    if (found == schema.end()) return false;
    const auto& names = *found->second.array();
    return std::find(names.begin(), names.end(), JSONValue{name}) != names.end();
}

std::string typeOf(const Object& schema) {
    const auto found = schema.find("type");
    if (found == schema.end()) return "anything";
    return found->second.string() ? *found->second.string() : "one of several";
}

std::string formatOf(const Object& schema) {
    for (const char* word : {"format", "contentEncoding"})
        if (const auto found = schema.find(word); found != schema.end()) return *found->second.string();
    return "";
}

// A value that the schema allows, with every field it knows.
JSONValue sample(const Described& described, const JSONValue& place) {
    const auto& schema = described.resolve(place);
    const auto type = typeOf(schema);
    if (type == "object") {
        Object object;
        for (const auto& [name, property] : propertiesOf(schema))
            object.emplace(name, sample(described, property));
        return {std::move(object)};
    }
    if (type == "array") return {Array{sample(described, schema.find("items")->second)}};
    if (type == "boolean") return {true};
    if (type == "integer") return {5.0};
    if (type == "number") return {0.5};
    const auto format = formatOf(schema);
    if (format == "date-time") return {"2026-08-14T11:28:41Z"};
    if (format == "uri") return {"https://example.org/a"};
    return {"text"};
}

// Values that the schema doesn't allow in this place.
Array misfits(const Object& schema) {
    const auto type = typeOf(schema);
    const JSONValue object{Object()}, array{Array()}, string{"text"}, flag{true}, fraction{0.5};
    if (type == "object") return {array, string, flag, fraction};
    if (type == "array") return {object, string, flag, fraction, JSONValue{Array{object}}};
    if (type == "boolean") return {object, array, string, fraction};
    if (type == "integer") return {object, array, string, flag, fraction};
    if (type == "number") return {object, array, string, flag};
    if (type != "string") return {};
    if (formatOf(schema) == "date-time") return {object, array, flag, fraction, string};
    if (formatOf(schema) == "uri") return {object, array, flag, fraction, JSONValue{"two words"}};
    return {object, array, flag, fraction};
}

bool accepts(const Operation& row, JSONValue payload) {
    try {
        row.prepare(row, std::move(payload));
        return true;
    } catch (const AppleBridgeError&) {
        return false;
    }
}

bool acceptsNoPayload(const Operation& row) {
    try {
        row.prepare(row, std::nullopt);
        return true;
    } catch (const AppleBridgeError&) {
        return false;
    }
}

TEST(PayloadSchema, IsThereWhereAPayloadIsRead) {
    forEachOperation([](const Operation& row) { EXPECT_EQ(!row.payloadSchema, acceptsNoPayload(row)) << row.name; });
}

TEST(PayloadSchema, OfEachOperationSaysWhatIsAccepted) {
    int seen = 0;
    forEachOperation([&](const Operation& row) {
        if (!row.payloadSchema) return;
        const Described described(row.payloadSchema);
        const auto full = *sample(described, described.schema).object();
        EXPECT_TRUE(accepts(row, {full})) << row.name << " refuses " << writeJSON({full});
        EXPECT_FALSE(propertiesOf(described.whole()).empty()) << row.name;

        for (const auto& [name, property] : propertiesOf(described.whole())) {
            auto without = full;
            without.erase(name);
            EXPECT_EQ(accepts(row, {without}), !isRequired(described.whole(), name)) << row.name << " without " << name;

            for (const auto& value : misfits(described.resolve(property))) {
                auto wrong = full;
                wrong.insert_or_assign(name, value);
                EXPECT_FALSE(accepts(row, {wrong})) << row.name << " takes " << name << ": " << writeJSON(value);
                ++seen;
            }
        }
    });
    EXPECT_GT(seen, 400);
}

std::string payloadOf(std::string_view operation) {
    return writeJSON({Described(findOperation(operation)->payloadSchema).whole()});
}

std::string resultOf(std::string_view operation) {
    return writeJSON(Described(findOperation(operation)->resultSchema).schema);
}

TEST(PayloadSchema, OfAWriteNamesItsFourFields) {
    EXPECT_EQ(payloadOf("files.write_text"),
              R"({"properties":{"content":{"type":"string"},"overwrite":{"type":"boolean"},"path":{"type":"string"},)"
              R"("rootID":{"type":"string"}},"required":["rootID","path","content","overwrite"],"type":"object"})");
}

TEST(PayloadSchema, KeepsOptionalFieldsOutOfTheRequired) {
    EXPECT_EQ(payloadOf("files.read_text"),
              R"({"properties":{"maximumBytes":{"type":"integer"},"path":{"type":"string"},)"
              R"("rootID":{"type":"string"}},"required":["rootID","path"],"type":"object"})");
}

TEST(PayloadSchema, OfACellIsAnyOfItsFourTypes) {
    const auto schema = payloadOf("iwork.numbers.create");
    EXPECT_NE(schema.find(R"("values":{"items":{"items":{"type":["string","number","boolean","null"]},"type":"array"},)"
                          R"("type":"array"})"),
              std::string::npos)
        << schema;
    const auto* row = findOperation("iwork.numbers.create");
    EXPECT_TRUE(accepts(*row, parseJSON(R"({"rootID":"r","path":"p","values":[["a",0.5,true,null]]})")));
    EXPECT_FALSE(accepts(*row, parseJSON(R"({"rootID":"r","path":"p","values":[[[]]]})")));
}

TEST(ResultSchema, ComesFromTheCall) {
    EXPECT_EQ(resultOf("permissions.get"), R"({"$ref":"#/components/schemas/BridgePermissionSnapshot"})");
    EXPECT_EQ(resultOf("files.list"), R"({"items":{"$ref":"#/components/schemas/FileItemDescriptor"},"type":"array"})");
    EXPECT_EQ(resultOf("files.read_text"), R"({"$ref":"#/components/schemas/TextFileContents"})");
    EXPECT_EQ(resultOf("files.delete"), R"({"$ref":"#/components/schemas/BridgeDeleteResult"})");
}

TEST(ResultSchema, OfThePermissionsNamesTheEightStates) {
    const Described described(findOperation("permissions.get")->resultSchema);
    EXPECT_EQ(writeJSON(described.book.find("BridgePermissionState")->second),
              R"({"enum":["notDetermined","denied","restricted","writeOnly","limited","fullAccess","unavailable",)"
              R"("unknown"],"type":"string"})");
}

TEST(DependentCapabilities, StandWhereTheRequestDecides) {
    using Capability = BridgeCapability;
    const auto of = [](std::string_view name) {
        const auto several = findOperation(name)->dependentCapabilities;
        return std::vector(several.begin(), several.end());
    };
    EXPECT_EQ(of("files.write_text"), (std::vector{Capability::filesCreate, Capability::filesUpdate}));
    EXPECT_EQ(of("iwork.export"),
              (std::vector{Capability::pagesExport, Capability::numbersExport, Capability::keynoteExport}));
    forEachOperation(
        [](const Operation& row) { EXPECT_TRUE(!row.capability || row.dependentCapabilities.empty()) << row.name; });
}

TEST(CapabilityNames, AreAllInTheSchema) {
    SchemaBook book;
    book.describe<BridgeCapability>();
    const auto schemas = book.take();
    const auto& names = *schemas.find("BridgeCapability")->second.object()->find("enum")->second.array();
    ASSERT_EQ(names.size(), capabilityCount);
    for (const auto& name : names)
        EXPECT_TRUE(fromRawValue<BridgeCapability>(*name.string())) << *name.string();
}

TEST(WireErrors, AreTwentyFourWithOneStatusEach) {
    const auto errors = everyWireError();
    EXPECT_EQ(errors.size(), 24u);
    std::map<std::string_view, int> statuses;
    for (const auto& error : errors)
        EXPECT_TRUE(statuses.emplace(error.code, error.status).second) << error.code;
    EXPECT_EQ(statuses["capability_denied"], 403);
    EXPECT_EQ(statuses["invalid_date_range"], 400);
    EXPECT_EQ(statuses["pairing_required"], 401);
    EXPECT_EQ(statuses["request_too_large"], 413);
    EXPECT_EQ(statuses["internal_error"], 500);
}

// The page for people is written by hand; its table of errors must have a row for each.
TEST(WirePage, ListsEveryErrorWithItsStatus) {
    std::ifstream file(BRIDGE_DOCS "/wire.md", std::ios::binary);
    const std::string page{std::istreambuf_iterator<char>(file), {}};
    for (const auto& error : everyWireError()) {
        const auto row = "\n| " + std::to_string(error.status) + " | `" + std::string(error.code) + "` | ";
        EXPECT_NE(page.find(row), std::string::npos) << error.code;
    }
}

} // namespace
} // namespace bridge
