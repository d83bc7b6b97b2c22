#pragma once

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace bridge {

// A folder of this test's own, gone with it.
class TemporaryFolder {
public:
    TemporaryFolder() : m_path((std::filesystem::temp_directory_path() / "bridge-test-XXXXXX").string()) {
        if (!mkdtemp(m_path.data())) throw std::runtime_error("no temporary folder");
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    std::filesystem::path path() const { return m_path; }
    std::string file(const std::string& name) const { return m_path + "/" + name; }

private:
    std::string m_path;
};

} // namespace bridge
