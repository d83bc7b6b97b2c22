#include "adapters/eds/source_registry.h"

#include "adapters/dbus/session_bus.h"
#include "adapters/eds/eds_error.h"
#include "adapters/eds/eds_names.h"

namespace bridge {

namespace {

constexpr auto managerPath = "/org/gnome/evolution/dataserver/SourceManager";
constexpr auto managerInterface = "org.gnome.evolution.dataserver.SourceManager";
constexpr auto sourceInterface = "org.gnome.evolution.dataserver.Source";
constexpr auto writableInterface = "org.gnome.evolution.dataserver.Source.Writable";
constexpr auto removableInterface = "org.gnome.evolution.dataserver.Source.Removable";
constexpr auto creatableInterface = "org.gnome.evolution.dataserver.Source.RemoteCreatable";
constexpr auto deletableInterface = "org.gnome.evolution.dataserver.Source.RemoteDeletable";

bool has(GVariant* interfaces, const char* name) {
    return GLibPointer<GVariant>(g_variant_lookup_value(interfaces, name, nullptr)) != nullptr;
}

std::string textOf(GVariant* properties, const char* name) {
    const char* text = "";
    g_variant_lookup(properties, name, "&s", &text);
    return text;
}

std::optional<RegisteredSource> describe(const char* path, GVariant* interfaces) {
    const GLibPointer<GVariant> properties(g_variant_lookup_value(interfaces, sourceInterface, G_VARIANT_TYPE_VARDICT));
    if (!properties) return std::nullopt;
    return RegisteredSource{.path = path,
                            .identifier = textOf(properties.get(), "UID"),
                            .data = SourceData(textOf(properties.get(), "Data")),
                            .isWritable = has(interfaces, writableInterface),
                            .isRemovable = has(interfaces, removableInterface),
                            .takesNewOnes = has(interfaces, creatableInterface),
                            .isRemotelyRemovable = has(interfaces, deletableInterface)};
}

} // namespace

SourceRegistry::SourceRegistry(GCancellable* cancellable) : m_cancellable(cancellable), m_bus(sessionBus(cancellable)) {
    if (!m_bus) throw PlatformError("There is no session bus.");
}

GLibPointer<GVariant> SourceRegistry::call(const std::string& path, const char* interface, const char* method,
                                           GVariant* arguments, const char* type) const {
    // The cancellable has the time.
    constexpr int endless = G_MAXINT;
    Outcome called;
    GLibPointer<GVariant> answer(g_dbus_connection_call_sync(m_bus.get(), registryName, path.c_str(), interface, method,
                                                             arguments, G_VARIANT_TYPE(type), G_DBUS_CALL_FLAGS_NONE,
                                                             endless, m_cancellable, called.out()));
    called.check(serverName);
    return answer;
}

std::vector<RegisteredSource> SourceRegistry::sources() const {
    const auto answer =
        call(managerPath, "org.freedesktop.DBus.ObjectManager", "GetManagedObjects", nullptr, "(a{oa{sa{sv}}})");
    const GLibPointer<GVariant> objects(g_variant_get_child_value(answer.get(), 0));
    std::vector<RegisteredSource> sources;
    const size_t count = g_variant_n_children(objects.get());
    for (size_t index = 0; index < count; ++index) {
        const char* path = nullptr;
        GVariant* interfaces = nullptr;
        g_variant_get_child(objects.get(), index, "{&o@a{sa{sv}}}", &path, &interfaces);
        const GLibPointer<GVariant> owned(interfaces);
        if (auto source = describe(path, interfaces)) sources.push_back(std::move(*source));
    }
    return sources;
}

void SourceRegistry::create(const std::string& identifier, const std::string& data) const {
    GVariantBuilder list;
    g_variant_builder_init(&list, G_VARIANT_TYPE("a{ss}"));
    g_variant_builder_add(&list, "{ss}", identifier.c_str(), data.c_str());
    call(managerPath, managerInterface, "CreateSources", g_variant_new("(a{ss})", &list), "()");
}

void SourceRegistry::createRemotely(const RegisteredSource& account, const std::string& identifier,
                                    const std::string& data) const {
    call(account.path, creatableInterface, "Create", g_variant_new("(ss)", identifier.c_str(), data.c_str()), "()");
}

void SourceRegistry::write(const RegisteredSource& source) const {
    call(source.path, writableInterface, "Write", g_variant_new("(s)", source.data.text().c_str()), "()");
}

void SourceRegistry::remove(const RegisteredSource& source) const {
    if (source.isRemotelyRemovable)
        call(source.path, deletableInterface, "Delete", nullptr, "()");
    else
        call(source.path, removableInterface, "Remove", nullptr, "()");
}

} // namespace bridge
