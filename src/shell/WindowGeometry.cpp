#include "shell/WindowGeometry.h"

#include <algorithm>

#include "gui/ApplicationTitle.h"
#include "store/Conversions.h"

namespace kelvane {

namespace {

const QString kSection = QStringLiteral("Settings");
// The part of the window's top edge that must be on screen to grab it.
constexpr int kGrabWidth = 100;
constexpr int kGrabHeight = 30;

double ReadTwips(const SettingsStore& settings, const QString& key, double fallback) {
    return Val(settings.GetSetting(QString::fromLatin1(ApplicationTitle), kSection, key,
                                   QString::number(fallback)));
}

void SaveTwips(SettingsStore& settings, const QString& key, double twips) {
    settings.SaveSetting(QString::fromLatin1(ApplicationTitle), kSection, key,
                         QString::number(static_cast<float>(twips)));
}

int ClampInto(int value, int low, int high) {
    return high < low ? low : std::clamp(value, low, high);
}

}  // namespace

TwipGeometry ReadMainGeometry(const SettingsStore& settings) {
    const TwipGeometry defaults;
    TwipGeometry geometry;
    geometry.Left = ReadTwips(settings, QStringLiteral("MainLeft"), defaults.Left);
    geometry.Top = ReadTwips(settings, QStringLiteral("MainTop"), defaults.Top);
    geometry.Width = ReadTwips(settings, QStringLiteral("MainWidth"), defaults.Width);
    geometry.Height = ReadTwips(settings, QStringLiteral("MainHeight"), defaults.Height);
    return geometry;
}

void SaveMainGeometry(SettingsStore& settings, const TwipGeometry& geometry) {
    SaveTwips(settings, QStringLiteral("MainLeft"), geometry.Left);
    SaveTwips(settings, QStringLiteral("MainTop"), geometry.Top);
    SaveTwips(settings, QStringLiteral("MainWidth"), geometry.Width);
    SaveTwips(settings, QStringLiteral("MainHeight"), geometry.Height);
}

QRect KeepUsable(const QRect& frame, const QRect& available, const QSize& minimum) {
    QRect usable = frame;
    usable.setWidth(std::max(std::min(frame.width(), available.width()), minimum.width()));
    usable.setHeight(std::max(std::min(frame.height(), available.height()), minimum.height()));
    const QRect grip(usable.topLeft(), QSize(std::min(kGrabWidth, usable.width()), kGrabHeight));
    if (available.contains(grip)) {
        return usable;
    }
    usable.moveLeft(ClampInto(usable.left(), available.left(),
                              available.right() + 1 - std::min(usable.width(), kGrabWidth)));
    usable.moveTop(ClampInto(usable.top(), available.top(), available.bottom() + 1 - kGrabHeight));
    // Whatever fits of the window goes on screen, not just its grip.
    if (usable.right() > available.right()) {
        usable.moveLeft(
            ClampInto(available.right() + 1 - usable.width(), available.left(), usable.left()));
    }
    if (usable.bottom() > available.bottom()) {
        usable.moveTop(
            ClampInto(available.bottom() + 1 - usable.height(), available.top(), usable.top()));
    }
    return usable;
}

}  // namespace kelvane
