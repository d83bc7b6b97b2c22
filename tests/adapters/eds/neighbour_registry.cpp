#include "tests/adapters/eds/neighbour_registry.h"

#include "tests/adapters/eds/private_eds.h"

#include <algorithm>
#include <stdexcept>

namespace bridge {

namespace {

constexpr auto managerPath = "/org/gnome/evolution/dataserver/SourceManager";
const std::string sourceInterface = "org.gnome.evolution.dataserver.Source";

GLibPointer<GVariant> callRegistry(const std::string& path, const std::string& interface, const char* method,
                                   GVariant* arguments, const char* type) {
    constexpr int usualTimeout = -1;
    GError* error = nullptr;
    const auto bus = PrivateEds::get().connect();
    GLibPointer<GVariant> answer(g_dbus_connection_call_sync(
        bus.get(), "org.gnome.evolution.dataserver.Sources5", path.c_str(), interface.c_str(), method, arguments,
        G_VARIANT_TYPE(type), G_DBUS_CALL_FLAGS_NONE, usualTimeout, nullptr, &error));
    NeighbourRegistry::check(error);
    return answer;
}

struct Source {
    std::string path;
    std::string identifier;
    std::string data;
    bool isRemovable = false;

    bool has(const std::string& group) const { return data.find("\n[" + group + "]\n") != data.npos; }
};

std::vector<Source> sources() {
    const auto answer = callRegistry(managerPath, "org.freedesktop.DBus.ObjectManager", "GetManagedObjects", nullptr,
                                     "(a{oa{sa{sv}}})");
    const GLibPointer<GVariant> objects(g_variant_get_child_value(answer.get(), 0));
    std::vector<Source> found;
    const size_t count = g_variant_n_children(objects.get());
    for (size_t index = 0; index < count; ++index) {
        const char* path = nullptr;
        GVariant* interfaces = nullptr;
        g_variant_get_child(objects.get(), index, "{&o@a{sa{sv}}}", &path, &interfaces);
        const GLibPointer<GVariant> owned(interfaces);
        const GLibPointer<GVariant> properties(
            g_variant_lookup_value(interfaces, sourceInterface.c_str(), G_VARIANT_TYPE_VARDICT));
        if (!properties) continue;
        const char *identifier = "", *data = "";
        g_variant_lookup(properties.get(), "UID", "&s", &identifier);
        g_variant_lookup(properties.get(), "Data", "&s", &data);
        const GLibPointer<GVariant> removable(
            g_variant_lookup_value(interfaces, (sourceInterface + ".Removable").c_str(), nullptr));
        found.push_back({path, identifier, data, removable != nullptr});
    }
    return found;
}

Source find(const std::string& identifier) {
    for (auto& source : sources())
        if (source.identifier == identifier) return std::move(source);
    throw std::runtime_error("no source " + identifier);
}

// Sets one key of a source's own group.
void write(const std::string& identifier, const char* key, const std::string& value) {
    const auto source = find(identifier);
    const GLibPointer<GKeyFile> file(g_key_file_new());
    g_key_file_load_from_data(file.get(), source.data.c_str(), source.data.size(), G_KEY_FILE_NONE, nullptr);
    g_key_file_set_string(file.get(), "Data Source", key, value.c_str());
    const GLibPointer<char> text(g_key_file_to_data(file.get(), nullptr, nullptr));
    callRegistry(source.path, sourceInterface + ".Writable", "Write", g_variant_new("(s)", text.get()), "()");
}

void removeSource(const Source& source) {
    callRegistry(source.path, sourceInterface + ".Removable", "Remove", nullptr, "()");
}

} // namespace

void NeighbourRegistry::check(GError* failure) {
    if (!failure) return;
    const GLibPointer<GError> error(failure);
    throw std::runtime_error(error->message);
}

bool NeighbourRegistry::has(const std::string& identifier, const std::string& group) {
    return find(identifier).has(group);
}

GObjectPointer<ESource> NeighbourRegistry::newSource(const char* extension, const char* backend, const char* parent,
                                                     std::string_view title) {
    GObjectPointer<ESource> source(e_source_new(nullptr, nullptr, nullptr));
    e_source_set_parent(source.get(), parent);
    e_source_set_display_name(source.get(), std::string(title).c_str());
    e_source_backend_set_backend_name(E_SOURCE_BACKEND(e_source_get_extension(source.get(), extension)), backend);
    return source;
}

void NeighbourRegistry::setAddress(ESource* source, std::string_view address) {
    auto* web = E_SOURCE_WEBDAV(e_source_get_extension(source, E_SOURCE_EXTENSION_WEBDAV_BACKEND));
    GUri* const uri = g_uri_parse(std::string(address).c_str(), G_URI_FLAGS_NONE, nullptr);
    e_source_webdav_set_uri(web, uri);
    g_uri_unref(uri);
}

std::string NeighbourRegistry::create(ESource* source) {
    const GLibPointer<char> data(e_source_to_string(source, nullptr));
    GVariantBuilder list;
    g_variant_builder_init(&list, G_VARIANT_TYPE("a{ss}"));
    g_variant_builder_add(&list, "{ss}", e_source_get_uid(source), data.get());
    callRegistry(managerPath, "org.gnome.evolution.dataserver.SourceManager", "CreateSources",
                 g_variant_new("(a{ss})", &list), "()");
    return e_source_get_uid(source);
}

void NeighbourRegistry::setEnabled(const std::string& identifier, bool isEnabled) {
    write(identifier, "Enabled", isEnabled ? "true" : "false");
}

void NeighbourRegistry::rename(const std::string& identifier, std::string_view title) {
    write(identifier, "DisplayName", std::string(title));
}

void NeighbourRegistry::setDefault(const char* key, const std::string& identifier) {
    const GObjectPointer<GSettings> settings(g_settings_new("org.gnome.Evolution.DefaultSources"));
    g_settings_set_string(settings.get(), key, identifier.c_str());
}

void NeighbourRegistry::remove(const std::string& identifier) {
    removeSource(find(identifier));
}

void NeighbourRegistry::removeAll(const std::vector<std::string>& groups) {
    for (const auto& source : sources())
        if (source.isRemovable && std::ranges::any_of(groups, [&](const auto& group) { return source.has(group); }))
            removeSource(source);
}

NeighbourConnection::NeighbourConnection(const std::string& identifier, const Connect& connect) {
    g_main_context_push_thread_default(m_context.get());
    const GObjectPointer<ESource> source(e_source_new_with_uid(identifier.c_str(), nullptr, nullptr));
    // A service that is just starting, or dying of what a test did to it, is there again soon.
    for (int attemptsLeft = 3; !m_client; --attemptsLeft) {
        GError* error = nullptr;
        m_client.reset(connect(source.get(), &error));
        if (attemptsLeft == 0)
            NeighbourRegistry::check(error);
        else
            g_clear_error(&error);
    }
}

NeighbourConnection::~NeighbourConnection() {
    m_client.reset();
    while (g_main_context_iteration(m_context.get(), FALSE)) {
    }
    g_main_context_pop_thread_default(m_context.get());
}

} // namespace bridge
