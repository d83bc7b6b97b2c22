#include "adapters/vcard/address_value.h"

#include "base/text.h"

namespace bridge::vcard {

namespace {

enum Component : size_t { box, extended, street, locality, region, code, country, subdistrict = 14, district = 15 };

} // namespace

PostalAddress addressOf(const ContentLine& line) {
    const auto components = split(line.value, ';');
    const auto text = [&](Component component) {
        if (component >= components.size()) return std::string();
        std::vector<std::string> values;
        for (const auto& value : split(components[component], ','))
            if (const auto plain = unescaped(value); !trim(plain).empty()) values.emplace_back(trim(plain));
        return joined(values, ", ");
    };
    const auto lines = [](std::initializer_list<std::string> texts, std::string_view separator) {
        std::vector<std::string> present;
        for (const auto& each : texts)
            if (!each.empty()) present.push_back(each);
        return joined(present, separator);
    };
    PostalAddress address;
    address.street = lines({text(street), text(extended), text(box)}, "\n");
    address.subLocality = lines({text(subdistrict), text(district)}, ", ");
    address.city = text(locality);
    address.state = text(region);
    address.postalCode = text(code);
    address.country = text(country);
    if (address == PostalAddress()) address.street = line.parameterValue("LABEL");
    address.isoCountryCode = line.parameterValue("CC");
    return address;
}

ContentLine addressLine(const PostalAddress& address) {
    std::vector<std::string> components(address.subLocality.empty() ? 7 : 18);
    components[street] = escaped(address.street);
    components[locality] = escaped(address.city);
    components[region] = escaped(address.state);
    components[code] = escaped(address.postalCode);
    components[country] = escaped(address.country);
    if (!address.subLocality.empty()) components[district] = escaped(address.subLocality);
    ContentLine line{"", "ADR", {}, joined(components, ";")};
    if (!address.isoCountryCode.empty()) line.setParameter("CC", {address.isoCountryCode});
    return line;
}

} // namespace bridge::vcard
