#include "adapters/eds/source_tree.h"

namespace bridge {

SourceTree::SourceTree(const std::vector<RegisteredSource>& sources) {
    for (const auto& source : sources)
        m_sources[source.identifier] = &source;
}

const RegisteredSource* SourceTree::find(const std::string& identifier) const {
    const auto found = m_sources.find(identifier);
    return found == m_sources.end() ? nullptr : found->second;
}

bool SourceTree::isEnabled(const RegisteredSource& source) const {
    const auto* place = &source;
    // A faulty registry may have a circle.
    for (size_t steps = 0; place && steps <= m_sources.size(); ++steps) {
        if (!place->data.isEnabled()) return false;
        place = find(place->data.parent());
    }
    return true;
}

} // namespace bridge
