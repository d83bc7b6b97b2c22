#pragma once

#include <optional>
#include <string>

namespace bridge {

// What the installed application says of itself.
class ApplicationInfo {
public:
    virtual ~ApplicationInfo() = default;

    // The version people see, such as "1.4.2"; nothing when the application carries none.
    virtual std::optional<std::string> shortVersion() const = 0;
};

} // namespace bridge
