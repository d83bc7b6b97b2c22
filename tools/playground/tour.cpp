#include "tour.h"

#include "base/json_writer.h"
#include "base/record.h"
#include "server/bridge_http_server.h"
#include "server/operation.h"
#include "tour_steps.h"

#include <chrono>
#include <fmt/format.h>
#include <map>
#include <set>

namespace bridge::playground {

namespace {

using NamedValues = std::map<std::string, std::string, std::less<>>;

NamedValues namedValues(const std::string& rootID, Date now) {
    constexpr int64_t hour = 3600, day = 24 * hour;
    const auto after = [&](int64_t seconds) { return formatDate({now.secondsSince1970 + seconds}); };
    return {{"root", rootID},
            {"today", after(0)},
            {"tomorrow", after(day)},
            {"anHourLater", after(day + hour)},
            {"nextWeek", after(7 * day)}};
}

// A name that nothing is kept by stays as it is: the bridge then says that there is no such thing.
void fillIn(JSONValue& payload, const NamedValues& values) {
    if (auto* text = std::get_if<std::string>(&payload.value)) {
        if (!text->starts_with('$')) return;
        if (const auto value = values.find(std::string_view(*text).substr(1)); value != values.end())
            *text = value->second;
    } else if (auto* members = std::get_if<JSONValue::Object>(&payload.value)) {
        for (auto& [name, member] : *members)
            fillIn(member, values);
    } else if (auto* elements = std::get_if<JSONValue::Array>(&payload.value)) {
        for (auto& element : *elements)
            fillIn(element, values);
    }
}

std::string requestBody(const Step& step, const NamedValues& values) {
    JSONValue::Object envelope{{"operation", {std::string(step.operation)}}, {"requestId", {std::string("tour")}}};
    if (step.confirmed) envelope["confirmed"] = {true};
    if (step.payload) {
        auto payload = parseJSON(step.payload);
        fillIn(payload, values);
        envelope["payload"] = std::move(payload);
    }
    return writeJSON({std::move(envelope)});
}

HTTPRequest requestFor(const Step& step, const std::string& credential, const NamedValues& values) {
    HTTPRequest request;
    request.method = "POST";
    request.url = fmt::format("http://{}:{}/v1/execute", BridgeHTTPServer::address, BridgeHTTPServer::port);
    request.headers = {{"Authorization", "Bearer " + credential}};
    request.body = requestBody(step, values);
    // An application alone may take thirty seconds.
    request.timeout = std::chrono::seconds(60);
    return request;
}

// Cut to what a line has room for, between two characters.
std::string shortened(std::string text) {
    constexpr size_t width = 78;
    if (text.size() <= width) return text;
    size_t end = width;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xc0) == 0x80)
        --end;
    return text.substr(0, end) + " …";
}

struct Outcome {
    std::string code; // of the error; empty for success
    std::string summary;
    std::string id; // the result's or, of a list, its first record's, where it has one
};

Outcome outcomeOf(const HTTPResponse& response) {
    const auto envelope = parseJSON(response.body);
    const auto& members = *envelope.object();
    if (const auto result = members.find("result"); result != members.end()) {
        Outcome outcome{"", writeJSON(result->second), ""};
        const auto* list = result->second.array();
        const auto& first = list && !list->empty() ? list->front() : result->second;
        if (const auto* record = first.object())
            if (const auto id = record->find("id"); id != record->end() && id->second.string())
                outcome.id = *id->second.string();
        return outcome;
    }
    const auto& error = *members.at("error").object();
    return {*error.at("code").string(), *error.at("code").string() + ": " + *error.at("message").string(), ""};
}

void printRow(const char* operation, int status, int64_t milliseconds, const std::string& summary) {
    fmt::print("{:<31} {:>6} {:>4}  {}\n", operation, status, milliseconds, shortened(summary));
}

} // namespace

Task<bool> tour(HTTPClient& client, std::string credential, std::string rootID, Date now, Missing missing) {
    auto values = namedValues(rootID, now);
    std::set<std::string_view> unseen;
    for (const auto group : operationGroups())
        for (const auto& row : group)
            unseen.insert(row.name);

    fmt::print("{:<31} {:>6} {:>4}  {}\n", "operation", "status", "ms", "result");
    bool asExpected = true;
    for (const auto& step : tourSteps()) {
        unseen.erase(step.operation);
        const auto started = std::chrono::steady_clock::now();
        const auto response = co_await client.send(requestFor(step, credential, values));
        const auto took =
            std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - started);
        const auto outcome = outcomeOf(response);
        printRow(step.operation, response.status, took.count(), outcome.summary);
        if (step.keep) values[step.keep] = outcome.id;
        const char* expected = missing.contains(step.needs) ? "internal_error" : step.code;
        if (outcome.code == expected) continue;
        fmt::print("  ^ expected {}\n", *expected ? expected : "success");
        asExpected = false;
    }
    for (const auto name : unseen) {
        fmt::print("{} was not called\n", name);
        asExpected = false;
    }
    for (const auto& [need, reason] : missing)
        fmt::print("\nNot everything could be shown. {}\n", reason);
    co_return asExpected;
}

} // namespace bridge::playground
