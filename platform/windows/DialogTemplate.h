// Dialog templates: what a dialog looks like, as a constant table.
#pragma once

#include <span>

#include "platform/drawing/DisplayScale.h"
#include "platform/drawing/Geometry.h"
#include "platform/system/Export.h"
#include "platform/system/NumberedText.h"
#include "platform/system/Types.h"

enum class ControlKind : BYTE {
    Static,        ///< CStatic, a text
    StaticFrame,   ///< CStatic without text, an area that a derived class paints
    PushButton,    ///< CButton
    StyledButton,  ///< CStyledButton
    Edit,          ///< CEdit
    DropDownList,  ///< CComboBox; height is that of the closed list
    ListBox,       ///< CListBox
};

/// Styles of a control; they combine.
enum ControlStyle : UINT {
    CS_NONE = 0,
    CS_HIDDEN = 1,    ///< not visible at first
    CS_SORT = 2,      ///< lists: items in the order of their texts
    CS_CENTER = 4,    ///< statics: text centred in each line
    CS_READONLY = 8,  ///< edits
    CS_BORDER = 16,   ///< edits
};

/// Position and size in dialog units.
struct DialogItem {
    int m_nID;
    ControlKind m_kind;
    const wchar_t* m_pText;
    int x, y, cx, cy;
    UINT m_nStyle = CS_NONE;
    NumberedText m_name = NO_TEXT;  ///< what assistive technology calls it; without, its text
};

struct DialogTemplate {
    int m_nID;
    const wchar_t* m_pTitle;
    int cx, cy;  ///< client area in dialog units
    const wchar_t* m_pFontFace;
    int m_nPointSize;
    std::span<const DialogItem> m_items;
    bool m_bChild = false;  ///< a child of its parent window, without frame, hidden until shown
};

/// Pixels of the design per dialog unit of a font: a horizontal unit is a quarter of cx, a vertical
/// one an eighth of cy. 8-point "MS Shell Dlg" has 6 x 13; other fonts go by their metrics.
PLATFORM_API CSize DialogBaseUnits(const wchar_t* pFontFace, int nPointSize);

/// A rectangle in dialog units as pixels of the display. Position and size are rounded to pixels of
/// the design; then each edge is scaled, so that what touches in the design touches at any scale.
inline CRect MapDialogRect(CSize baseUnits, int x, int y, int cx, int cy) {
    const auto toPixels = [](int n, int base, int parts) { return (n * base + parts / 2) / parts; };
    const int left = toPixels(x, baseUnits.cx, 4);
    const int top = toPixels(y, baseUnits.cy, 8);
    return {Scaled(left), Scaled(top), Scaled(left + toPixels(cx, baseUnits.cx, 4)),
            Scaled(top + toPixels(cy, baseUnits.cy, 8))};
}
