#include "adapters/libreoffice/libreoffice.h"

#include "adapters/libreoffice/desk.h"
#include "adapters/libreoffice/storable_text.h"

namespace bridge::office {

namespace {

int64_t number(DocumentID document) {
    return static_cast<int64_t>(document);
}

// A script that is over has no time left of its own.
constexpr std::chrono::seconds timeToTidyUp{5};

} // namespace

LibreOffice::LibreOffice(LibreOfficeOptions options) : m_desk(std::make_unique<Desk>(std::move(options))) {}

LibreOffice::~LibreOffice() = default;

std::optional<std::string> LibreOffice::whyUnavailable() const {
    return m_desk->client().whyUnavailable();
}

bool LibreOffice::isRunning() const {
    return m_desk->client().isRunning();
}

DocumentID LibreOffice::create(DocumentKind kind, Call& call) {
    const auto turn = m_desk->take(call);
    return m_desk->create(kind, call);
}

DocumentID LibreOffice::open(DocumentKind kind, const std::string& path, Call& call) {
    const auto turn = m_desk->take(call);
    return m_desk->open(kind, path, call);
}

void LibreOffice::save(DocumentID document, Call& call) {
    const auto turn = m_desk->take(call);
    m_desk->save(document, call);
}

void LibreOffice::saveAs(DocumentID document, const std::string& path, Call& call) {
    const auto turn = m_desk->take(call);
    m_desk->saveAs(document, path, call);
}

void LibreOffice::exportTo(DocumentID document, const std::string& path, ExportFormat format, Call& call) {
    const auto turn = m_desk->take(call);
    m_desk->exportTo(document, path, format, call);
}

void LibreOffice::close(DocumentID document, Call& call) {
    const auto turn = m_desk->take(call);
    m_desk->close(document, call);
}

void LibreOffice::closeAll() noexcept {
    try {
        Call call(timeToTidyUp);
        const auto turn = m_desk->take(call);
        m_desk->closeAll(call);
    } catch (const std::exception&) {
        // Whatever did not close went with the program, or will when another script's turn ends.
    }
}

std::string LibreOffice::bodyText(DocumentID document, Call& call) {
    const auto turn = m_desk->take(call);
    return m_desk->ask(GetText{number(document)}, call);
}

void LibreOffice::setBodyText(DocumentID document, const std::string& text, Call& call) {
    const auto turn = m_desk->take(call);
    m_desk->ask(SetText{number(document), storableText(text)}, call);
}

std::vector<Sheet> LibreOffice::sheets(DocumentID document, Call& call) {
    const auto turn = m_desk->take(call);
    return m_desk->ask(GetSheets{number(document)}, call);
}

int32_t LibreOffice::activeSheet(DocumentID document, Call& call) {
    const auto turn = m_desk->take(call);
    return m_desk->ask(GetActiveSheet{number(document)}, call);
}

std::vector<CellValue> LibreOffice::cells(DocumentID document, int32_t sheet, int32_t table, CellRange range,
                                          Call& call) {
    const auto turn = m_desk->take(call);
    return m_desk->ask(GetCells{number(document), sheet, table, range}, call);
}

void LibreOffice::setCells(DocumentID document, int32_t sheet, int32_t table, const std::vector<CellChange>& changes,
                           Call& call) {
    SetCells request{number(document), sheet, table, changes};
    for (auto& change : request.changes)
        if (auto* text = std::get_if<std::string>(&change.value)) *text = storableText(*text);
    const auto turn = m_desk->take(call);
    m_desk->ask(request, call);
}

void LibreOffice::resizeTable(DocumentID document, int32_t sheet, int32_t table, int32_t rows, int32_t columns,
                              Call& call) {
    const auto turn = m_desk->take(call);
    m_desk->ask(ResizeTable{number(document), sheet, table, rows, columns}, call);
}

std::vector<Slide> LibreOffice::slides(DocumentID document, Call& call) {
    const auto turn = m_desk->take(call);
    return m_desk->ask(GetSlides{number(document)}, call);
}

void LibreOffice::addSlide(DocumentID document, Call& call) {
    const auto turn = m_desk->take(call);
    m_desk->ask(AddSlide{number(document)}, call);
}

void LibreOffice::setSlideTitle(DocumentID document, int32_t slide, const std::string& text, Call& call) {
    const auto turn = m_desk->take(call);
    m_desk->ask(SetSlideText{number(document), slide, SlidePart::title, storableText(text)}, call);
}

void LibreOffice::setSlideBody(DocumentID document, int32_t slide, const std::string& text, Call& call) {
    const auto turn = m_desk->take(call);
    m_desk->ask(SetSlideText{number(document), slide, SlidePart::body, storableText(text)}, call);
}

} // namespace bridge::office
