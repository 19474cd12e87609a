#include "gui/Twips.h"

#include <QScreen>
#include <QWidget>

#include <algorithm>
#include <cmath>

namespace kelvane {

namespace {

// Far beyond any screen, yet safe to turn into an int.
constexpr double kLargestPixel = 1'000'000;

}  // namespace

int TwipsToPixels(double twips, double dotsPerInch) {
    const double pixels = twips * dotsPerInch / 1440.0;
    if (!std::isfinite(pixels)) {
        return pixels < 0 ? -static_cast<int>(kLargestPixel) : static_cast<int>(kLargestPixel);
    }
    return static_cast<int>(std::lround(std::clamp(pixels, -kLargestPixel, kLargestPixel)));
}

double PixelsToTwips(int pixels, double dotsPerInch) {
    return dotsPerInch > 0 ? pixels * 1440.0 / dotsPerInch : 0.0;
}

double DotsPerInch(const QWidget* widget) {
    const QScreen* screen = widget->screen();
    return screen != nullptr ? screen->logicalDotsPerInch() : 96.0;
}

}  // namespace kelvane
