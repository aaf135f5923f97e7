// The look that all dialogs and keyboards share: the background colour, and the button pictures of
// the resource library.
#pragma once

#include "platform/drawing/Graphics.h"
#include "platform/system/DynamicLibrary.h"
#include "platform/system/NumberedText.h"
#include "platform/windows/Controls.h"

constexpr COLORREF DIALOG_BACKGROUND = RGB(211, 228, 250);

/// Height of the letters in a message to the operator, in pixels.
constexpr int MESSAGE_FONT_HEIGHT = 20;

/// The numbers of the pictures.
constexpr UINT PICTURE_CLOSE = 154;  ///< also: back
constexpr UINT PICTURE_CHECKED = 366;
constexpr UINT PICTURE_OK = 368;
constexpr UINT PICTURE_NO = 375;
constexpr UINT PICTURE_UP = 5052;
constexpr UINT PICTURE_DOWN = 5053;
constexpr UINT PICTURE_CANCEL = 5059;
constexpr UINT PICTURE_ERASE_BACKWARDS = 6001;
constexpr UINT PICTURE_SHIFT = 6002;
constexpr UINT PICTURE_SHIFT_LOCKED = 6003;
constexpr UINT PICTURE_ERASE_ALL = 6004;
constexpr UINT PICTURE_FOLDER = 6005;
constexpr UINT PICTURE_FOLDER_UP = 6006;

// What assistive technology calls the buttons that carry pictures.
constexpr NumberedText NAME_OK{3180, L"OK"};
constexpr NumberedText NAME_CANCEL{3181, L"Cancel"};
constexpr NumberedText NAME_NO{3182, L"No"};
constexpr NumberedText NAME_CLOSE{3183, L"Close"};
constexpr NumberedText NAME_UP{3184, L"Up"};
constexpr NumberedText NAME_DOWN{3185, L"Down"};
constexpr NumberedText NAME_BACK{3186, L"Back"};

/// The resource library, loaded as long as this object lives. Make one for the moment in which the
/// buttons of a dialog get their pictures.
class PLATFORM_API CButtonPictures {
  public:
    CButtonPictures() : m_library(L"BitmapRes.dll") {}

    /// Whether the library is there. Without it no button changes.
    explicit operator bool() const { return static_cast<bool>(m_library); }

    /// A picture; empty when the library does not have it.
    CBitmap Load(UINT nPicture) const;

    /// Shows a picture on a button; a picture that the library does not have changes nothing.
    void SetOn(CStyledButton& button, UINT nPicture) const;
    void SetOn(const CWnd& dialog, int nButton, UINT nPicture) const;

  private:
    CDynamicLibrary m_library;
};
