#pragma once

#include <cstdlib>
#include <optional>
#include <string>
#include <time.h>

namespace bridge {

// Where the user is, as long as this object lives.
class UserTimeZone {
public:
    explicit UserTimeZone(const char* identifier) {
        if (const char* variable = getenv("TZ")) m_former = variable;
        setenv("TZ", identifier, 1);
        tzset();
    }
    UserTimeZone(const UserTimeZone&) = delete;
    UserTimeZone& operator=(const UserTimeZone&) = delete;
    ~UserTimeZone() {
        if (m_former)
            setenv("TZ", m_former->c_str(), 1);
        else
            unsetenv("TZ");
        tzset();
    }

private:
    std::optional<std::string> m_former;
};

} // namespace bridge
