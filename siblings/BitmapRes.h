// BitmapRes: the resource library with the button pictures of the panel. It exports FindPicture and
// nothing else; it depends on no other library.
//
//     154   close, back            366   check mark
//     368   acknowledge            375   no              5059  cancel
//     5052  up                     5053  down
//     6001  erase backwards        6004  erase everything
//     6002  shift                  6003  shift, locked
//
// The pictures are SVG files: they are crisp at every size and pixel density.
#pragma once

#include <cstddef>

/// A picture's bytes, which live as long as the library is loaded; their number goes to *pSize.
/// Null, and a size of 0, when there is no picture of that number. `pSize` may be null. Any thread.
extern "C" __attribute__((visibility("default"))) const unsigned char*
FindPicture(unsigned nID, std::size_t* pSize);
