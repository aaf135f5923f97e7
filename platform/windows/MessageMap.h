// Message maps: tables that tie a window message, or a control's notification, to a handler.
//
//     class CDlgExample : public CDialog {
//         ...
//         DECLARE_MESSAGE_MAP()
//     };
//
//     BEGIN_MESSAGE_MAP(CDlgExample, CDialog)
//         ON_WM_CLOSE()
//         ON_BN_CLICKED(ID_START, OnStart)
//         ON_MESSAGE(WM_RT_BARCOMMAND, OnBarCommand)
//     END_MESSAGE_MAP()
//
// The macros ON_WM_... expect the handler under the framework's name and signature: OnPaint(),
// OnClose(), bool OnEraseBkgnd(CDC*), CBrush* OnCtlColor(CDC*, CWnd*, UINT),
// OnLButtonDown(UINT, CPoint) and so on. Handlers may be private.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "platform/windows/Messages.h"

class CBrush;
class CDC;
class CWnd;

/// One line of a message map.
struct MessageMapEntry {
    UINT m_nMessage;
    UINT m_nCode;  ///< WM_COMMAND: the notification code
    UINT m_nID;    ///< WM_COMMAND: the control id
    LRESULT (*m_pInvoke)(CWnd&, WPARAM, LPARAM);
};

struct MessageMap {
    const MessageMap* m_pBaseMap;  ///< the base class's map; null at the root
    std::span<const MessageMapEntry> m_entries;
};

#define DECLARE_MESSAGE_MAP()                                                                      \
  protected:                                                                                       \
    static const MessageMap* GetThisMessageMap();                                                  \
    const MessageMap* GetMessageMap() const override;

#define BEGIN_MESSAGE_MAP(the_class, base_class)                                                   \
    const MessageMap* the_class::GetMessageMap() const { return GetThisMessageMap(); }             \
    const MessageMap* the_class::GetThisMessageMap() {                                             \
        using ThisClass [[maybe_unused]] = the_class;                                              \
        using BaseClass [[maybe_unused]] = base_class;                                             \
        static const std::vector<MessageMapEntry> entries = {

#define END_MESSAGE_MAP()                                                                          \
    }                                                                                              \
    ;                                                                                              \
    static const MessageMap map{BaseClass::GetThisMessageMap(), entries};                          \
    return &map;                                                                                   \
    }

#define MESSAGE_MAP_ENTRY(message, code, id, body)                                                 \
    {message, code, id,                                                                            \
     []([[maybe_unused]] CWnd& wnd, [[maybe_unused]] WPARAM wParam,                                \
        [[maybe_unused]] LPARAM lParam) -> LRESULT {                                               \
         [[maybe_unused]] auto& self = static_cast<ThisClass&>(wnd);                               \
         body                                                                                      \
     }},

/// A private message; the handler is LRESULT f(WPARAM, LPARAM).
#define ON_MESSAGE(message, handler)                                                               \
    MESSAGE_MAP_ENTRY(message, 0, 0, return self.handler(wParam, lParam);)

/// A control's notification, or a command without a control; the handler is void f().
#define ON_CONTROL(code, id, handler)                                                              \
    MESSAGE_MAP_ENTRY(WM_COMMAND, code, id, self.handler(); return 0;)
#define ON_COMMAND(id, handler) ON_CONTROL(0, id, handler)
#define ON_BN_CLICKED(id, handler) ON_CONTROL(BN_CLICKED, id, handler)
#define ON_CBN_SELCHANGE(id, handler) ON_CONTROL(CBN_SELCHANGE, id, handler)
#define ON_LBN_SELCHANGE(id, handler) ON_CONTROL(LBN_SELCHANGE, id, handler)

#define ON_WM_PAINT() MESSAGE_MAP_ENTRY(WM_PAINT, 0, 0, self.OnPaint(); return 0;)
#define ON_WM_CLOSE() MESSAGE_MAP_ENTRY(WM_CLOSE, 0, 0, self.OnClose(); return 0;)
#define ON_WM_ERASEBKGND()                                                                         \
    MESSAGE_MAP_ENTRY(WM_ERASEBKGND, 0, 0,                                                         \
                      return self.OnEraseBkgnd(reinterpret_cast<CDC*>(wParam)) ? 1 : 0;)
#define ON_WM_CTLCOLOR()                                                                           \
    MESSAGE_MAP_ENTRY(                                                                             \
        WM_CTLCOLORSTATIC, 0, 0,                                                                   \
        return reinterpret_cast<LRESULT>(self.OnCtlColor(                                          \
            reinterpret_cast<CDC*>(wParam), reinterpret_cast<CWnd*>(lParam), WM_CTLCOLORSTATIC));)
#define ON_WM_LBUTTONDOWN()                                                                        \
    MESSAGE_MAP_ENTRY(WM_LBUTTONDOWN, 0, 0,                                                        \
                      self.OnLButtonDown(static_cast<UINT>(wParam), PointFromParam(lParam));       \
                      return 0;)
#define ON_WM_LBUTTONUP()                                                                          \
    MESSAGE_MAP_ENTRY(WM_LBUTTONUP, 0, 0,                                                          \
                      self.OnLButtonUp(static_cast<UINT>(wParam), PointFromParam(lParam));         \
                      return 0;)
#define ON_WM_MOUSEMOVE()                                                                          \
    MESSAGE_MAP_ENTRY(WM_MOUSEMOVE, 0, 0,                                                          \
                      self.OnMouseMove(static_cast<UINT>(wParam), PointFromParam(lParam));         \
                      return 0;)
#define ON_WM_RBUTTONDOWN()                                                                        \
    MESSAGE_MAP_ENTRY(WM_RBUTTONDOWN, 0, 0,                                                        \
                      self.OnRButtonDown(static_cast<UINT>(wParam), PointFromParam(lParam));       \
                      return 0;)
#define ON_WM_DROPFILES()                                                                          \
    MESSAGE_MAP_ENTRY(                                                                             \
        WM_DROPFILES, 0, 0,                                                                        \
        self.OnDropFiles(*reinterpret_cast<const std::vector<std::wstring>*>(lParam));             \
        return 0;)
