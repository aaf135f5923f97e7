// Whether somebody else frames and places the windows.
#pragma once

/// Whether the display has a window manager: under X, when one has signed in and still lives; under
/// Wayland always; on a bare framebuffer and in memory never.
bool HasWindowManager();
