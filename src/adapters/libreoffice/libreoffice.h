#pragma once

#include "adapters/libreoffice/office.h"
#include "adapters/libreoffice/sandbox.h"

#include <chrono>
#include <memory>

namespace bridge::office {

class Desk;

struct LibreOfficeOptions {
    OfficePrograms programs;
    // Made when it isn't there, and for nothing else; on a disk with room for copies of the documents.
    std::string folder;

    // LibreOffice goes after so long without documents, and whenever the last document is closed after so many or
    // with so much memory in use; it comes back by itself.
    std::chrono::seconds idle{300};
    int64_t residentBytes = int64_t{600} << 20;
    int64_t documents = 200;

    int64_t largestFile = int64_t{200} << 20;
};

// LibreOffice, started on first use and kept warm, in a sandbox where no file of the user is: documents are copied in
// and out, and the program between the bridge and LibreOffice is in the sandbox, too. Scripts take turns.
class LibreOffice : public Office {
public:
    explicit LibreOffice(LibreOfficeOptions options);
    ~LibreOffice() override;

    std::optional<std::string> whyUnavailable() const override;
    bool isRunning() const override;

    DocumentID create(DocumentKind kind, Call& call) override;
    DocumentID open(DocumentKind kind, const std::string& path, Call& call) override;
    void save(DocumentID document, Call& call) override;
    void saveAs(DocumentID document, const std::string& path, Call& call) override;
    void exportTo(DocumentID document, const std::string& path, ExportFormat format, Call& call) override;
    void close(DocumentID document, Call& call) override;
    void closeAll() noexcept override;

    std::string bodyText(DocumentID document, Call& call) override;
    void setBodyText(DocumentID document, const std::string& text, Call& call) override;

    std::vector<Sheet> sheets(DocumentID document, Call& call) override;
    int32_t activeSheet(DocumentID document, Call& call) override;
    std::vector<CellValue> cells(DocumentID document, int32_t sheet, int32_t table, CellRange range,
                                 Call& call) override;
    void setCells(DocumentID document, int32_t sheet, int32_t table, const std::vector<CellChange>& changes,
                  Call& call) override;
    void resizeTable(DocumentID document, int32_t sheet, int32_t table, int32_t rows, int32_t columns,
                     Call& call) override;

    std::vector<Slide> slides(DocumentID document, Call& call) override;
    void addSlide(DocumentID document, Call& call) override;
    void setSlideTitle(DocumentID document, int32_t slide, const std::string& text, Call& call) override;
    void setSlideBody(DocumentID document, int32_t slide, const std::string& text, Call& call) override;

private:
    std::unique_ptr<Desk> m_desk;
};

} // namespace bridge::office
