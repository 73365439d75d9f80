#include "reports/HeatScale.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

// Blues from light to dark, each a step darker than the one before. The lightest
// is still clearly tinted, so that the lowest score is not taken for an empty cell.
constexpr std::array<QRgb, 7> Stops = {0xc6dbef, 0x9ecae1, 0x6baed6, 0x4292c6,
                                       0x2171b5, 0x08519c, 0x08306b};

double linear(int channel)
{
    const double c = channel / 255.0;
    return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}

double luminance(const QColor &colour)
{
    return 0.2126 * linear(colour.red()) + 0.7152 * linear(colour.green()) +
           0.0722 * linear(colour.blue());
}

int mix(int from, int to, double t)
{
    return static_cast<int>(std::lround(from + (to - from) * t));
}

} // namespace

QColor heatColour(double shade)
{
    const double position = std::clamp(shade, 0.0, 1.0) * (Stops.size() - 1);
    const std::size_t index = std::min(static_cast<std::size_t>(position), Stops.size() - 2);
    const double t = position - static_cast<double>(index);
    const QColor from(Stops[index]);
    const QColor to(Stops[index + 1]);
    return QColor(mix(from.red(), to.red(), t), mix(from.green(), to.green(), t),
                  mix(from.blue(), to.blue(), t));
}

double contrastRatio(const QColor &a, const QColor &b)
{
    const double la = luminance(a);
    const double lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

QColor textColourOn(const QColor &background)
{
    const QColor black(Qt::black);
    const QColor white(Qt::white);
    return contrastRatio(background, black) >= contrastRatio(background, white) ? black : white;
}
