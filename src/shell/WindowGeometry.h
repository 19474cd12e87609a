#pragma once

#include <QRect>
#include <QSize>
#include <QString>

#include "gui/SettingsStore.h"
#include "gui/Twips.h"

namespace kelvane {

// Where the main window sits and how big it is, in twips (1440 to the inch),
// as the settings store keeps it.
struct TwipGeometry {
    double Left = 1000;
    double Top = 1000;
    double Width = 6500;
    double Height = 6500;

    friend bool operator==(const TwipGeometry&, const TwipGeometry&) = default;
};

// "MainLeft", "MainTop", "MainWidth" and "MainHeight" of section "Settings";
// a missing key gives its default, any text its plain numeric value. They are
// saved as single-precision numbers.
TwipGeometry ReadMainGeometry(const SettingsStore& settings);
void SaveMainGeometry(SettingsStore& settings, const TwipGeometry& geometry);

// `frame` moved, and shrunk only where it is larger than `available`, so that
// it lies wholly on `available`; it never gets smaller than `minimum`. What a
// minimum too large for the screen leaves over hangs off the right and bottom
// edges, so that the top-left corner (the title bar's start) stays on screen.
QRect FitOnScreen(const QRect& frame, const QRect& available, const QSize& minimum);

}  // namespace kelvane
