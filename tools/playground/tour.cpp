#include "tour.h"

#include "base/json_writer.h"
#include "base/record.h"
#include "server/bridge_http_server.h"
#include "server/operation.h"

#include <chrono>
#include <fmt/format.h>
#include <set>

namespace bridge::playground {

namespace {

// ROOT in a payload stands for the sample folder's id. `code` is what the answer's error must be; empty for success.
struct Step {
    const char* operation;
    const char* payload = nullptr;
    bool confirmed = false;
    const char* code = "";
};

constexpr const char* later = "unsupported_operation";

// What is to be seen, in an order in which each step finds what it needs.
constexpr Step steps[] = {
    {"permissions.get"},
    {"files.roots.list"},
    {"files.list", R"({"rootID":"ROOT","path":""})"},
    {"files.read_text", R"({"rootID":"ROOT","path":"Shopping list.md"})"},
    {"files.create_directory", R"({"rootID":"ROOT","path":"Letters/2026"})"},
    {"files.write_text",
     R"({"rootID":"ROOT","path":"Letters/2026/To Ada.txt","content":"Dear Ada,\n","overwrite":false})"},
    {"files.write_text", R"({"rootID":"ROOT","path":"Letters/2026/To Ada.txt","content":"","overwrite":false})", false,
     "operation_failed"},
    {"files.write_text", R"({"rootID":"ROOT","path":"Letters/2026/To Ada.txt","content":"","overwrite":true})", false,
     "confirmation_required"},
    {"files.write_text",
     R"({"rootID":"ROOT","path":"Letters/2026/To Ada.txt","content":"Dear Ada Lovelace,\n","overwrite":true})", true},
    {"files.move",
     R"({"rootID":"ROOT","sourcePath":"Letters/2026/To Ada.txt","destinationPath":"Letters/Ada.txt","overwrite":false})"},
    {"files.delete", R"({"rootID":"ROOT","path":"Letters/Ada.txt"})", false, "confirmation_required"},
    {"files.delete", R"({"rootID":"ROOT","path":"Letters/Ada.txt"})", true},
    {"files.read_text", R"({"rootID":"ROOT","path":"../outside.txt"})", false, "unsafe_path"},
    {"calendar.list", nullptr, false, later},
    {"calendar.sources.list", nullptr, false, later},
    {"calendar.create", R"({"title":"Garden"})", false, later},
    {"calendar.update", R"({"identifier":"c","title":"Garden"})", false, later},
    {"calendar.events.search",
     R"({"startDate":"2026-08-01T00:00:00Z","endDate":"2026-09-01T00:00:00Z","calendarIDs":[]})", false, later},
    {"calendar.events.create",
     R"({"title":"Sowing","startDate":"2026-08-14T09:00:00Z","endDate":"2026-08-14T10:00:00Z","isAllDay":false})",
     false, later},
    {"calendar.events.update", R"({"identifier":"e","title":"Sowing"})", false, later},
    {"calendar.events.delete", R"({"identifier":"e"})", true, later},
    {"calendar.delete", R"({"identifier":"c"})", true, later},
    {"reminders.lists.list", nullptr, false, later},
    {"reminders.sources.list", nullptr, false, later},
    {"reminders.lists.create", R"({"title":"Errands"})", false, later},
    {"reminders.lists.update", R"({"identifier":"l","title":"Errands"})", false, later},
    {"reminders.search", R"({"listIDs":[]})", false, later},
    {"reminders.create", R"({"title":"Water the seeds","priority":0})", false, later},
    {"reminders.update", R"({"identifier":"r","isCompleted":true})", false, later},
    {"reminders.delete", R"({"identifier":"r"})", true, later},
    {"reminders.lists.delete", R"({"identifier":"l"})", true, later},
    {"contacts.search", R"({"limit":10})", false, later},
    {"contacts.groups.list", nullptr, false, later},
    {"contacts.create", R"({"givenName":"Ada","phoneNumbers":[],"emailAddresses":[]})", false, later},
    {"contacts.update", R"({"identifier":"c","nickname":"Countess"})", false, later},
    {"contacts.groups.create", R"({"name":"Mathematics"})", false, later},
    {"contacts.groups.add_members", R"({"groupIdentifier":"g","contactIdentifiers":["c"]})", false, later},
    {"contacts.groups.remove_members", R"({"groupIdentifier":"g","contactIdentifiers":["c"]})", false, later},
    {"contacts.groups.delete", R"({"identifier":"g"})", true, later},
    {"contacts.delete", R"({"identifier":"c"})", true, later},
    {"music.search", R"({"source":"library","limit":5})", false, later},
    {"music.playlists.list", R"({"limit":5})", false, later},
    {"music.playlists.create", R"({"name":"Digging","songIDs":["1"]})", false, later},
    {"music.playlists.add_songs", R"({"playlistID":"p","songIDs":["1"]})", false, later},
    {"music.playlists.delete", R"({"identifier":"p"})", true, later},
    {"music.play", R"({"identifier":"1"})", false, later},
    {"music.pause", nullptr, false, later},
    {"iwork.pages.create", R"({"rootID":"ROOT","path":"a.pages","text":"A"})", false, later},
    {"iwork.pages.read", R"({"rootID":"ROOT","path":"a.pages"})", false, later},
    {"iwork.numbers.create", R"({"rootID":"ROOT","path":"a.numbers","values":[[1]]})", false, later},
    {"iwork.numbers.write_range", R"({"rootID":"ROOT","path":"a.numbers","range":"A1","values":[[2]]})", false, later},
    {"iwork.numbers.read_range", R"({"rootID":"ROOT","path":"a.numbers","range":"A1"})", false, later},
    {"iwork.keynote.create", R"({"rootID":"ROOT","path":"a.key","slides":[{"title":"A"}]})", false, later},
    {"iwork.export",
     R"({"application":"pages","rootID":"ROOT","inputPath":"a.pages","outputPath":"a.pdf","format":"pdf"})", false,
     later},
    {"location.current", nullptr, false, later},
    {"maps.places.search", R"({"query":"station","limit":3})", false, later},
    {"maps.directions",
     R"({"originLatitude":52.5,"originLongitude":13.4,"destinationLatitude":52.4,"destinationLongitude":13.1,)"
     R"("transport":"walking"})",
     false, later},
};

std::string requestBody(const Step& step, const std::string& rootID) {
    JSONValue::Object envelope{{"operation", {std::string(step.operation)}}, {"requestId", {std::string("tour")}}};
    if (step.confirmed) envelope["confirmed"] = {true};
    if (step.payload) {
        std::string payload = step.payload;
        if (const auto place = payload.find("ROOT"); place != std::string::npos) payload.replace(place, 4, rootID);
        envelope["payload"] = parseJSON(payload);
    }
    return writeJSON({std::move(envelope)});
}

HTTPRequest requestFor(const Step& step, const std::string& credential, const std::string& rootID) {
    HTTPRequest request;
    request.method = "POST";
    request.url = fmt::format("http://{}:{}/v1/execute", BridgeHTTPServer::address, BridgeHTTPServer::port);
    request.headers = {{"Authorization", "Bearer " + credential}};
    request.body = requestBody(step, rootID);
    request.timeout = std::chrono::seconds(30);
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
};

Outcome outcomeOf(const HTTPResponse& response) {
    const auto envelope = parseJSON(response.body);
    const auto& members = *envelope.object();
    if (const auto result = members.find("result"); result != members.end()) return {"", writeJSON(result->second)};
    const auto& error = *members.at("error").object();
    return {*error.at("code").string(), *error.at("code").string() + ": " + *error.at("message").string()};
}

void printRow(const char* operation, int status, int64_t milliseconds, const std::string& summary) {
    fmt::print("{:<31} {:>6} {:>4}  {}\n", operation, status, milliseconds, shortened(summary));
}

} // namespace

Task<bool> tour(HTTPClient& client, std::string credential, std::string rootID) {
    std::set<std::string_view> unseen;
    for (const auto group : operationGroups())
        for (const auto& row : group)
            unseen.insert(row.name);

    fmt::print("{:<31} {:>6} {:>4}  {}\n", "operation", "status", "ms", "result");
    bool asExpected = true;
    for (const auto& step : steps) {
        unseen.erase(step.operation);
        const auto started = std::chrono::steady_clock::now();
        const auto response = co_await client.send(requestFor(step, credential, rootID));
        const auto took =
            std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - started);
        const auto outcome = outcomeOf(response);
        printRow(step.operation, response.status, took.count(), outcome.summary);
        if (outcome.code == step.code) continue;
        fmt::print("  ^ expected {}\n", *step.code ? step.code : "success");
        asExpected = false;
    }
    for (const auto name : unseen) {
        fmt::print("{} was not called\n", name);
        asExpected = false;
    }
    co_return asExpected;
}

} // namespace bridge::playground
