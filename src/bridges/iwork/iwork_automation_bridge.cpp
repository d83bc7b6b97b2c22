#include "bridges/iwork/iwork_automation_bridge.h"

#include "base/apple_bridge_error.h"
#include "base/text.h"
#include "bridges/iwork/cell_grid.h"
#include "bridges/iwork/export_format.h"
#include "bridges/iwork/export_script.h"
#include "bridges/iwork/keynote_scripts.h"
#include "bridges/iwork/numbers_range.h"
#include "bridges/iwork/numbers_scripts.h"
#include "bridges/iwork/pages_scripts.h"
#include "bridges/scripting/flattened_strings.h"

#include <utility>

namespace bridge {

namespace {

constexpr std::chrono::seconds timeout{30};
constexpr size_t maximumText = 500'000;
constexpr size_t maximumSlides = 100;

bool isTooLong(const std::string& text) {
    return graphemeCount(text, maximumText + 1) > maximumText;
}

void requireSize(const CellGrid& values, const NumbersRange& range) {
    if (std::cmp_equal(values.size(), range.rows) && std::cmp_equal(values.front().size(), range.columns)) return;
    throw AppleBridgeError::malformedRequest("Numbers values must match the requested " + std::to_string(range.rows) +
                                             "x" + std::to_string(range.columns) + " range.");
}

IWorkOperationResult done(IWorkApplication application, std::string path, const char* operation) {
    return {std::string(displayName(application)), std::move(path), operation};
}

} // namespace

Task<TypedAppleScriptValue> IWorkAutomationBridge::run(IWorkApplication application, std::string script,
                                                       MayHaveChanged mayHaveChanged,
                                                       std::function<void()> beforehand) {
    return m_scriptRunner.run(std::move(script), std::string(displayName(application)), timeout, mayHaveChanged,
                              std::move(beforehand));
}

Task<TypedAppleScriptValue> IWorkAutomationBridge::open(IWorkApplication application, DocumentPlace place,
                                                        std::string script, MayHaveChanged mayHaveChanged) {
    return run(application, std::move(script), mayHaveChanged,
               [this, place = std::move(place)] { m_places.lookAgain(place); });
}

Task<> IWorkAutomationBridge::create(IWorkApplication application, DocumentPlace place, std::string script) {
    m_places.makeRoomFor(place);
    auto creating = run(application, std::move(script), MayHaveChanged::yes,
                        [this, place = std::move(place)] { m_places.makeRoomFor(place); });
    co_await std::move(creating);
}

Task<IWorkOperationResult> IWorkAutomationBridge::createPagesDocument(CreatePagesDocumentRequest request) {
    constexpr auto application = IWorkApplication::pages;
    auto place = m_places.planned(std::move(request.rootID), request.path);
    requireDocumentOf(application, place);
    if (isTooLong(request.text))
        throw AppleBridgeError::malformedRequest("Pages text cannot exceed 500,000 characters.");
    auto script = createPagesScript(request.text, place.location);
    auto creating = create(application, std::move(place), std::move(script));
    co_await std::move(creating);
    co_return done(application, std::move(request.path), "create");
}

Task<PagesDocumentContents> IWorkAutomationBridge::readPagesDocument(IWorkDocumentRequest request) {
    constexpr auto application = IWorkApplication::pages;
    auto place = m_places.existing(std::move(request.rootID), request.path);
    requireDocumentOf(application, place);
    auto script = readPagesScript(place.location);
    auto reading = open(application, std::move(place), std::move(script), MayHaveChanged::no);
    auto value = co_await std::move(reading);
    auto text = std::move(value.stringValue).value_or("");
    if (isTooLong(text))
        throw AppleBridgeError::operationFailed("Pages document exceeds the 500,000-character read limit.");
    co_return PagesDocumentContents{std::move(request.path), std::move(text)};
}

Task<NumbersRangeContents> IWorkAutomationBridge::readNumbersRange(NumbersRangeRequest request) {
    constexpr auto application = IWorkApplication::numbers;
    auto place = m_places.existing(std::move(request.rootID), std::move(request.path));
    requireDocumentOf(application, place);
    auto range = parseNumbersRange(request.range);
    const TableChoice choice{std::move(request.sheet), std::move(request.table)};
    auto script = readNumbersScript(choice, range, place.location);
    auto reading = open(application, std::move(place), std::move(script), MayHaveChanged::no);
    auto value = co_await std::move(reading);
    auto values = flattenedStrings(std::move(value));
    if (values.size() > maximumCells)
        throw AppleBridgeError::operationFailed("Numbers range exceeds the 10,000-cell read limit.");
    co_return NumbersRangeContents{std::move(range.text), std::move(values)};
}

Task<IWorkOperationResult> IWorkAutomationBridge::createNumbersSpreadsheet(CreateNumbersSpreadsheetRequest request) {
    constexpr auto application = IWorkApplication::numbers;
    auto place = m_places.planned(std::move(request.rootID), request.path);
    requireDocumentOf(application, place);
    checkGrid(request.values);
    auto script = createNumbersScript(request.values, place.location);
    auto creating = create(application, std::move(place), std::move(script));
    co_await std::move(creating);
    co_return done(application, std::move(request.path), "create");
}

Task<IWorkOperationResult> IWorkAutomationBridge::writeNumbersRange(WriteNumbersRangeRequest request) {
    constexpr auto application = IWorkApplication::numbers;
    auto place = m_places.existing(std::move(request.rootID), request.path);
    requireDocumentOf(application, place);
    const auto range = parseNumbersRange(request.range);
    checkGrid(request.values);
    requireSize(request.values, range);
    const TableChoice choice{std::move(request.sheet), std::move(request.table)};
    auto script = writeNumbersScript(choice, range, request.values, place.location);
    auto writing = open(application, std::move(place), std::move(script), MayHaveChanged::yes);
    co_await std::move(writing);
    co_return done(application, std::move(request.path), "write_range");
}

Task<IWorkOperationResult> IWorkAutomationBridge::createKeynotePresentation(CreateKeynotePresentationRequest request) {
    constexpr auto application = IWorkApplication::keynote;
    auto place = m_places.planned(std::move(request.rootID), request.path);
    requireDocumentOf(application, place);
    if (request.slides.empty() || request.slides.size() > maximumSlides)
        throw AppleBridgeError::malformedRequest("Keynote presentations require between 1 and 100 slides.");
    auto script = createKeynoteScript(request.slides, place.location);
    auto creating = create(application, std::move(place), std::move(script));
    co_await std::move(creating);
    co_return done(application, std::move(request.path), "create");
}

Task<IWorkOperationResult> IWorkAutomationBridge::exportDocument(IWorkExportRequest request) {
    auto input = m_places.existing(request.rootID, std::move(request.inputPath));
    auto output = m_places.planned(request.rootID, request.outputPath);
    const auto application = iworkApplication(request.application);
    requireDocumentOf(application, input);
    const auto type = exportType(application, request.format);
    m_places.makeRoomFor(output);
    auto script = exportScript(application, type, input.location, output.location);
    auto exporting = run(application, std::move(script), MayHaveChanged::yes,
                         [this, input = std::move(input), output = std::move(output)] {
                             m_places.lookAgain(input);
                             m_places.makeRoomFor(output);
                         });
    co_await std::move(exporting);
    co_return done(application, std::move(request.outputPath), "export");
}

} // namespace bridge
