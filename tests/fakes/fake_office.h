#pragma once

#include "adapters/libreoffice/office.h"

#include <atomic>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace bridge::office {

// An office program whose files, documents and exports are in memory. It can fail, hang and crash when told, keeps a
// list of what it was asked, and notices when it is asked two things at once. A text that is a number becomes one in a
// cell; it doesn't calculate.
class FakeOffice : public Office {
public:
    using Grid = std::map<std::pair<int32_t, int32_t>, CellValue>; // by row and column

    struct FakeSheet {
        std::string name = "Sheet 1";
        Grid cells;
        std::vector<std::pair<std::string, CellRange>> named = {}; // its tables besides the grid
    };
    struct Content {
        DocumentKind kind;
        std::string body;
        std::vector<FakeSheet> sheets;
        int32_t activeSheet = 0;
        std::vector<Slide> slides;
    };
    struct Export {
        ExportFormat format;
        Content content;
    };

    // How far a grid goes.
    static constexpr int32_t mostColumns = 16'384, mostRows = 1'048'576;

    static Content emptyContent(DocumentKind kind);

    std::map<std::string, Content> files;   // by path
    std::map<std::string, Export> exports;  // by path
    std::vector<std::string> calls;         // "setCells", in order; closeAll is none
    std::optional<std::string> unavailable; // why
    std::atomic<bool> wasAskedTwiceAtOnce = false;
    int closedAll = 0;
    std::function<void()> onHang = [] {}; // on the script's thread, when it begins

    size_t count(std::string_view name) const;
    size_t openDocuments() const { return m_open.size(); }
    // How many changes the last setCells had.
    size_t lastChanges() const { return m_lastChanges; }

    // Of the nth call of that name from now on, from 1.
    void failAt(std::string_view name, size_t nth, ScriptError error);
    // It takes all the time that the call has, or until the script is given up; then every document is gone.
    void hangAt(std::string_view name, size_t nth);
    // The time is over at once.
    void timeOutAt(std::string_view name, size_t nth);

    std::optional<std::string> whyUnavailable() const override { return unavailable; }
    bool isRunning() const override { return m_isRunning; }
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
    struct OpenDocument {
        Content content;
        std::string path;
    };
    struct Trouble {
        enum class Kind { failure, hang, timeOut } kind;
        std::string name;
        size_t after; // so many more calls of that name
        std::optional<ScriptError> error;
    };
    // One call from its beginning to its end.
    class Turn {
    public:
        Turn(FakeOffice& office, const char* name, Call& call);
        ~Turn() { m_office.m_isBusy = false; }

    private:
        FakeOffice& m_office;
    };

    void plan(Trouble::Kind kind, std::string_view name, size_t nth, std::optional<ScriptError> error);
    void meetTrouble(std::string_view name, Call& call);
    Content& content(DocumentID document);
    FakeSheet& sheet(DocumentID document, int32_t index);
    // Where the table is on the sheet.
    static CellRange& place(FakeSheet& sheet, int32_t table);
    static CellRange onSheet(FakeSheet& sheet, int32_t table, CellRange range);
    Slide& slide(DocumentID document, int32_t index);

    std::map<DocumentID, OpenDocument> m_open;
    int64_t m_lastID = 0;
    std::vector<Trouble> m_troubles;
    size_t m_lastChanges = 0;
    std::atomic<bool> m_isBusy = false;
    std::atomic<bool> m_isRunning = false;
};

} // namespace bridge::office
