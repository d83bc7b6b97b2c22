#include "base/date.h"
#include "tests/fuzz/fuzz.h"

#include <cstring>

namespace bridge {

void fuzz(std::string_view input) {
    if (const auto date = parseDate(input)) {
        const auto written = formatDate(*date);
        must(written.size() == 20);
        must(parseDate(written) == *date);
        must(!input.ends_with('Z') || written == input);
    }
    Date any;
    if (input.size() < sizeof any.secondsSince1970) return;
    std::memcpy(&any.secondsSince1970, input.data(), sizeof any.secondsSince1970);
    const auto written = formatDate(any);
    const auto date = parseDate(written);
    must(date.has_value());
    must(*date == any || written == "0001-01-01T00:00:00Z" || written == "9999-12-31T23:59:59Z");
}

} // namespace bridge
