#include "tools/describe/openapi.h"

#include <cstdio>
#include <exception>
#include <fmt/format.h>
#include <fstream>
#include <iterator>
#include <string_view>

// Prints the OpenAPI description of the wire, or checks that a file holds it.
int main(int count, char** words) try {
    const auto document = bridge::openAPIDocument();
    if (count == 1) {
        fmt::print("{}", document);
        return 0;
    }
    if (count != 3 || std::string_view(words[1]) != "--check") {
        fmt::print(stderr, "Usage: {} [--check FILE]\n", words[0]);
        return 2;
    }
    std::ifstream file(words[2], std::ios::binary);
    const std::string published{std::istreambuf_iterator<char>(file), {}};
    if (published == document) return 0;
    fmt::print(stderr, "{0} is not what the code says. Write it anew, and look at what changed:\n    {1} >{0}\n",
               words[2], words[0]);
    return 1;
} catch (const std::exception& error) {
    fmt::print(stderr, "{}\n", error.what());
    return 1;
}
