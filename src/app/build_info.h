#pragma once

#include "platform/application_info.h"

namespace bridge {

// The version that this program was built as.
class BuildInfo : public ApplicationInfo {
public:
    std::optional<std::string> shortVersion() const override;
};

} // namespace bridge
