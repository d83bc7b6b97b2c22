#include "base/base64.h"
#include "tests/fuzz/fuzz.h"

namespace bridge {

void fuzz(std::string_view input) {
    const auto encoded = encodeBase64(input);
    must(decodeBase64(encoded) == input);
    // No two texts stand for the same bytes, so whatever is accepted comes out as it went in.
    if (const auto bytes = decodeBase64(input)) must(encodeBase64(*bytes) == input);
}

} // namespace bridge
