// The style of all controls, in the size of the display scale.
#pragma once

#include <QProxyStyle>

/// Has the desktop's scaling leave the window system's pixels alone; before the application object
/// is made.
void SwitchOffDesktopScaling();

/// How many pixels the display's settings make of a pixel of 96 to the inch.
double GetDisplayDensity();

class CScaledStyle : public QProxyStyle {
  public:
    CScaledStyle();

    int pixelMetric(PixelMetric metric, const QStyleOption* pOption,
                    const QWidget* pWidget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* pOption,
                            QPainter* pPainter, const QWidget* pWidget) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* pOption,
                         SubControl part, const QWidget* pWidget) const override;
};
