#include "adapters/jsonfile/json_file_user_defaults.h"

#include "base/base64.h"
#include "base/json_writer.h"
#include "base/log.h"
#include "base/platform_error.h"

namespace bridge {

namespace {

std::optional<JSONValue::Object> parseObject(const std::string& text) {
    try {
        auto value = parseJSON(text);
        if (auto* object = std::get_if<JSONValue::Object>(&value.value)) return std::move(*object);
    } catch (const JSONError&) {
    }
    return std::nullopt;
}

} // namespace

JSONFileUserDefaults::JSONFileUserDefaults(std::string path) : m_path(std::move(path)), m_file(m_path, Trust::any) {
    const auto content = m_file.read();
    if (!content) return;
    if (auto values = parseObject(*content)) {
        m_values = std::move(*values);
        return;
    }
    m_file.setAside();
    log::note("the settings file was damaged: it is set aside, and the settings begin empty");
}

bool JSONFileUserDefaults::contains(std::string_view key) const {
    return find(key) != nullptr;
}

std::optional<std::vector<std::string>> JSONFileUserDefaults::strings(std::string_view key) const {
    const auto* value = find(key);
    const auto* array = value ? value->array() : nullptr;
    if (!array) return std::nullopt;
    std::vector<std::string> texts;
    for (const auto& element : *array) {
        const auto* text = element.string();
        if (!text) return std::nullopt;
        texts.push_back(*text);
    }
    return texts;
}

std::optional<std::string> JSONFileUserDefaults::string(std::string_view key) const {
    const auto* value = find(key);
    const auto* text = value ? value->string() : nullptr;
    return text ? std::optional(*text) : std::nullopt;
}

std::optional<std::string> JSONFileUserDefaults::data(std::string_view key) const {
    const auto text = string(key);
    return text ? decodeBase64(*text) : std::nullopt;
}

void JSONFileUserDefaults::setStrings(std::string_view key, std::vector<std::string> values) {
    JSONValue::Array array;
    for (auto& value : values)
        array.push_back({std::move(value)});
    set(key, {std::move(array)});
}

void JSONFileUserDefaults::setString(std::string_view key, std::string value) {
    set(key, {std::move(value)});
}

void JSONFileUserDefaults::setData(std::string_view key, std::string bytes) {
    set(key, {encodeBase64(bytes)});
}

void JSONFileUserDefaults::set(std::string_view key, JSONValue value) {
    m_values.insert_or_assign(std::string(key), std::move(value));
    save();
}

void JSONFileUserDefaults::saveAgain() {
    if (savingFailure.get()) save();
}

void JSONFileUserDefaults::save() {
    try {
        m_file.write(writeJSON({m_values}));
        savingFailure.set(std::nullopt);
    } catch (const PlatformError& error) {
        log::note(std::string("The settings could not be saved. ") + error.what());
        savingFailure.set("The settings could not be saved and hold only until the program ends. See that " + m_path +
                          " can be written, then try again. " + error.what());
    }
}

// A null is what a setting looks like that was taken out by hand.
const JSONValue* JSONFileUserDefaults::find(std::string_view key) const {
    const auto found = m_values.find(key);
    return found == m_values.end() || found->second.isNull() ? nullptr : &found->second;
}

} // namespace bridge
