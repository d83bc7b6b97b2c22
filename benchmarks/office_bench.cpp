#include "adapters/libreoffice/helper/documents.h"
#include "adapters/libreoffice/helper/text.h"
#include "adapters/libreoffice/libreoffice.h"
#include "benchmarks/measure.h"
#include "tests/support/temporary_folder.h"

#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XCellRangeFormula.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>

#include <cstdio>
#include <cstdlib>
#include <unistd.h>

namespace {

using namespace bridge;
using namespace bridge::bench;
using namespace bridge::office;

constexpr int32_t side = 100; // rows and columns of the ten thousand cells
constexpr int rounds = 7;

void require(bool condition) {
    if (!condition) std::exit(1);
}

std::string cellText(int32_t column, int32_t row) {
    return column % 2 == 0 ? "Text " + std::to_string(row) : std::to_string(row * side + column);
}

std::string longText() {
    std::string text;
    while (text.size() < 500'000)
        text += text.size() % 5 == 0 ? "a paragraph ends here\n" : "the fox runs on, ";
    text.resize(500'000, 'x');
    return text;
}

// LibreOffice by its own interface, in this process and without a sandbox.
class Bare {
public:
    Bare() : m_office("/usr/lib/libreoffice"), m_documents(m_office) {}

    void cells(const std::string& path) {
        m_documents.create({1, DocumentKind::spreadsheet});
        const auto sheets = as<css::sheet::XSpreadsheetDocument>(m_documents.find(1))->getSheets();
        const auto range =
            element<css::sheet::XSpreadsheet>(sheets, 0)->getCellRangeByPosition(0, 0, side - 1, side - 1);
        css::uno::Sequence<css::uno::Sequence<OUString>> texts(side);
        for (int32_t row = 0; row < side; ++row) {
            texts.getArray()[row].realloc(side);
            for (int32_t column = 0; column < side; ++column)
                texts.getArray()[row].getArray()[column] = toUno(cellText(column, row));
        }
        as<css::sheet::XCellRangeFormula>(range)->setFormulaArray(texts);
        m_documents.store({1, path});
        require(as<css::sheet::XCellRangeData>(range)->getDataArray().getLength() == side);
        m_documents.close(1);
    }

    void text(const std::string& path, const std::string& text) {
        m_documents.create({2, DocumentKind::text});
        setBodyText(m_documents.find(2), text);
        m_documents.store({2, path});
        require(bodyText(m_documents.find(2)) == text);
        m_documents.close(2);
    }

private:
    SOffice m_office;
    Documents m_documents;
};

class Ours {
public:
    explicit Ours(const std::string& folder) : m_office(options(folder)) {}

    void cells(const std::string& path) {
        const auto document = m_office.create(DocumentKind::spreadsheet, m_call);
        std::vector<CellChange> changes;
        for (int32_t row = 0; row < side; ++row)
            for (int32_t column = 0; column < side; ++column)
                changes.push_back({column, row, cellText(column, row)});
        m_office.setCells(document, 0, 0, changes, m_call);
        m_office.saveAs(document, path, m_call);
        require(m_office.cells(document, 0, 0, {0, 0, side - 1, side - 1}, m_call).size() == size_t{side} * side);
        m_office.close(document, m_call);
    }

    void text(const std::string& path, const std::string& text) {
        const auto document = m_office.create(DocumentKind::text, m_call);
        m_office.setBodyText(document, text, m_call);
        m_office.saveAs(document, path, m_call);
        require(m_office.bodyText(document, m_call) == text);
        m_office.close(document, m_call);
    }

private:
    static LibreOfficeOptions options(const std::string& folder) {
        LibreOfficeOptions options;
        options.programs.helper = BRIDGE_OFFICE_HELPER;
        options.folder = folder;
        return options;
    }

    applescript::ScriptCall m_call{std::chrono::minutes(10)};
    LibreOffice m_office;
};

} // namespace

// Documents through the helper, the sandbox and the copies, against the same work straight over UNO.
int main() {
    const TemporaryFolder folder;
    int number = 0;
    const auto path = [&] { return folder.file(std::to_string(++number)); };
    const auto milliseconds = [](const std::function<void()>& action) { return secondsFor(action) * 1e3; };
    const auto text = longText();

    std::unique_ptr<Bare> bare;
    std::unique_ptr<Ours> ours;
    report("first document: start, 10,000 cells created, saved, read",
           compare(
               1,
               [&] {
                   return milliseconds([&] {
                       bare = std::make_unique<Bare>();
                       bare->cells(path());
                   });
               },
               [&] {
                   return milliseconds([&] {
                       ours = std::make_unique<Ours>(folder.file("work"));
                       ours->cells(path());
                   });
               }),
           "ms", "against UNO without a sandbox");
    report("10,000 cells created, saved, read",
           compare(
               rounds, [&] { return milliseconds([&] { bare->cells(path()); }); },
               [&] { return milliseconds([&] { ours->cells(path()); }); }),
           "ms", "against UNO; goal 1.50");
    report("500,000 characters created, saved, read",
           compare(
               rounds, [&] { return milliseconds([&] { bare->text(path(), text); }); },
               [&] { return milliseconds([&] { ours->text(path(), text); }); }),
           "ms", "against UNO; goal 1.50");
    std::fflush(stdout);
    ours.reset();
    bare.reset();
    // The connection's threads would miss LibreOffice.
    _exit(EXIT_SUCCESS);
}
