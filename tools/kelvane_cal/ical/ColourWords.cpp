#include "kelvane_cal/ical/ColourWords.h"

#include <QStringList>

#include <array>
#include <limits>

namespace kelvane::cal {

namespace {

struct NamedColour {
    const char* name;
    int red;
    int green;
    int blue;
};

constexpr std::array<NamedColour, 28> kNamedColours = {{
    {"black", 0, 0, 0},
    {"dark grey", 64, 64, 64},
    {"grey", 128, 128, 128},
    {"light grey", 200, 200, 200},
    {"white", 255, 255, 255},
    {"dark red", 128, 0, 0},
    {"red", 255, 0, 0},
    {"pink", 255, 182, 193},
    {"brown", 139, 69, 19},
    {"orange", 255, 165, 0},
    {"light orange", 255, 213, 150},
    {"beige", 245, 240, 210},
    {"olive", 128, 128, 0},
    {"yellow", 255, 255, 0},
    {"light yellow", 255, 255, 190},
    {"dark green", 0, 100, 0},
    {"green", 0, 160, 0},
    {"bright green", 0, 255, 0},
    {"light green", 170, 240, 170},
    {"teal", 0, 128, 128},
    {"cyan", 0, 255, 255},
    {"light blue", 173, 216, 230},
    {"sky blue", 100, 180, 240},
    {"blue", 0, 0, 255},
    {"navy", 0, 0, 128},
    {"purple", 128, 0, 128},
    {"violet", 200, 130, 238},
    {"magenta", 255, 0, 255},
}};

QString SignedNumber(int value) {
    return (value >= 0 ? QStringLiteral("+") : QString()) + QString::number(value);
}

}  // namespace

QString NearestColourName(int red, int green, int blue) {
    const NamedColour* nearest = &kNamedColours[0];
    long long best = std::numeric_limits<long long>::max();
    for (const NamedColour& colour : kNamedColours) {
        const long long dr = red - colour.red;
        const long long dg = green - colour.green;
        const long long db = blue - colour.blue;
        const long long distance = dr * dr + dg * dg + db * db;
        if (distance < best) {
            best = distance;
            nearest = &colour;
        }
    }
    return QString::fromLatin1(nearest->name);
}

QString ColourInWords(const ColourChoice& colour) {
    if (!colour.Enabled) {
        return QStringLiteral("the grid's own");
    }
    if (colour.Absolute) {
        return QStringLiteral("%1 (%2, %3, %4)")
            .arg(NearestColourName(colour.Red, colour.Green, colour.Blue))
            .arg(colour.Red)
            .arg(colour.Green)
            .arg(colour.Blue);
    }
    QStringList shifts;
    const std::array<std::pair<const char*, int>, 3> channels = {
        {{"red", colour.Red}, {"green", colour.Green}, {"blue", colour.Blue}}};
    for (const auto& [name, offset] : channels) {
        if (offset != 0) {
            shifts << QStringLiteral("%1 %2").arg(QLatin1String(name), SignedNumber(offset));
        }
    }
    return (QStringList{QStringLiteral("the grid's own")} + shifts).join(QStringLiteral(", "));
}

}  // namespace kelvane::cal
