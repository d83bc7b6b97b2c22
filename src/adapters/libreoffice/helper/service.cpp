#include "adapters/libreoffice/helper/service.h"

#include "adapters/libreoffice/helper/cells.h"
#include "adapters/libreoffice/helper/export.h"
#include "adapters/libreoffice/helper/slides.h"
#include "adapters/libreoffice/helper/text.h"

#include <com/sun/star/lang/DisposedException.hpp>
#include <com/sun/star/task/ErrorCodeIOException.hpp>

namespace bridge::office {

namespace {

constexpr auto text = DocumentKind::text;
constexpr auto spreadsheet = DocumentKind::spreadsheet;
constexpr auto presentation = DocumentKind::presentation;

bool run(Documents& documents, const CreateDocument& request) {
    documents.create(request);
    return true;
}
bool run(Documents& documents, const OpenDocument& request) {
    return documents.open(request);
}
bool run(Documents& documents, const StoreDocument& request) {
    documents.store(request);
    return true;
}
bool run(Documents& documents, const ExportDocument& request) {
    exportDocument(documents, request);
    return true;
}
bool run(Documents& documents, const CloseDocument& request) {
    documents.close(request.document);
    return true;
}
std::string run(Documents& documents, const GetText& request) {
    return bodyText(documents.find(request.document, text));
}
bool run(Documents& documents, const SetText& request) {
    setBodyText(documents.find(request.document, text), request.text);
    return true;
}
std::vector<Sheet> run(Documents& documents, const GetSheets& request) {
    return sheets(documents.find(request.document, spreadsheet));
}
int32_t run(Documents& documents, const GetActiveSheet& request) {
    return activeSheet(documents.find(request.document, spreadsheet));
}
std::vector<CellValue> run(Documents& documents, const GetCells& request) {
    return cells(documents.find(request.document, spreadsheet), request);
}
bool run(Documents& documents, const SetCells& request) {
    setCells(documents.find(request.document, spreadsheet), request);
    return true;
}
bool run(Documents& documents, const ResizeTable& request) {
    const auto& document = documents.find(request.document, spreadsheet);
    resizeTable(document, tableAt(document, request.sheet, request.table), request.rows, request.columns);
    return true;
}
std::vector<Slide> run(Documents& documents, const GetSlides& request) {
    return slides(documents.find(request.document, presentation));
}
bool run(Documents& documents, const AddSlide& request) {
    addSlide(documents.find(request.document, presentation));
    return true;
}
bool run(Documents& documents, const SetSlideText& request) {
    setSlideText(documents.find(request.document, presentation), request);
    return true;
}

template <typename Arguments> std::string replyTo(Documents& documents, const JSONValue& arguments) {
    auto answer = run(documents, decode<Arguments>(arguments));
    return encodeJSON(Reply<typename Arguments::Result>{std::move(answer), std::nullopt, std::nullopt});
}

struct Operation {
    std::string_view name;
    std::string (*reply)(Documents&, const JSONValue&);
};

template <typename... Arguments> constexpr auto makeOperations() {
    return std::array{Operation{Arguments::operation, &replyTo<Arguments>}...};
}
constexpr auto operations =
    makeOperations<CreateDocument, OpenDocument, StoreDocument, ExportDocument, CloseDocument, GetText, SetText,
                   GetSheets, GetActiveSheet, GetCells, SetCells, ResizeTable, GetSlides, AddSlide, SetSlideText>();

std::string dispatch(Documents& documents, const std::string& message) {
    const auto request = decode<Request<JSONValue>>(parseJSON(message));
    for (const auto& operation : operations)
        if (operation.name == request.operation) return operation.reply(documents, request.arguments);
    throw ScriptError(failed, "LibreOffice was asked for something unknown.");
}

std::string failureReply(int number, const std::string& message) {
    return encodeJSON(Reply<bool>{std::nullopt, Failure{number, message}, std::nullopt});
}

} // namespace

Answered Service::answer(const std::string& request) {
    std::string trouble;
    try {
        return {dispatch(m_documents, request)};
    } catch (const ScriptError& error) {
        return {failureReply(error.number().value_or(failed), error.message().value_or(error.what()))};
    } catch (const css::lang::DisposedException&) {
        // Either the connection is gone or what it led to.
        if (!m_office.hasEnded()) trouble = "The document was closed by LibreOffice.";
    } catch (const css::task::ErrorCodeIOException& error) {
        trouble = "LibreOffice reports error " + std::to_string(error.ErrCode) + ".";
    } catch (const css::uno::Exception& error) {
        trouble = "LibreOffice could not do it: " + fromUno(error.Message);
    } catch (const std::exception& error) {
        trouble = error.what();
    }
    if (trouble.empty() || m_office.hasEnded())
        return {failureReply(connectionInvalid, "LibreOffice ended unexpectedly."), Answered::Then::leave};
    return {failureReply(failed, trouble)};
}

} // namespace bridge::office
