#include "adapters/ical/library.h"

#include "adapters/ical/shield.h"
#include "base/platform_error.h"
#include "base/text.h"

#include <cstdlib>
#include <memory>
#include <mutex>

namespace bridge {

void prepareLibical() {
    static std::once_flag once;
    std::call_once(once, [] {
        icalerror_set_errors_are_fatal(false);
        // Properties and parameters of later standards stay in the item as they are.
        ical_set_unknown_token_handling_setting(ICAL_ASSUME_IANA_TOKEN);
    });
}

std::vector<icalproperty*> properties(icalcomponent* component, icalproperty_kind kind) {
    std::vector<icalproperty*> found;
    for (auto* property = icalcomponent_get_first_property(component, kind); property;
         property = icalcomponent_get_next_property(component, kind))
        found.push_back(property);
    return found;
}

icalproperty* firstProperty(icalcomponent* component, icalproperty_kind kind) {
    return icalcomponent_get_first_property(component, kind);
}

std::vector<icalcomponent*> components(icalcomponent* parent, icalcomponent_kind kind) {
    std::vector<icalcomponent*> found;
    for (auto* component = icalcomponent_get_first_component(parent, kind); component;
         component = icalcomponent_get_next_component(parent, kind))
        found.push_back(component);
    return found;
}

void removeProperties(icalcomponent* component, icalproperty_kind kind) {
    for (auto* property : properties(component, kind)) {
        icalcomponent_remove_property(component, property);
        icalproperty_free(property);
    }
}

void addProperty(icalcomponent* component, ICalPointer<icalproperty> property) {
    icalcomponent_add_property(component, property.release());
}

namespace {

struct BufferDeleter {
    void operator()(char* buffer) const { icalmemory_free_buffer(buffer); }
};
using Buffer = std::unique_ptr<char, BufferDeleter>;

// Without the folds, since libical sometimes makes one within a line's end.
std::string unfoldedText(icalcomponent* component) {
    const Buffer given(icalcomponent_as_ical_string_r(component));
    if (!given) throw PlatformError("The calendar item could not be written.");
    constexpr std::string_view fold = "\r\n ";
    std::string_view rest = given.get();
    std::string text;
    for (size_t at = rest.find(fold); at != std::string_view::npos; at = rest.find(fold)) {
        text += rest.substr(0, at);
        rest.remove_prefix(at + fold.size());
    }
    return text.append(rest);
}

} // namespace

std::string valueText(icalproperty* property) {
    const Buffer text(icalproperty_get_value_as_string_r(property));
    return text ? unshield(text.get()) : "";
}

std::optional<std::string> textOf(icalcomponent* component, icalproperty_kind kind) {
    auto* property = firstProperty(component, kind);
    const auto* value = property ? icalproperty_get_value(property) : nullptr;
    if (!value) return std::nullopt;
    std::string text;
    switch (icalvalue_isa(value)) {
    case ICAL_TEXT_VALUE:
        if (const char* content = icalvalue_get_text(value)) text = unshield(content);
        break;
    default:
        text = valueText(property);
    }
    if (text.empty()) return std::nullopt;
    return text;
}

std::string storableText(std::string_view text) {
    const std::string whole = repairUTF8(text);
    std::string stored;
    stored.reserve(whole.size());
    for (size_t i = 0; i < whole.size(); ++i) {
        const auto c = static_cast<unsigned char>(whole[i]);
        if (c == '\r') {
            if (i + 1 == whole.size() || whole[i + 1] != '\n') stored += '\n';
        } else if (c >= 0x20 ? c != 0x7f : c == '\n' || c == '\t') {
            stored += whole[i];
        }
    }
    return stored;
}

void setText(icalcomponent* component, icalproperty_kind kind, const std::optional<std::string>& text) {
    const std::string stored = text ? shieldEnds(storableText(*text)) : "";
    if (stored.empty()) return removeProperties(component, kind);
    auto* property = firstProperty(component, kind);
    if (!property) {
        property = icalproperty_new(kind);
        icalcomponent_add_property(component, property);
    }
    // It leads to another form of the text that was here.
    icalproperty_remove_parameter_by_kind(property, ICAL_ALTREP_PARAMETER);
    const bool isURI = icalproperty_kind_to_value_kind(kind) == ICAL_URI_VALUE;
    icalproperty_set_value(property, isURI ? icalvalue_new_uri(stored.c_str()) : icalvalue_new_text(stored.c_str()));
}

std::string componentText(icalcomponent* component) {
    return unshieldLines(unfoldedText(component));
}

// By its text: libical's own copy loses values that it has no name for, such as STATUS:X-POSTPONED.
ICalPointer<icalcomponent> clone(icalcomponent* component) {
    ICalPointer<icalcomponent> copy(icalparser_parse_string(unfoldedText(component).c_str()));
    if (!copy) throw PlatformError("The calendar item could not be written.");
    icalcomponent_strip_errors(copy.get());
    return copy;
}

} // namespace bridge
