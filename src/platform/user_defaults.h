#pragma once

#include "base/published.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bridge {

// The settings that the program keeps between runs: a flat map from key to value. Main thread only.
//
// A value is an array of strings, a string, or a blob of bytes. Reading a key as another kind than was stored gives
// nothing, the same as a key that is absent; contains() tells the two apart. What was set is read back at once, also
// when it could not be saved.
//
// Setting never fails for the caller: the store saves before it returns, and what it can't save is in `savingFailure`.
// After a crash each key has its old or its new value, never a mixture.
class UserDefaults {
public:
    virtual ~UserDefaults() = default;

    virtual bool contains(std::string_view key) const = 0;
    virtual std::optional<std::vector<std::string>> strings(std::string_view key) const = 0;
    virtual std::optional<std::string> string(std::string_view key) const = 0;
    virtual std::optional<std::string> data(std::string_view key) const = 0;

    virtual void setStrings(std::string_view key, std::vector<std::string> values) = 0;
    virtual void setString(std::string_view key, std::string value) = 0;
    virtual void setData(std::string_view key, std::string bytes) = 0;

    // Saves whatever could not be saved before; nothing when there is no such thing. Each setting does the same.
    virtual void saveAgain() = 0;

    // Why something that was set would be lost if the program ended now, and what helps, in sentences for the user;
    // nothing while all is saved.
    Published<std::optional<std::string>> savingFailure;
};

} // namespace bridge
