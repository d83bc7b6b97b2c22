#include "tests/fakes/fake_office.h"

#include <algorithm>
#include <charconv>
#include <poll.h>

namespace bridge::office {

namespace {

constexpr int failed = -10000;
constexpr int fileNotFound = -43;
constexpr int fileExists = -48;

[[noreturn]] void fail(int number, const std::string& message) {
    throw ScriptError(number, message);
}

[[noreturn]] void isOver() {
    throw ScriptError(ScriptError::timedOut, "The office program took too long.");
}

std::string withLineFeeds(const std::string& text) {
    std::string result;
    for (size_t index = 0; index < text.size(); ++index)
        if (text[index] != '\r')
            result += text[index];
        else if (index + 1 == text.size() || text[index + 1] != '\n')
            result += '\n';
    return result;
}

CellValue asTyped(const CellValue& value) {
    const auto* text = std::get_if<std::string>(&value);
    if (!text) return value;
    if (text->empty()) return std::monostate{};
    if (text->front() == '\'') return text->substr(1);
    if (*text == "TRUE" || *text == "false") return *text == "TRUE";
    double number = 0;
    const auto end = text->data() + text->size();
    const auto [stop, error] = std::from_chars(text->data(), end, number);
    return error == std::errc() && stop == end ? CellValue(number) : value;
}

void put(FakeOffice::Grid& cells, int32_t row, int32_t column, const CellValue& value) {
    const auto typed = asTyped(value);
    if (std::holds_alternative<std::monostate>(typed))
        cells.erase({row, column});
    else
        cells[{row, column}] = typed;
}

} // namespace

FakeOffice::Turn::Turn(FakeOffice& office, const char* name, Call& call) : m_office(office) {
    if (office.m_isBusy.exchange(true)) office.wasAskedTwiceAtOnce = true;
    try {
        office.calls.emplace_back(name);
        if (office.unavailable) fail(failed, *office.unavailable);
        call.check();
        office.m_isRunning = true;
        office.meetTrouble(name, call);
    } catch (...) {
        office.m_isBusy = false;
        throw;
    }
}

FakeOffice::Content FakeOffice::emptyContent(DocumentKind kind) {
    Content content{.kind = kind, .body = {}, .sheets = {}, .slides = {}};
    if (kind == DocumentKind::spreadsheet) content.sheets.emplace_back();
    if (kind == DocumentKind::presentation) content.slides.push_back({true, true, "", ""});
    return content;
}

size_t FakeOffice::count(std::string_view name) const {
    return static_cast<size_t>(std::ranges::count(calls, name));
}

void FakeOffice::failAt(std::string_view name, size_t nth, ScriptError error) {
    plan(Trouble::Kind::failure, name, nth, std::move(error));
}

void FakeOffice::hangAt(std::string_view name, size_t nth) {
    plan(Trouble::Kind::hang, name, nth, std::nullopt);
}

void FakeOffice::timeOutAt(std::string_view name, size_t nth) {
    plan(Trouble::Kind::timeOut, name, nth, std::nullopt);
}

void FakeOffice::plan(Trouble::Kind kind, std::string_view name, size_t nth, std::optional<ScriptError> error) {
    m_troubles.push_back({kind, std::string(name), nth - 1, std::move(error)});
}

void FakeOffice::meetTrouble(std::string_view name, Call& call) {
    for (auto trouble = m_troubles.begin(); trouble != m_troubles.end(); ++trouble) {
        if (trouble->name != name || trouble->after-- > 0) continue;
        const auto met = *trouble;
        m_troubles.erase(trouble);
        if (met.kind == Trouble::Kind::failure) throw *met.error;
        if (met.kind == Trouble::Kind::hang) {
            onHang();
            pollfd cancelled{call.cancelDescriptor(), POLLIN, 0};
            ::poll(&cancelled, 1, static_cast<int>(call.remaining().count()));
        }
        m_open.clear();
        m_isRunning = false;
        isOver();
    }
}

DocumentID FakeOffice::create(DocumentKind kind, Call& call) {
    const Turn turn(*this, "create", call);
    const DocumentID id{++m_lastID};
    m_open.emplace(id, OpenDocument{emptyContent(kind), ""});
    return id;
}

DocumentID FakeOffice::open(DocumentKind kind, const std::string& path, Call& call) {
    const Turn turn(*this, "open", call);
    const auto file = files.find(path);
    if (file == files.end()) fail(fileNotFound, "There is no file " + path + ".");
    if (file->second.kind != kind) fail(failed, path + " is a document of another kind.");
    const DocumentID id{++m_lastID};
    m_open.emplace(id, OpenDocument{file->second, path});
    return id;
}

void FakeOffice::save(DocumentID document, Call& call) {
    const Turn turn(*this, "save", call);
    const auto& saved = content(document);
    const auto& path = m_open.at(document).path;
    if (path.empty()) fail(failed, "The document has no file.");
    files.insert_or_assign(path, saved);
}

void FakeOffice::saveAs(DocumentID document, const std::string& path, Call& call) {
    const Turn turn(*this, "saveAs", call);
    if (!files.emplace(path, content(document)).second) fail(fileExists, path + " is there already.");
    m_open.at(document).path = path;
}

void FakeOffice::exportTo(DocumentID document, const std::string& path, ExportFormat format, Call& call) {
    const Turn turn(*this, "exportTo", call);
    if (!exports.emplace(path, Export{format, content(document)}).second) fail(fileExists, path + " is there already.");
}

void FakeOffice::close(DocumentID document, Call& call) {
    const Turn turn(*this, "close", call);
    m_open.erase(document);
}

void FakeOffice::closeAll() noexcept {
    if (m_isBusy) wasAskedTwiceAtOnce = true;
    ++closedAll;
    m_open.clear();
}

std::string FakeOffice::bodyText(DocumentID document, Call& call) {
    const Turn turn(*this, "bodyText", call);
    return content(document).body;
}

void FakeOffice::setBodyText(DocumentID document, const std::string& text, Call& call) {
    const Turn turn(*this, "setBodyText", call);
    content(document).body = withLineFeeds(text);
}

std::vector<Sheet> FakeOffice::sheets(DocumentID document, Call& call) {
    const Turn turn(*this, "sheets", call);
    std::vector<Sheet> sheets;
    for (const auto& sheet : content(document).sheets) {
        Table grid{"Table 1", 0, 0};
        for (const auto& [cell, value] : sheet.cells) {
            grid.rows = std::max(grid.rows, cell.first + 1);
            grid.columns = std::max(grid.columns, cell.second + 1);
        }
        const auto isNamedSo = [](const auto& named) { return named.first == "Table 1"; };
        if (std::ranges::any_of(sheet.named, isNamedSo)) grid.name = sheet.name;
        sheets.push_back({sheet.name, {grid}});
        for (const auto& [name, range] : sheet.named)
            sheets.back().tables.push_back(
                {name, range.lastRow - range.firstRow + 1, range.lastColumn - range.firstColumn + 1});
    }
    return sheets;
}

int32_t FakeOffice::activeSheet(DocumentID document, Call& call) {
    const Turn turn(*this, "activeSheet", call);
    return content(document).activeSheet;
}

std::vector<CellValue> FakeOffice::cells(DocumentID document, int32_t sheet, int32_t table, CellRange range,
                                         Call& call) {
    const Turn turn(*this, "cells", call);
    auto& its = this->sheet(document, sheet);
    const auto place = onSheet(its, table, range);
    std::vector<CellValue> values;
    for (auto row = place.firstRow; row <= place.lastRow; ++row)
        for (auto column = place.firstColumn; column <= place.lastColumn; ++column) {
            const auto found = its.cells.find({row, column});
            values.push_back(found == its.cells.end() ? CellValue{} : found->second);
        }
    return values;
}

void FakeOffice::setCells(DocumentID document, int32_t sheet, int32_t table, const std::vector<CellChange>& changes,
                          Call& call) {
    const Turn turn(*this, "setCells", call);
    m_lastChanges = changes.size();
    auto& its = this->sheet(document, sheet);
    auto cells = its.cells;
    for (const auto& change : changes) {
        const auto place = onSheet(its, table, {change.column, change.row, change.column, change.row});
        put(cells, place.firstRow, place.firstColumn, change.value);
    }
    its.cells = std::move(cells);
}

void FakeOffice::resizeTable(DocumentID document, int32_t sheet, int32_t table, int32_t rows, int32_t columns,
                             Call& call) {
    const Turn turn(*this, "resizeTable", call);
    auto& its = this->sheet(document, sheet);
    const auto before = onSheet(its, table, {0, 0, 0, 0});
    if (rows < 1 || columns < 1 || rows > mostRows - before.firstRow || columns > mostColumns - before.firstColumn)
        fail(ScriptError::noSuchObject, "The sheet has no room for it.");
    const auto within = [&](const auto& cell) {
        return cell.first.first >= before.firstRow && cell.first.second >= before.firstColumn;
    };
    const auto last = table == 0 ? CellRange{0, 0, mostColumns - 1, mostRows - 1} : place(its, table);
    std::erase_if(its.cells, [&](const auto& cell) {
        const auto [row, column] = cell.first;
        const auto inTable = within(cell) && row <= last.lastRow && column <= last.lastColumn;
        return inTable && (row >= before.firstRow + rows || column >= before.firstColumn + columns);
    });
    if (table == 0) return;
    auto& range = place(its, table);
    range.lastRow = range.firstRow + rows - 1;
    range.lastColumn = range.firstColumn + columns - 1;
}

std::vector<Slide> FakeOffice::slides(DocumentID document, Call& call) {
    const Turn turn(*this, "slides", call);
    return content(document).slides;
}

void FakeOffice::addSlide(DocumentID document, Call& call) {
    const Turn turn(*this, "addSlide", call);
    content(document).slides.push_back({true, true, "", ""});
}

void FakeOffice::setSlideTitle(DocumentID document, int32_t slide, const std::string& text, Call& call) {
    const Turn turn(*this, "setSlideTitle", call);
    auto& its = this->slide(document, slide);
    if (!its.hasTitle) fail(ScriptError::noSuchObject, "The slide has no room for a title.");
    its.title = withLineFeeds(text);
}

void FakeOffice::setSlideBody(DocumentID document, int32_t slide, const std::string& text, Call& call) {
    const Turn turn(*this, "setSlideBody", call);
    auto& its = this->slide(document, slide);
    if (!its.hasBody) fail(ScriptError::noSuchObject, "The slide has no room for a body.");
    its.body = withLineFeeds(text);
}

FakeOffice::Content& FakeOffice::content(DocumentID document) {
    const auto found = m_open.find(document);
    if (found == m_open.end()) fail(ScriptError::noSuchObject, "The document is not open any more.");
    return found->second.content;
}

FakeOffice::FakeSheet& FakeOffice::sheet(DocumentID document, int32_t index) {
    auto& sheets = content(document).sheets;
    if (index < 0 || static_cast<size_t>(index) >= sheets.size())
        fail(ScriptError::noSuchObject, "There is no such sheet.");
    return sheets[static_cast<size_t>(index)];
}

CellRange& FakeOffice::place(FakeSheet& sheet, int32_t table) {
    if (table < 1 || static_cast<size_t>(table) > sheet.named.size())
        fail(ScriptError::noSuchObject, "There is no such table.");
    return sheet.named[static_cast<size_t>(table - 1)].second;
}

CellRange FakeOffice::onSheet(FakeSheet& sheet, int32_t table, CellRange range) {
    const auto room = table == 0 ? CellRange{0, 0, mostColumns - 1, mostRows - 1} : place(sheet, table);
    if (range.firstColumn < 0 || range.firstRow < 0) fail(ScriptError::noSuchObject, "The range is beyond the table.");
    const CellRange there{room.firstColumn + range.firstColumn, room.firstRow + range.firstRow,
                          room.firstColumn + range.lastColumn, room.firstRow + range.lastRow};
    if (there.lastColumn > room.lastColumn || there.lastRow > room.lastRow)
        fail(ScriptError::noSuchObject, "The range is beyond the table.");
    return there;
}

Slide& FakeOffice::slide(DocumentID document, int32_t index) {
    auto& slides = content(document).slides;
    if (index < 0 || static_cast<size_t>(index) >= slides.size())
        fail(ScriptError::noSuchObject, "There is no such slide.");
    return slides[static_cast<size_t>(index)];
}

} // namespace bridge::office
