#include "app/dashboard/contrast.h"

#include <algorithm>
#include <cmath>

namespace bridge {

namespace {

double linear(double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& colour) {
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

QColor mixed(const QColor& one, const QColor& other, float share) {
    const auto mix = [share](float a, float b) { return a + (b - a) * share; };
    return QColor::fromRgbF(mix(one.redF(), other.redF()), mix(one.greenF(), other.greenF()),
                            mix(one.blueF(), other.blueF()));
}

} // namespace

double contrast(const QColor& one, const QColor& other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor readableOn(const QColor& background, const QColor& wish) {
    const QColor end = contrast(background, Qt::black) > contrast(background, Qt::white) ? Qt::black : Qt::white;
    for (int step = 0; step < 100; ++step) {
        const auto colour = mixed(wish, end, static_cast<float>(step) / 100);
        if (contrast(background, colour) >= readable) return colour;
    }
    return end;
}

} // namespace bridge
