#pragma once

#include "bridges/iwork/document_places.h"
#include "bridges/iwork/iwork_requests.h"
#include "bridges/iwork/iwork_results.h"
#include "bridges/scripting/typed_apple_script_runner.h"

namespace bridge {

// Documents of Pages, Numbers and Keynote in the folders that the user chose, made, read, changed and exported by
// scripts that these applications are told.
//
// Main thread only; the file bridge and the engine outlive it. Each operation finds its places, looks at the names of
// the documents, then at everything else that can be wrong with the request (AppleBridgeError malformedRequest), and
// for a new file whether it is one; only then a script runs, when those before it are done. Nothing that exists is
// replaced, and only folders are left behind by an operation that failed. Errors are those of FileDataBridge for the
// places and those of TypedAppleScriptRunner for the script.
class IWorkAutomationBridge {
public:
    IWorkAutomationBridge(FileDataBridge& files, ScriptEngine& engine) : m_places(files), m_scriptRunner(engine) {}

    // At most 500,000 characters, as a person counts them.
    Task<IWorkOperationResult> createPagesDocument(CreatePagesDocumentRequest request);
    // A longer one is operationFailed.
    Task<PagesDocumentContents> readPagesDocument(IWorkDocumentRequest request);

    // More than 10,000 values are operationFailed, after they were read.
    Task<NumbersRangeContents> readNumbersRange(NumbersRangeRequest request);
    Task<IWorkOperationResult> createNumbersSpreadsheet(CreateNumbersSpreadsheetRequest request);
    // In place. The values have exactly the size of the range.
    Task<IWorkOperationResult> writeNumbersRange(WriteNumbersRangeRequest request);

    // 1 to 100 slides.
    Task<IWorkOperationResult> createKeynotePresentation(CreateKeynotePresentationRequest request);

    Task<IWorkOperationResult> exportDocument(IWorkExportRequest request);

private:
    Task<> create(IWorkApplication application, DocumentPlace place, std::string script);
    Task<TypedAppleScriptValue> open(IWorkApplication application, DocumentPlace place, std::string script,
                                     MayHaveChanged mayHaveChanged);
    Task<TypedAppleScriptValue> run(IWorkApplication application, std::string script, MayHaveChanged mayHaveChanged,
                                    std::function<void()> beforehand);

    DocumentPlaces m_places;
    TypedAppleScriptRunner m_scriptRunner;
};

} // namespace bridge
