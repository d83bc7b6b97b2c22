#include "adapters/eds/default_source.h"

namespace bridge {

namespace {

constexpr auto schemaName = "org.gnome.Evolution.DefaultSources";

} // namespace

std::string chosenSource(const char* key) {
    // The library ends the program when it is asked for settings that are not installed.
    GSettingsSchemaSource* const installed = g_settings_schema_source_get_default();
    GSettingsSchema* const schema = installed ? g_settings_schema_source_lookup(installed, schemaName, TRUE) : nullptr;
    if (!schema) return {};
    std::string value;
    if (g_settings_schema_has_key(schema, key)) {
        const GObjectPointer<GSettings> settings(g_settings_new_full(schema, nullptr, nullptr));
        value = GLibPointer<char>(g_settings_get_string(settings.get(), key)).get();
    }
    g_settings_schema_unref(schema);
    return value;
}

std::string defaultSource(EntityType type, const SourceList& list) {
    const bool isEvent = type == EntityType::event;
    const auto identifier = chosenSource(isEvent ? "default-calendar" : "default-task-list");
    const auto* calendar = list.find(identifier);
    if (calendar && calendar->entityType == type) return identifier;
    return isEvent ? "system-calendar" : "system-task-list";
}

} // namespace bridge
