#pragma once

#include "adapters/jsonfile/private_file.h"
#include "base/json_value.h"
#include "platform/user_defaults.h"

namespace bridge {

// The settings as one JSON object in a file of the user's, kept in memory and saved at each change. A blob is its
// base64 string, so in the file it looks like a string, and either can be read as the other. What else the object
// holds is kept.
class JSONFileUserDefaults : public UserDefaults {
public:
    // A file that is no JSON object is set aside under another name, and the settings begin empty. Throws PlatformError
    // when the file is there and can't be read: settings that can't be seen must not be written over.
    explicit JSONFileUserDefaults(std::string path);

    bool contains(std::string_view key) const override;
    std::optional<std::vector<std::string>> strings(std::string_view key) const override;
    std::optional<std::string> string(std::string_view key) const override;
    std::optional<std::string> data(std::string_view key) const override;

    void setStrings(std::string_view key, std::vector<std::string> values) override;
    void setString(std::string_view key, std::string value) override;
    void setData(std::string_view key, std::string bytes) override;
    void saveAgain() override;

private:
    void set(std::string_view key, JSONValue value);
    void save();
    const JSONValue* find(std::string_view key) const;

    const std::string m_path;
    PrivateFile m_file;
    JSONValue::Object m_values;
};

} // namespace bridge
