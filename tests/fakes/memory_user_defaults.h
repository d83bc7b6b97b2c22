#pragma once

#include "platform/user_defaults.h"

#include <map>
#include <variant>

namespace bridge {

// Settings that last as long as the object.
class MemoryUserDefaults : public UserDefaults {
public:
    bool contains(std::string_view key) const override { return m_values.contains(key); }
    std::optional<std::vector<std::string>> strings(std::string_view key) const override {
        return get<std::vector<std::string>>(key);
    }
    std::optional<std::string> string(std::string_view key) const override { return get<std::string>(key); }
    std::optional<std::string> data(std::string_view key) const override {
        if (auto blob = get<Blob>(key)) return std::move(blob->bytes);
        return std::nullopt;
    }

    void setStrings(std::string_view key, std::vector<std::string> values) override { set(key, std::move(values)); }
    void setString(std::string_view key, std::string value) override { set(key, std::move(value)); }
    void setData(std::string_view key, std::string bytes) override { set(key, Blob{std::move(bytes)}); }
    void saveAgain() override {}

    int timesSet() const { return m_timesSet; }

private:
    struct Blob {
        std::string bytes;
    };
    using Value = std::variant<std::vector<std::string>, std::string, Blob>;

    template <typename T> std::optional<T> get(std::string_view key) const {
        const auto found = m_values.find(key);
        if (found == m_values.end()) return std::nullopt;
        const auto* value = std::get_if<T>(&found->second);
        if (!value) return std::nullopt;
        return *value;
    }
    void set(std::string_view key, Value value) {
        m_values.insert_or_assign(std::string(key), std::move(value));
        ++m_timesSet;
    }

    std::map<std::string, Value, std::less<>> m_values;
    int m_timesSet = 0;
};

} // namespace bridge
