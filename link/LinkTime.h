// Time on the link.
#pragma once

#include <chrono>

/// Of a steady clock, from any beginning: only differences mean anything. The units of the link
/// have no clock; their callers say what time it is, and never go back.
using LinkTime = std::chrono::nanoseconds;
