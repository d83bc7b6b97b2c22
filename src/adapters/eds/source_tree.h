#pragma once

#include "adapters/eds/source_registry.h"

#include <map>

namespace bridge {

// The registered sources by identifier, as they hang together. They outlive it.
class SourceTree {
public:
    explicit SourceTree(const std::vector<RegisteredSource>& sources);

    // Nothing when there is none.
    const RegisteredSource* find(const std::string& identifier) const;
    // With all its ancestors.
    bool isEnabled(const RegisteredSource& source) const;

    auto begin() const { return m_sources.begin(); }
    auto end() const { return m_sources.end(); }

private:
    std::map<std::string, const RegisteredSource*> m_sources;
};

} // namespace bridge
