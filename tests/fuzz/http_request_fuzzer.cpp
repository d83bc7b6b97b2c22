#include "server/http_request.h"
#include "tests/fuzz/fuzz.h"

#include <algorithm>

namespace bridge {

namespace {

using State = HTTPRequestReader::State;

constexpr size_t limit = HTTPRequestReader::maximumRequestBytes;

struct Outcome {
    State state = State::incomplete;
    bool endsExactly = false;
    ParsedHTTPRequest request;
    size_t taken = 0; // bytes until then
};

// A header of five bytes counts for some hundred and thirty, besides its bytes.
size_t mostMemory(size_t received) {
    return 32 * received;
}

// Feeds the bytes in pieces whose sizes `cuts` gives, over and over.
Outcome read(std::string_view bytes, std::string_view cuts) {
    HTTPRequestReader reader;
    Outcome outcome;
    for (size_t turn = 0; outcome.taken < bytes.size() && outcome.state == State::incomplete; ++turn) {
        const size_t wanted = cuts.empty() ? bytes.size() : static_cast<unsigned char>(cuts[turn % cuts.size()]) + 1u;
        const auto piece = bytes.substr(outcome.taken, wanted);
        outcome.taken += piece.size();
        outcome.state = reader.add(piece);
        must(reader.buffered() <= mostMemory(outcome.taken));
    }
    if (outcome.state == State::complete) {
        outcome.endsExactly = reader.endsExactly();
        outcome.request = reader.take();
        must(reader.buffered() == 0);
    }
    return outcome;
}

void mustBeWellFormed(const ParsedHTTPRequest& request, std::string_view bytes) {
    must(!request.method.empty() && !request.path.empty());
    must(request.method.find(' ') == std::string::npos && request.path.find(' ') == std::string::npos);
    must(request.body.empty() || bytes.find(request.body) != std::string_view::npos);
    for (const auto& [name, value] : request.headers) {
        must(!name.empty() && std::none_of(name.begin(), name.end(), [](char c) { return c >= 'A' && c <= 'Z'; }));
        must(value.find("\r\n") == std::string::npos);
        must(value.empty() || (std::string_view(" \t").find(value.front()) == std::string_view::npos &&
                               std::string_view(" \t").find(value.back()) == std::string_view::npos));
    }
}

void mustKeepTheLimit(std::string_view bytes) {
    static const std::string filler(limit + 1, 'x');
    HTTPRequestReader reader;
    if (reader.add(bytes) != State::incomplete) return;
    must(reader.add(std::string_view(filler).substr(0, limit - bytes.size() + 1)) == State::tooLarge);
    must(reader.add("") == State::tooLarge);
    must(reader.buffered() <= mostMemory(bytes.size()));
}

} // namespace

// Up to the first line feed stand the sizes of the pieces, less one; behind it the bytes of the peer.
void fuzz(std::string_view input) {
    const auto end = std::min(input.find('\n'), input.size());
    const auto cuts = input.substr(0, end);
    const auto bytes = input.substr(std::min(end + 1, input.size()));

    const auto whole = read(bytes, "");
    const auto inPieces = read(bytes, cuts);
    must(whole.state == inPieces.state);
    must(whole.state != State::tooLarge);
    must(whole.request.method == inPieces.request.method && whole.request.path == inPieces.request.path);
    must(whole.request.headers == inPieces.request.headers && whole.request.body == inPieces.request.body);
    // In pieces it is complete before it sees what comes behind.
    must(!whole.endsExactly || inPieces.endsExactly);
    if (whole.state == State::complete) mustBeWellFormed(whole.request, bytes);
    mustKeepTheLimit(bytes);
}

} // namespace bridge
