// What an operator does with finger, mouse and keyboard, done by a program: real input events that
// take the window system's own way. For the demonstration run, tests and the soak.
//
// Threads: on the user-interface thread each operation handles the events that it causes; a tap
// whose handler shows a modal window returns when that window has closed. On the script thread of
// CScript each operation is handed to the user-interface thread and returns as soon as that
// thread waits for events again, be it inside a modal window: a script reads from top to bottom.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/drawing/Graphics.h"
#include "platform/windows/Wnd.h"

namespace Operator {

/// Runs a script on a thread of its own beside the caller's modal run, from the moment the event
/// loop first runs.
class PLATFORM_API CScript {
  public:
    ///
    /// Meanwhile file dialogs are those of a panel: nobody but an operator works the platform's.
    explicit CScript(std::function<void()> script);
    /// Handles events until the script has ended.
    ~CScript();
    CScript(const CScript&) = delete;
    CScript& operator=(const CScript&) = delete;

    /// Handles events until the script has ended; throws what the script has thrown. Modal windows
    /// that a script leaves open, at once after an exception, else after 10 s, are closed, so that
    /// the caller's modal run ends, and are an error.
    void Join();

  private:
    struct State;
    std::unique_ptr<State> m_pState;
};

/// Has a question answered on the user-interface thread, where windows and controls may be read.
/// From a script: waits for the answer, so the question must not show a window.
PLATFORM_API void Ask(const std::function<void()>& question);

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
/// @return whether there is such a row, and a drop-down list shows it then
PLATFORM_API bool Select(const CWnd& list, const std::wstring& strText);

/// Types a text into whatever has the keyboard focus.
PLATFORM_API void Type(const std::wstring& strText);
enum class Key { Enter, Escape, Tab, Backspace, Space, Up, Down };
PLATFORM_API void PressKey(Key key);

/// Goes to a path's folder in a panel's file dialog, which is waited for, types the name and
/// confirms it.
/// @throws std::runtime_error when there is no such dialog, or no such folder
PLATFORM_API void AnswerFileDialog(const std::wstring& strPath);

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

/// A control as assistive technology is told of it.
struct AccessibleControl {
    std::string m_strKind;  ///< "button", "edit", "list", "row", "picture", "text", "other"
    std::wstring m_strName;
};

/// What is shown in a window and its foot, without what only holds others and without texts that
/// are empty.
PLATFORM_API std::vector<AccessibleControl> ListAccessible(const CWnd& wnd);

/// What windows and controls there are in the process, seen or not: the kind of each, sorted.
PLATFORM_API std::vector<std::string> ListWidgets();

/// Has the threads end that the window system keeps for a while when it has used them.
/// User-interface thread.
PLATFORM_API void EndIdleThreads();

/// Handles events until a condition holds or the time is over.
/// @return whether the condition holds
PLATFORM_API bool WaitUntil(const std::function<bool()>& condition, unsigned nMilliseconds);
/// The same, for what a script cannot go on without.
/// @param strWhat what is waited for, for the error
/// @throws std::runtime_error when the time is over
PLATFORM_API void WaitFor(const std::string& strWhat, const std::function<bool()>& condition,
                          unsigned nMilliseconds = 5000);
/// Handles events for a time.
PLATFORM_API void Wait(unsigned nMilliseconds);
/// Has a call made from the event loop after a time, modal loops included.
PLATFORM_API void After(unsigned nMilliseconds, std::function<void()> call);

/// The window with its children, painted for the picture if it is not up to date.
/// @param dScale device pixels per pixel
PLATFORM_API CBitmap TakePicture(const CWnd& wnd, double dScale = 1.0);

/// The same of the whole window that it is or belongs to, with frame and foot.
PLATFORM_API CBitmap TakeWindowPicture(const CWnd& wnd, double dScale = 1.0);

/// The same with the windows that stand above it, such as its dialogs and their keyboards, as large
/// as all of them together; what none of them covers is white.
PLATFORM_API CBitmap TakeStackPicture(const CWnd& wnd);

/// What the window system shows of the window, which is not painted for it.
PLATFORM_API CBitmap TakeScreenPicture(const CWnd& wnd);

}  // namespace Operator
