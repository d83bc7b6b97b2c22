#include "adapters/iworkapps/terms.h"

#include "adapters/iworkapps/export_type.h"
#include "adapters/iworkapps/model.h"

namespace bridge::iworkapps {

Dictionary commonTerms(DocumentKind kind, const std::vector<std::string>& documentProperties,
                       const std::vector<std::string>& documentElements) {
    const auto model = Model::classNameFor(kind);
    ClassTerms document{
        "document", "documents", {"name", "id", "file", "modified", "document " + model}, documentElements};
    document.properties.insert(document.properties.end(), documentProperties.begin(), documentProperties.end());
    return {
        .classes = {{"application", "applications", {"name", "frontmost"}, {"document", model}},
                    std::move(document),
                    {model, model + "s", {"name", "id"}, {}}},
        .commands = {{"export", {"to", "as"}}},
        .constants = exportConstants(),
    };
}

} // namespace bridge::iworkapps
