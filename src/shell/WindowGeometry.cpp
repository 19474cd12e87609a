#include "shell/WindowGeometry.h"

#include <algorithm>

#include "calfile/Conversions.h"
#include "gui/ApplicationTitle.h"

namespace kelvane {

namespace {

const QString kSection = QStringLiteral("Settings");

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

QRect FitOnScreen(const QRect& frame, const QRect& available, const QSize& minimum) {
    QRect fitted = frame;
    fitted.setWidth(std::max(std::min(frame.width(), available.width()), minimum.width()));
    fitted.setHeight(std::max(std::min(frame.height(), available.height()), minimum.height()));
    fitted.moveLeft(
        ClampInto(fitted.left(), available.left(), available.right() + 1 - fitted.width()));
    fitted.moveTop(
        ClampInto(fitted.top(), available.top(), available.bottom() + 1 - fitted.height()));
    return fitted;
}

}  // namespace kelvane
