// BitmapRes: the resource library with the button pictures of the panel. It exports FindPicture and
// nothing else; it depends on no other library. What the numbers show stands in
// platform/windows/DialogLook.h.
//
// The pictures are SVG files: they are crisp at every size and pixel density.
#pragma once

#include <cstddef>

/// A picture's bytes, which live as long as the library is loaded; their number goes to *pSize.
/// Null, and a size of 0, when there is no picture of that number. `pSize` may be null. Any thread.
extern "C" __attribute__((visibility("default"))) const unsigned char*
FindPicture(unsigned nID, std::size_t* pSize);
