// A display scale for a while.
#pragma once

#include "platform/drawing/DisplayScale.h"

struct ScaledDisplay {
    explicit ScaledDisplay(double dScale) { SetDisplayScale(dScale); }
    ~ScaledDisplay() { SetDisplayScale(m_dBefore); }
    const double m_dBefore = GetDisplayScale();
};
