#include "adapters/eds/source_data.h"

#include <string_view>

namespace bridge {

namespace {

constexpr auto ownGroup = "Data Source";
constexpr auto nameKey = "DisplayName";

std::string textOf(const GLibPointer<char>& text) {
    return text ? text.get() : "";
}

} // namespace

SourceData::SourceData(const std::string& text) : m_file(g_key_file_new()) {
    const auto everything = static_cast<GKeyFileFlags>(G_KEY_FILE_KEEP_COMMENTS | G_KEY_FILE_KEEP_TRANSLATIONS);
    g_key_file_load_from_data(m_file.get(), text.c_str(), text.size(), everything, nullptr);
}

std::string SourceData::displayName() const {
    constexpr auto usersLanguage = nullptr;
    return textOf(
        GLibPointer<char>(g_key_file_get_locale_string(m_file.get(), ownGroup, nameKey, usersLanguage, nullptr)));
}

bool SourceData::isEnabled() const {
    if (!g_key_file_has_key(m_file.get(), ownGroup, "Enabled", nullptr)) return true;
    return g_key_file_get_boolean(m_file.get(), ownGroup, "Enabled", nullptr);
}

std::string SourceData::parent() const {
    return textOf(GLibPointer<char>(g_key_file_get_string(m_file.get(), ownGroup, "Parent", nullptr)));
}

bool SourceData::has(const char* extension) const {
    return g_key_file_has_group(m_file.get(), extension);
}

std::string SourceData::backend(const char* extension) const {
    return textOf(GLibPointer<char>(g_key_file_get_string(m_file.get(), extension, "BackendName", nullptr)));
}

void SourceData::rename(const std::string& title) {
    const std::string translation = std::string(nameKey) + "[";
    char** const keys = g_key_file_get_keys(m_file.get(), ownGroup, nullptr, nullptr);
    for (char** key = keys; key && *key; ++key)
        if (std::string_view(*key).starts_with(translation))
            g_key_file_remove_key(m_file.get(), ownGroup, *key, nullptr);
    g_strfreev(keys);
    g_key_file_set_string(m_file.get(), ownGroup, nameKey, title.c_str());
}

std::string SourceData::text() const {
    return textOf(GLibPointer<char>(g_key_file_to_data(m_file.get(), nullptr, nullptr)));
}

} // namespace bridge
