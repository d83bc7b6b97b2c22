#pragma once

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

namespace bridge {

// The folder of public test data, which lives outside the project.
inline std::filesystem::path publicData(const char* folder) {
    return std::filesystem::path(BRIDGE_TEST_DATA) / folder;
}

inline std::string readFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace bridge

// For tests over public data: says that they did not run where it is absent.
#define REQUIRE_PUBLIC_DATA(folder)                                                                                    \
    if (!std::filesystem::is_directory(bridge::publicData(folder)))                                                    \
    GTEST_SKIP() << "no public test data at " << bridge::publicData(folder)
