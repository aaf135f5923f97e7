// What an operator does with finger, mouse and keyboard, done by a program: real input events that
// take the window system's own way. For the demonstration run, tests and the soak.
// User-interface thread only; each operation lets the events that it causes be handled.
#pragma once

#include <functional>
#include <string>

#include "platform/Graphics.h"
#include "platform/Wnd.h"

namespace Operator {

/// Presses, moves to and releases at a point of a window's client area.
PLATFORM_API void Press(const CWnd& wnd, CPoint point);
PLATFORM_API void MoveTo(const CWnd& wnd, CPoint point);
PLATFORM_API void Release(const CWnd& wnd, CPoint point);
PLATFORM_API void RightClick(const CWnd& wnd, CPoint point);

/// Taps a window in its middle. A window that is hidden, disabled or behind a modal window gets
/// nothing, as with a finger.
/// @return whether it could be tapped
PLATFORM_API bool Tap(const CWnd& wnd);
/// Taps the control `nID` of a dialog; false also when there is no such control.
PLATFORM_API bool Tap(const CWnd& dialog, int nID);

/// Opens a drop-down list or goes to a list box, and picks the row with a text.
PLATFORM_API bool Select(const CWnd& list, const std::wstring& strText);

/// Types a text into whatever has the keyboard focus.
PLATFORM_API void Type(const std::wstring& strText);
enum class Key { Enter, Escape, Tab, Backspace, Space, Up, Down };
PLATFORM_API void PressKey(Key key);

/// Drops files on a window.
PLATFORM_API void DropFiles(const CWnd& wnd, const std::vector<std::wstring>& arrPaths);

/// The front modal window: its title, and its texts (for standard boxes and file dialogs, which are
/// not CWnd objects). Empty when there is none.
PLATFORM_API std::wstring ModalTitle();
PLATFORM_API std::wstring ModalText();
/// The object of the front modal window, or null when there is none or it is a standard one.
PLATFORM_API CWnd* ModalWindow();
/// Presses the button with a text in the front standard box or file dialog.
PLATFORM_API bool PressModalButton(const std::wstring& strText);

/// Handles events until a condition holds or the time is over.
/// @return whether the condition holds
PLATFORM_API bool WaitUntil(const std::function<bool()>& condition, unsigned nMilliseconds);
/// Handles events for a time.
PLATFORM_API void Wait(unsigned nMilliseconds);
/// Has a call made from the event loop after a time, modal loops included.
PLATFORM_API void After(unsigned nMilliseconds, std::function<void()> call);

/// The window with its children as it stands on the screen.
/// @param dScale device pixels per pixel
PLATFORM_API CBitmap TakePicture(const CWnd& wnd, double dScale = 1.0);
/// The whole front modal window, also of a standard one.
PLATFORM_API CBitmap TakeModalPicture();

}  // namespace Operator
