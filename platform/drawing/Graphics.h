// Drawing surfaces over 32-bit images, and the tools to draw on them. User-interface thread only,
// except that memory surfaces may be used on any one thread at a time.
//
// Lines are one pixel wide. A line from P to Q sets P and every pixel up to, but not including, Q;
// where it passes exactly between two pixels it takes the upper or the left one, so that the line
// back from Q to P runs over the same pixels. What lies outside the surface or the clipping region
// costs nothing, and does not change what lies inside.
// Dotted and dashed lines begin their pattern at P. They leave their gaps untouched in the
// transparent background mode and fill them with white in the opaque one, which a new context has.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <vector>

#include "platform/drawing/Geometry.h"
#include "platform/system/Export.h"
#include "platform/system/Types.h"

class CDynamicLibrary;
struct GraphicsSurface;  ///< the image behind a device context

enum class PenStyle : BYTE { Solid, Dot, DashDotDot };
enum class BackgroundMode : BYTE { Transparent, Opaque };
enum class TextAlign : BYTE { Left, Right, Center };  ///< all from the top
enum class RasterOp : BYTE { Copy, Invert };
constexpr COLORREF NO_COLOR = 0xFFFFFFFF;

class CPen {
  public:
    CPen(PenStyle style, COLORREF color) : m_style(style), m_color(color) {}
    PenStyle m_style;
    COLORREF m_color;
};

class CBrush {
  public:
    explicit CBrush(COLORREF color) : m_color(color) {}
    COLORREF m_color;
};

/// A font. "MS Shell Dlg" and "Microsoft Sans Serif" are drawn with Liberation Sans.
class PLATFORM_API CFont {
  public:
    /// @param nPointSize in tenths of a point, at 96 dots per inch
    void CreatePointFont(int nPointSize, const wchar_t* pFace);
    /// @param nHeight character height in pixels
    void CreatePixelFont(int nHeight, const wchar_t* pFace, bool bBold);
    explicit operator bool() const { return !m_strFace.empty(); }

    std::wstring m_strFace;
    int m_nPixelHeight = 0;
    bool m_bBold = false;
};

/// A rectangle that drawing is limited to.
class CRgn {
  public:
    explicit CRgn(const CRect& rect) : m_rect(rect) {}
    CRect m_rect;
};

/// An image in memory, or a picture of a resource library that is drawn at any size. A copy has
/// pixels of its own.
class PLATFORM_API CBitmap {
  public:
    CBitmap();
    ~CBitmap();
    CBitmap(CBitmap&&) noexcept;
    CBitmap& operator=(CBitmap&&) noexcept;
    CBitmap(const CBitmap&);
    CBitmap& operator=(const CBitmap&);

    /// An image of a size, in pixels; its contents are undefined. Without an extent: none.
    /// @throws CMemoryException
    void CreateBitmap(int cx, int cy);

    /// Takes picture `nID` from a resource library.
    /// @return false when the library has no such picture
    bool LoadBitmap(const CDynamicLibrary& library, UINT nID);

    explicit operator bool() const;
    CSize GetSize() const;  ///< in pixels; a resource picture: its natural size

    /// The pixel's colour; the point must lie in the image.
    COLORREF GetPixel(int x, int y) const;

    /// Writes the image as a PNG file; a file of that name is replaced.
    /// @throws CFileException
    void SavePng(const std::wstring& strPath) const;
    /// The image as a PNG file's bytes.
    std::vector<BYTE> EncodePng() const;

    struct Image;
    explicit CBitmap(std::unique_ptr<Image> pImage);
    Image* GetImage() const { return m_pImage.get(); }

  private:
    std::unique_ptr<Image> m_pImage;  ///< null: no image
};

/// A device context: a surface, the tools selected into it, and the current position.
///
/// A selected pen, font or bitmap is borrowed: it must live as long as it is selected. With no pen
/// selected lines are solid black; with no font selected text is drawn in the surface's default
/// font (12 pixels of "MS Shell Dlg"). Without a surface, drawing does nothing. Text needs the
/// process's window system (CWindowSystem), though no window.
class PLATFORM_API CDC {
  public:
    CDC();
    virtual ~CDC();
    CDC(const CDC&) = delete;
    CDC& operator=(const CDC&) = delete;

    /// Makes this a memory context; it has no surface until a bitmap is selected.
    void CreateCompatibleDC(CDC* pDC);
    void SelectBitmap(CBitmap* pBitmap);

    const CPen* SelectPen(const CPen* pPen);      ///< @return the pen selected before
    const CFont* SelectFont(const CFont* pFont);  ///< @return the font selected before
    void SelectClipRgn(const CRgn* pRgn);         ///< null: the whole surface
    /// Keeps all drawing within a part of the surface, whatever clipping regions are selected;
    /// null: no longer.
    void LimitTo(const CRect* pPart);
    BackgroundMode SetBackgroundMode(BackgroundMode mode);
    COLORREF SetTextColor(COLORREF color);
    TextAlign SetTextAlign(TextAlign align);
    RasterOp SetRasterOp(RasterOp op);  ///< applies to Rectangle

    void MoveTo(int x, int y) { m_position = {x, y}; }
    void LineTo(int x, int y);
    /// Draws from each point to the next, beginning at the current position.
    virtual void PolylineTo(std::span<const CPoint> points);

    virtual void FillSolidRect(const CRect& rect, COLORREF color);
    /// Fills the rectangle (a null brush leaves it) and outlines it with the pen; with
    /// RasterOp::Invert inverts it instead. The corners may come in any order.
    virtual void Rectangle(const CRect& rect, const CBrush* pBrush);

    /// Draws one line of text at a point, as the text alignment says. In the opaque background mode
    /// the text's cell is filled with white first.
    virtual void TextOut(int x, int y, const std::wstring& strText);

    /// Copies a rectangle of another surface here.
    virtual void CopyRect(int x, int y, int cx, int cy, CDC* pSource, int xSource, int ySource);

    COLORREF GetPixel(int x, int y) const;  ///< NO_COLOR outside the surface

  protected:
    explicit CDC(std::unique_ptr<GraphicsSurface> pSurface);
    GraphicsSurface* Surface() const { return m_pSurface.get(); }

    CPoint m_position;

  private:
    std::unique_ptr<GraphicsSurface> m_pSurface;
};
