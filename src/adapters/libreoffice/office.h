#pragma once

#include "adapters/applescript/script_call.h"
#include "platform/script_engine.h"

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace bridge::office {

enum class DocumentKind { text, spreadsheet, presentation };

// A document that is open; a number that is never given twice while the bridge runs.
enum class DocumentID : int64_t {};

// What a cell holds; nothing, a truth, a number, a text. What has a format of its own (a date, an amount) is read as
// the text that the cell shows.
using CellValue = std::variant<std::monostate, bool, double, std::string>;

// Columns and rows from 0; both corners belong to it.
struct CellRange {
    int32_t firstColumn = 0, firstRow = 0, lastColumn = 0, lastRow = 0;
    bool operator==(const CellRange&) const = default;
};

// One cell to be set: a text is taken as if it were typed there, so that "12.5", "3 %", "=A1*2" and "2026-08-14"
// become what they mean; nothing empties the cell.
struct CellChange {
    int32_t column = 0, row = 0;
    CellValue value;
};

// A table of a sheet: the sheet's own grid, which comes first and bears the name "Table 1" unless something is named
// so, or a named range of it. All positions within a table count from its top left cell.
struct Table {
    std::string name;
    int32_t rows = 0, columns = 0; // of the grid: as far as something is in it
};

struct Sheet {
    std::string name;
    std::vector<Table> tables;
};

struct Slide {
    bool hasTitle = false, hasBody = false;
    std::string title, body;
};

enum class ExportFormat { pdf, docx, epub, text, xlsx, csv, pptx, movie };

// Office documents, opened by an office program. On the thread of a script; each call blocks until it is done, the
// call's time is over or the script was given up. What fails throws ScriptError with a message that a person can use:
// noSuchObject where something is missing, timedOut, otherwise -10000 or the number of the file system's trouble.
// After a time-out or a crash every document that was open is gone and the next call starts the program anew; nothing
// that changes is ever tried twice. Sheets, tables and slides count from 0.
class Office {
public:
    using Call = applescript::ScriptCall;
    virtual ~Office() = default;

    // Whether the program is there to be started, and if not, what to install. Any thread.
    virtual std::optional<std::string> whyUnavailable() const = 0;
    virtual bool isRunning() const = 0; // main thread

    // A spreadsheet has one empty sheet, a presentation one slide with room for a title and a body.
    virtual DocumentID create(DocumentKind kind, Call& call) = 0;
    // Opens what lies at the path, which keeps its name whatever format it has inside. What is there but isn't a
    // document of that kind, or damaged, is an error.
    virtual DocumentID open(DocumentKind kind, const std::string& path, Call& call) = 0;
    // Writes it where it was opened or saved last. The file there is whole at every moment: the new one takes its place
    // at once or not at all. Refused for a file whose format can be read but not written, or that another program has
    // open or has changed since.
    virtual void save(DocumentID document, Call& call) = 0;
    // Writes a new file; what is there already is not replaced.
    virtual void saveAs(DocumentID document, const std::string& path, Call& call) = 0;
    virtual void exportTo(DocumentID document, const std::string& path, ExportFormat format, Call& call) = 0;
    // Without saving; a document that is gone is no error.
    virtual void close(DocumentID document, Call& call) = 0;
    // Closes what is still open, in whatever way that succeeds.
    virtual void closeAll() noexcept = 0;

    // Paragraphs are separated by line feeds.
    virtual std::string bodyText(DocumentID document, Call& call) = 0;
    virtual void setBodyText(DocumentID document, const std::string& text, Call& call) = 0;

    virtual std::vector<Sheet> sheets(DocumentID document, Call& call) = 0;
    // As the document says when it is opened. What is saved here may not say it any more: then it is the first.
    virtual int32_t activeSheet(DocumentID document, Call& call) = 0;
    // In row-major order; a range beyond the table's room is noSuchObject.
    virtual std::vector<CellValue> cells(DocumentID document, int32_t sheet, int32_t table, CellRange range,
                                         Call& call) = 0;
    // In this order. Either all are set or it throws.
    virtual void setCells(DocumentID document, int32_t sheet, int32_t table, const std::vector<CellChange>& changes,
                          Call& call) = 0;
    // What lies beyond the new size is emptied; a grid always has room for more.
    virtual void resizeTable(DocumentID document, int32_t sheet, int32_t table, int32_t rows, int32_t columns,
                             Call& call) = 0;

    virtual std::vector<Slide> slides(DocumentID document, Call& call) = 0;
    // At the end, with room for a title and a body.
    virtual void addSlide(DocumentID document, Call& call) = 0;
    // Throws noSuchObject when the slide has no room for it.
    virtual void setSlideTitle(DocumentID document, int32_t slide, const std::string& text, Call& call) = 0;
    virtual void setSlideBody(DocumentID document, int32_t slide, const std::string& text, Call& call) = 0;
};

} // namespace bridge::office
