#include "platform/windows/qt/ScaledStyle.h"

#include <QGuiApplication>
#include <QImage>
#include <QScreen>
#include <QStyleOption>
#include <algorithm>
#include <cmath>

#include "platform/drawing/DisplayScale.h"

namespace {

constexpr double DESIGN_DOTS_PER_INCH = 96;

/// The style draws a drop-down list and a scroll bar, their arrows above all, in the size that the
/// density of their font asks for.
QFontMetrics ScaleDensity(const QFont& font) {
    constexpr double METRES_PER_INCH = 0.0254;
    QImage device(1, 1, QImage::Format_Mono);
    const double dDots = DESIGN_DOTS_PER_INCH * GetDisplayScale();
    device.setDotsPerMeterX(static_cast<int>(std::lround(dDots / METRES_PER_INCH)));
    device.setDotsPerMeterY(device.dotsPerMeterX());
    return {font, &device};
}

/// Calls draw with the option at the density of the display scale.
template <class Draw>
auto WithScaledDensity(const QStyleOptionComplex* pOption, const QWidget* pWidget, Draw draw) {
    const auto scale = [pWidget](auto option) {
        if (pWidget) option.fontMetrics = ScaleDensity(pWidget->font());
        return option;
    };
    if (const auto* pList = qstyleoption_cast<const QStyleOptionComboBox*>(pOption)) {
        const auto list = scale(*pList);
        return draw(&list);
    }
    if (const auto* pBar = qstyleoption_cast<const QStyleOptionSlider*>(pOption)) {
        const auto bar = scale(*pBar);
        return draw(&bar);
    }
    return draw(pOption);
}

}  // namespace

double GetDisplayDensity() {
    const QScreen* pScreen = QGuiApplication::primaryScreen();
    return pScreen ? pScreen->logicalDotsPerInch() / DESIGN_DOTS_PER_INCH : 1;
}

CScaledStyle::CScaledStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

int CScaledStyle::pixelMetric(PixelMetric metric, const QStyleOption* pOption,
                              const QWidget* pWidget) const {
    const int nPixels = QProxyStyle::pixelMetric(metric, pOption, pWidget);
    if (nPixels <= 0) return nPixels;
    // The style itself has made them as large as its density asks for.
    const double dDone =
        pOption ? pOption->fontMetrics.fontDpi() / DESIGN_DOTS_PER_INCH : GetDisplayDensity();
    return std::max(1, static_cast<int>(std::lround(nPixels * GetDisplayScale() / dDone)));
}

void CScaledStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* pOption,
                                      QPainter* pPainter, const QWidget* pWidget) const {
    WithScaledDensity(pOption, pWidget, [&](const QStyleOptionComplex* pScaled) {
        QProxyStyle::drawComplexControl(control, pScaled, pPainter, pWidget);
    });
}

QRect CScaledStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* pOption,
                                   SubControl part, const QWidget* pWidget) const {
    return WithScaledDensity(pOption, pWidget, [&](const QStyleOptionComplex* pScaled) {
        return QProxyStyle::subControlRect(control, pScaled, part, pWidget);
    });
}
