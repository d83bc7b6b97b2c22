#include "sample_data.h"

#include <fstream>
#include <stdexcept>

namespace bridge::playground {

namespace {

struct Sample {
    const char* path;
    const char* content;
};

constexpr Sample samples[] = {
    {"Welcome.txt", "This folder is made for trying out. Everything in it may be read, changed and thrown away.\n"},
    {"Shopping list.md", "# Saturday\n\n- milk\n- bread\n- apples\n"},
    {"Notes/Ideas.txt", "Paint the shed.\nLearn the names of the birds in the garden.\n"},
    {"Notes/Überraschung – 日本語 – 😀.txt", "Grüße, ご挨拶, שלום, مرحبا.\n"},
    {"Projects/Garden/Plan.md", "# Garden\n\n1. Dig.\n2. Sow.\n3. Wait.\n"},
    {"Projects/Garden/Costs.csv", "what,euro\nseeds,12.50\nspade,29.90\n"},
    {".hidden", "Names that begin with a full stop are not listed, but can be read by name.\n"},
};

} // namespace

void makeSampleDocuments(const std::filesystem::path& folder) {
    std::filesystem::create_directories(folder);
    for (const auto& sample : samples) {
        const auto path = folder / sample.path;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream file(path, std::ios::binary);
        file << sample.content;
        if (!file.flush()) throw std::runtime_error("A sample file could not be written: " + path.string());
    }
}

} // namespace bridge::playground
