#include "base/record.h"
#include "base/url.h"
#include "tests/fuzz/fuzz.h"

namespace bridge {

namespace {

struct Slide {
    std::string title;
    std::optional<std::string> body;
    std::vector<std::vector<double>> table;
    static constexpr auto fields() {
        return std::tuple{required("title", &Slide::title), optional("body", &Slide::body),
                          required("table", &Slide::table)};
    }
};
static_assert(listsEveryMember<Slide>());

// One member of every kind there is.
struct Everything {
    std::optional<int64_t> limit;
    std::optional<double> ratio;
    std::optional<bool> flag;
    std::optional<Date> when;
    std::optional<Bytes> blob;
    std::optional<URL> link;
    std::optional<std::vector<Slide>> slides;
    std::optional<Slide> cover;
    std::optional<std::map<std::string, bool>> switches;
    std::optional<JSONValue> anything;
    static constexpr auto fields() {
        return std::tuple{optional("limit", &Everything::limit),       optional("ratio", &Everything::ratio),
                          optional("flag", &Everything::flag),         optional("when", &Everything::when),
                          optional("blob", &Everything::blob),         optional("link", &Everything::link),
                          optional("slides", &Everything::slides),     optional("cover", &Everything::cover),
                          optional("switches", &Everything::switches), optional("anything", &Everything::anything)};
    }
};
static_assert(listsEveryMember<Everything>());

} // namespace

void fuzz(std::string_view input) {
    Everything record;
    try {
        record = decode<Everything>(parseJSON(input));
    } catch (const JSONError&) {
        return;
    } catch (const DecodingError& error) {
        must(*error.what() != '\0');
        return;
    }
    const auto written = encodeJSON(record);
    must(encodeJSON(decode<Everything>(parseJSON(written))) == written);
    // What the codec writes is what the writer of plain values would: sorted, compact, each name once. (But integers of
    // more digits than a double has.)
    if (!record.limit) must(writeJSON(parseJSON(written)) == written);
}

} // namespace bridge
