#include "adapters/libreoffice/helper/movie.h"

#include "adapters/libreoffice/helper/documents.h"
#include "adapters/libreoffice/helper/quicktime_file.h"

#include <com/sun/star/document/XExporter.hpp>
#include <com/sun/star/document/XFilter.hpp>
#include <com/sun/star/drawing/XDrawPagesSupplier.hpp>

#include <fstream>
#include <iterator>

namespace bridge::office {

namespace {

constexpr int secondsPerSlide = 5;
constexpr int32_t frameWidth = 1280;

// Of the slide's shape, and even, as players of movies want it.
FrameSize frameSizeFor(const Ref<css::uno::XInterface>& slide) {
    const auto width = property(slide, "Width").get<sal_Int32>();
    const auto height = property(slide, "Height").get<sal_Int32>();
    const double scaled = static_cast<double>(frameWidth) * height / std::max(width, sal_Int32(1));
    const auto frameHeight = std::clamp(static_cast<int32_t>(scaled / 2) * 2, 2, 4 * frameWidth);
    return {frameWidth, frameHeight};
}

std::string pictureOf(const SOffice& office, const Ref<css::lang::XComponent>& slide, FrameSize size) {
    const std::string path = "/tmp/slide.jpg";
    const auto quality = makeArguments({{"PixelWidth", css::uno::Any(size.width)},
                                        {"PixelHeight", css::uno::Any(size.height)},
                                        {"Quality", css::uno::Any(sal_Int32(90))}});
    const auto painter = office.create<css::document::XExporter>("com.sun.star.drawing.GraphicExportFilter");
    painter->setSourceDocument(slide);
    as<css::document::XFilter>(painter)->filter(makeArguments({{"MediaType", css::uno::Any(OUString("image/jpeg"))},
                                                               {"URL", css::uno::Any(toUno(fileURL(path)))},
                                                               {"FilterData", css::uno::Any(quality)}}));
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace

void exportMovie(const SOffice& office, const Ref<css::lang::XComponent>& presentation, const std::string& path) {
    const auto slides = as<css::drawing::XDrawPagesSupplier>(presentation)->getDrawPages();
    const auto size = frameSizeFor(element<css::uno::XInterface>(slides, 0));
    QuickTimeFile movie(path, size);
    for (sal_Int32 position = 0; position < slides->getCount(); ++position)
        movie.add(pictureOf(office, element<css::lang::XComponent>(slides, position), size), secondsPerSlide);
    movie.finish();
}

} // namespace bridge::office
