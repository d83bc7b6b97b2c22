#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

namespace bridge {

// An empty folder for one test; it goes with the test, whatever is in it.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "base-test-XXXXXX").string();
        if (!mkdtemp(name.data())) std::abort();
        m_path = name;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    const std::filesystem::path& path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

} // namespace bridge
