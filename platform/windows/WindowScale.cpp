#include "platform/windows/WindowScale.h"

#include <QApplication>
#include <QScreen>
#include <algorithm>
#include <cmath>

#include "platform/drawing/DisplayScale.h"
#include "platform/drawing/qt/Surface.h"
#include "platform/windows/qt/ScaledStyle.h"

namespace {

/// What the environment asks of the window system's own scaling.
double g_dAskedScale = 1;

double LimitScale(double dScale) { return std::clamp(dScale, MIN_WINDOW_SCALE, MAX_WINDOW_SCALE); }

}  // namespace

void SwitchOffDesktopScaling() {
    bool bNumber = false;
    const double dAsked = qEnvironmentVariable("QT_SCALE_FACTOR").toDouble(&bNumber);
    if (bNumber && dAsked > 0) g_dAskedScale = dAsked;
    for (const char* pName : {"QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS"}) qunsetenv(pName);
    qputenv("QT_ENABLE_HIGHDPI_SCALING", "0");
}

void ScaleWindows(double dScale) {
    SetDisplayScale(dScale);
    CFont font;
    font.CreatePointFont(80, L"MS Shell Dlg");
    QApplication::setFont(ToQFont(font));
}

bool HasDisplay() {
    const QString strPlatform = QGuiApplication::platformName();
    return strPlatform != QLatin1String("offscreen") && strPlatform != QLatin1String("minimal");
}

double GetDesktopScale() {
    constexpr double STEPS = 4;
    return LimitScale(std::round(g_dAskedScale * GetDisplayDensity() * STEPS) / STEPS);
}

double FindFittingScale(CSize design) {
    const QSize room = QGuiApplication::primaryScreen()->availableSize();
    // Edges are rounded one by one: a pixel is kept for that.
    return LimitScale(
        std::min((room.width() - 1.0) / design.cx, (room.height() - 1.0) / design.cy));
}
