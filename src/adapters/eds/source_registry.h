#pragma once

#include "adapters/eds/source_data.h"

#include <optional>
#include <vector>

namespace bridge {

// A source, as the registry has it at this moment.
struct RegisteredSource {
    std::string path; // on the bus
    std::string identifier;
    SourceData data;
    bool isWritable = false; // the source itself; what it holds is another question
    bool isRemovable = false;
    bool takesNewOnes = false; // an account whose server makes calendars
    bool isRemotelyRemovable = false;
};

// The service that knows all sources, by its own interface: what the library keeps of it is as old as the last notice,
// can't be told to hurry, and leaks when it is made afresh. Blocks; throws PlatformError, also when it is not there.
class SourceRegistry {
public:
    explicit SourceRegistry(GCancellable* cancellable);

    std::vector<RegisteredSource> sources() const;

    void create(const std::string& identifier, const std::string& data) const;
    // On the server of an account.
    void createRemotely(const RegisteredSource& account, const std::string& identifier, const std::string& data) const;
    void write(const RegisteredSource& source) const;
    void remove(const RegisteredSource& source) const;

private:
    GLibPointer<GVariant> call(const std::string& path, const char* interface, const char* method, GVariant* arguments,
                               const char* type) const;

    GCancellable* m_cancellable;
    GObjectPointer<GDBusConnection> m_bus;
};

} // namespace bridge
