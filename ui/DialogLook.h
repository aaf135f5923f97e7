// The look that all dialogs share: the background colour, labels that let it show through, and the
// button pictures of the resource library.
#pragma once

#include "platform/drawing/Graphics.h"
#include "platform/system/DynamicLibrary.h"
#include "platform/windows/Controls.h"

constexpr COLORREF DIALOG_BACKGROUND = RGB(211, 228, 250);

/// Fills a dialog's client area when its background is erased.
/// @return true, which reports the erase as done
bool FillDialogBackground(CDC& dc, const CWnd& dialog);

/// Colours a label: a transparent text background and no brush, which is what is returned.
CBrush* MakeTransparent(CDC& dc);

/// The resource library, loaded as long as this object lives. Make one for the moment in which the
/// buttons of a dialog get their pictures.
class CButtonPictures {
  public:
    CButtonPictures() : m_library(L"BitmapRes.dll") {}

    /// Whether the library is there. Without it no button changes.
    explicit operator bool() const { return static_cast<bool>(m_library); }

    /// Shows a picture on a button; a picture that the library does not have changes nothing.
    void SetOn(CStyledButton& button, UINT nPicture) const;
    void SetOn(const CWnd& dialog, int nButton, UINT nPicture) const;

  private:
    CDynamicLibrary m_library;
};

/// The numbers of the pictures.
constexpr UINT PICTURE_CLOSE = 154;
constexpr UINT PICTURE_CHECKED = 366;
constexpr UINT PICTURE_OK = 368;
constexpr UINT PICTURE_NO = 375;
constexpr UINT PICTURE_UP = 5052;
constexpr UINT PICTURE_DOWN = 5053;
constexpr UINT PICTURE_CANCEL = 5059;
