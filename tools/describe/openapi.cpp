#include "tools/describe/openapi.h"

#include "server/operation.h"
#include "server/permission_snapshot.h"
#include "tools/describe/pretty_json.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <set>

namespace bridge {

namespace {

using Object = JSONValue::Object;
using Array = JSONValue::Array;

constexpr std::string_view about =
    "The loopback interface through which the one paired agent works with the user's data. One request per connection "
    "and at most 1 MiB of it, head and body together. In whatever is read, unknown names are ignored and null is the "
    "same as absent; in whatever is written, names are sorted and nothing is null. Operations with `x-status: planned` "
    "check capability, confirmation and payload as they will, and then answer `unsupported_operation`.";

JSONValue text(std::string_view words) {
    return {std::string(words)};
}

JSONValue describedAs(std::string_view description, JSONValue schema) {
    return {Object{
        {"description", text(description)},
        {"content", {Object{{"application/json", {Object{{"schema", std::move(schema)}}}}}}},
    }};
}

std::vector<std::string_view> capabilitiesOf(const Operation& row) {
    std::vector<std::string_view> names;
    if (row.capability) names.push_back(rawValue(*row.capability));
    for (const auto capability : row.dependentCapabilities)
        names.push_back(rawValue(capability));
    return names;
}

std::string descriptionOf(const Operation& row) {
    const auto names = capabilitiesOf(row);
    std::string lines = names.empty() ? "Needs no capability."
                                      : fmt::format("Needs the capability {}{}.", fmt::join(names, " or "),
                                                    row.capability ? "" : ", depending on the request");
    if (row.confirm == Confirm::always) lines += "\nNeeds `\"confirmed\": true`.";
    if (row.confirm == Confirm::whenOverwriting)
        lines += "\nNeeds `\"confirmed\": true` when the payload's `overwrite` is true.";
    if (!row.payloadSchema) lines += "\nIgnores the payload.";
    return lines;
}

// The request envelope with what this operation makes of its fields.
JSONValue requestOf(const Operation& row, SchemaBook& book) {
    auto schema = std::get<Object>(Schema<BridgeRequestEnvelope>::body(book).value);
    auto& properties = std::get<Object>(schema.at("properties").value);
    auto& required = std::get<Array>(schema.at("required").value);

    properties.at("operation") = {Object{{"const", text(row.name)}}};
    if (row.payloadSchema) {
        properties.at("payload") = row.payloadSchema(book);
        required.push_back(text("payload"));
    }
    if (row.confirm == Confirm::always) {
        properties.at("confirmed") = {Object{{"const", {true}}}};
        required.push_back(text("confirmed"));
    }
    schema.emplace("description", text(descriptionOf(row)));

    const auto names = capabilitiesOf(row);
    if (row.capability) schema.emplace("x-capability", text(names.front()));
    if (!row.capability && !names.empty()) {
        Array several;
        for (const auto name : names)
            several.push_back(text(name));
        schema.emplace("x-capability", JSONValue{std::move(several)});
    }
    schema.emplace("x-result", row.resultSchema(book));
    return {std::move(schema)};
}

// The operations' requests stand beside the records, under the operations' own names: those have dots, so the two
// never meet.
JSONValue executeRequest(Object& requests, SchemaBook& book) {
    Array choices;
    Object mapping;
    for (const auto group : operationGroups())
        for (const auto& row : group) {
            const auto reference = text(std::string(SchemaBook::place) + std::string(row.name));
            requests.emplace(row.name, requestOf(row, book));
            choices.push_back({Object{{"$ref", reference}}});
            mapping.emplace(row.name, reference);
        }
    return {Object{
        {"oneOf", {std::move(choices)}},
        {"discriminator", {Object{{"propertyName", text("operation")}, {"mapping", {std::move(mapping)}}}}},
    }};
}

JSONValue successEnvelope(JSONValue result, SchemaBook& book) {
    auto envelope = Schema<BridgeSuccessEnvelope<JSONValue>>::body(book);
    std::get<Object>(std::get<Object>(envelope.value).at("properties").value).at("result") = std::move(result);
    return envelope;
}

JSONValue executeAnswer(SchemaBook& book) {
    Array results;
    std::set<std::string> seen;
    for (const auto group : operationGroups())
        for (const auto& row : group) {
            auto result = row.resultSchema(book);
            if (seen.insert(writeJSON(result)).second) results.push_back(std::move(result));
        }
    return describedAs("Done. Which result it is, the operation's `x-result` says.",
                       successEnvelope({Object{{"anyOf", {std::move(results)}}}}, book));
}

JSONValue errorAnswer(int status, SchemaBook& book) {
    Array codes;
    for (const auto& error : everyWireError())
        if (error.status == status) codes.push_back(text(error.code));
    const JSONValue code{Object{{"properties", {Object{{"code", {Object{{"enum", {std::move(codes)}}}}}}}}}};
    const JSONValue narrowed{Object{{"properties", {Object{{"error", code}}}}}};
    return describedAs(reasonPhrase(status),
                       {Object{{"allOf", {Array{book.describe<BridgeErrorEnvelope>(), narrowed}}}}});
}

std::string responseName(int status) {
    std::string name(reasonPhrase(status));
    std::erase(name, ' ');
    return name;
}

JSONValue referToResponse(int status) {
    return {Object{{"$ref", text("#/components/responses/" + responseName(status))}}};
}

} // namespace

std::string openAPIDocument() {
    SchemaBook book;
    Object requests, errorAnswers, healthAnswers, executeAnswers;
    const auto request = executeRequest(requests, book);

    std::set<int> statuses;
    for (const auto& error : everyWireError())
        statuses.insert(error.status);
    for (const int status : statuses) {
        errorAnswers.emplace(responseName(status), errorAnswer(status, book));
        executeAnswers.emplace(std::to_string(status), referToResponse(status));
    }
    for (const int status : {400, 401, 413})
        healthAnswers.emplace(std::to_string(status), referToResponse(status));
    healthAnswers.emplace("200",
                          describedAs("The bridge is up.", successEnvelope(book.describe<BridgeHealth>(), book)));
    executeAnswers.emplace("200", executeAnswer(book));

    // The names in the `capabilities` of the permissions.
    book.describe<BridgeCapability>();
    auto schemas = book.take();
    schemas.merge(requests);

    auto document = parseJSON(R"({
        "openapi": "3.1.0",
        "info": {"title": "Brindlefox Apple Bridge"},
        "servers": [{"url": "http://127.0.0.1:32123"}],
        "security": [{"credential": []}],
        "paths": {
            "/health": {"get": {"operationId": "health", "summary": "Whether the bridge is up, and what it may do"}},
            "/v1/execute": {"post": {"operationId": "execute", "summary": "Perform one operation"}}
        },
        "components": {"securitySchemes": {"credential": {
            "type": "http", "scheme": "bearer",
            "description": "The credential from pairing. The scheme is written \"Bearer\", with this capital letter."
        }}}
    })");
    const auto member = [](JSONValue& value, std::string_view name) -> Object& {
        auto& object = std::get<Object>(value.value);
        return std::get<Object>(object.find(name)->second.value);
    };
    auto& info = member(document, "info");
    info.emplace("version", text(BRIDGE_VERSION));
    info.emplace("description", text(about));
    auto& paths = member(document, "paths");
    member(paths.at("/health"), "get").emplace("responses", JSONValue{std::move(healthAnswers)});
    auto& execute = member(paths.at("/v1/execute"), "post");
    execute.emplace("responses", JSONValue{std::move(executeAnswers)});
    execute.emplace("requestBody", JSONValue{Object{
                                       {"required", {true}},
                                       {"content", {Object{{"application/json", {Object{{"schema", request}}}}}}},
                                   }});
    auto& components = member(document, "components");
    components.emplace("schemas", JSONValue{std::move(schemas)});
    components.emplace("responses", JSONValue{std::move(errorAnswers)});
    return prettyJSON(document) + "\n";
}

} // namespace bridge
