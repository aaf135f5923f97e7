// Pictures that commands draw: PNG or SVG, with texts and lines as large as the picture asks for.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/drawing/SvgDC.h"

enum class PictureFormat : BYTE { Png, Svg };

/// Reads "WIDTHxHEIGHT", each from 1 to 10000 pixels.
/// @throws CUsageError
CSize ReadPictureSize(const std::string& strText);

/// Reads "png" or "svg".
/// @throws CUsageError
PictureFormat ReadPictureFormat(const std::string& strText);

/// By the end of a file's name: SVG for ".svg" in any case, else PNG.
PictureFormat FindPictureFormat(const std::wstring& strPath);

/// The end of a picture's name.
const wchar_t* GetExtension(PictureFormat format);

/// How the device contexts of pictures measure. A PNG is drawn in its pixels, an SVG in fractions
/// of them, which round a curve's points less.
int GetUnitsPerPixel(PictureFormat format);

/// Has everything that is drawn from here on stand as large on a picture as its design is on one of
/// another size; a small picture's texts stay readable.
void ScaleToPicture(PictureFormat format, CSize size, CSize design);

/// One picture, or a part of one.
class CPicture {
  public:
    /// @param extent in units of its format
    /// @throws CMemoryException
    CPicture(PictureFormat format, CSize extent);

    CDC& GetDC() { return m_pSvg ? *m_pSvg : m_pixelDC; }
    CSize GetExtent() const { return m_extent; }

    /// Draws another one of the same format on this one, its top-left corner at a point.
    void DrawPart(CPoint corner, CPicture& part);

    /// The bytes of a file.
    std::vector<BYTE> Encode();

  private:
    CSize m_extent;
    std::unique_ptr<CSvgDC> m_pSvg;  ///< null: the pixels are the picture
    CBitmap m_bitmap;
    CDC m_pixelDC;
};
