#include "adapters/libreoffice/helper/shown_texts.h"

#include "adapters/libreoffice/helper/csv.h"
#include "adapters/libreoffice/helper/documents.h"
#include "adapters/libreoffice/helper/export.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace bridge::office {

namespace {

class ScratchFolder {
public:
    ScratchFolder() {
        std::string path = "/tmp/shown-XXXXXX";
        if (!mkdtemp(path.data())) throw ScriptError(failed, "There is no room for LibreOffice's temporary files.");
        m_path = path;
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder() {
        std::error_code none;
        std::filesystem::remove_all(m_path, none);
    }

    const std::filesystem::path& path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

} // namespace

std::vector<std::vector<std::string>> shownTexts(const Ref<css::lang::XComponent>& document, sal_Int32 sheet) {
    const ScratchFolder folder;
    storeTo(document, folder.path() / "shown.csv", csvFilter, csvOptions(sheet).c_str());
    // LibreOffice adds the sheet's name to that of the file.
    const std::filesystem::directory_iterator files(folder.path());
    if (files == std::filesystem::directory_iterator())
        throw ScriptError(failed, "The cells' texts could not be read.");
    std::ifstream file(files->path(), std::ios::binary);
    return parseCSV(std::string(std::istreambuf_iterator<char>(file), {}));
}

} // namespace bridge::office
