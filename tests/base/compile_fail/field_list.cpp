// Compiled once as it is, which must pass, and once with each mistake switched on, which must not.
#include "base/record.h"

#ifdef FORGOTTEN_MEMBER
#define LIST(...)
#else
#define LIST(...) __VA_ARGS__
#endif

#ifdef REQUIRED_ON_OPTIONAL
#define BODY required
#else
#define BODY optional
#endif

#ifdef OPTIONAL_ON_PLAIN
#define TITLE optional
#else
#define TITLE required
#endif

namespace {

struct Slide {
    std::string title;
    std::optional<std::string> body;
    int64_t number = 0;
    static constexpr auto fields() {
        return std::tuple{bridge::TITLE("title", &Slide::title),
                          bridge::BODY("body", &Slide::body) LIST(, bridge::required("number", &Slide::number))};
    }
};
static_assert(bridge::listsEveryMember<Slide>());

} // namespace

std::string use() {
    return bridge::encodeJSON(bridge::decode<Slide>(bridge::JSONValue()));
}
