#include "platform/drawing/DisplayScale.h"

#include <algorithm>
#include <cmath>

namespace {

double g_dScale = 1;

}  // namespace

double GetDisplayScale() noexcept { return g_dScale; }

void SetDisplayScale(double dScale) noexcept { g_dScale = dScale; }

int Scaled(int nPixels) noexcept { return static_cast<int>(std::lround(nPixels * g_dScale)); }

int ScaledThickness(int nPixels) noexcept { return std::max(1, Scaled(nPixels)); }
