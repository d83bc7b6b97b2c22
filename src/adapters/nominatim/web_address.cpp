#include "adapters/nominatim/web_address.h"

#include "base/text.h"
#include "base/url.h"

namespace bridge::nominatim {

bool isWebAddress(std::string_view text) {
    if (!canBeURL(text)) return false;
    for (const std::string_view scheme : {"https://", "http://"})
        if (lowercase(text.substr(0, scheme.size())) == scheme)
            return text.size() > scheme.size() && std::string_view("/?#:").find(text[scheme.size()]) == text.npos;
    return false;
}

} // namespace bridge::nominatim
