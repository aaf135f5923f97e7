// The process's application: the window system, the application object with its settings store, and
// the main frame.
#pragma once

#include <memory>
#include <string>

#include "platform/system/Settings.h"
#include "platform/windows/Wnd.h"

/// The window system of this process. Make one, first thing in main, and keep it to the end.
class PLATFORM_API CWindowSystem {
  public:
    /// Without a display, or with one that cannot be opened, it says on standard error how to get
    /// one, and ends the program with code 1.
    /// @param pAdvice a line for that message: what else this program can do; must live on
    CWindowSystem(int& argc, char** argv, const char* pAdvice = "");
    /// Whether the environment itself chooses what windows are shown on ($QT_QPA_PLATFORM).
    static bool IsPlatformChosen();
    /// For programs that only draw into memory: never asks for a display.
    static std::unique_ptr<CWindowSystem> MakeOffscreen(int& argc, char** argv);
    ~CWindowSystem();
    CWindowSystem(const CWindowSystem&) = delete;
    CWindowSystem& operator=(const CWindowSystem&) = delete;

  private:
    struct State;
    std::unique_ptr<State> m_pState;
};

enum class DisplayKind {
    Panel,  ///< no window manager: windows have frames of the layer's own, dialogs are finger-sized
    Desktop,  ///< a window manager frames the windows; file dialogs are the platform's
};

/// What the windows are shown on. Made out when the window system begins.
PLATFORM_API DisplayKind GetDisplayKind();

/// Handles the messages and the input that wait, and returns. For long work on the user-interface
/// thread; a window made with CDialog::CreateModal keeps the input from the screen behind.
PLATFORM_API void PumpMessages();

/// The main frame, a window of the host with a view that takes messages.
class PLATFORM_API CFrameWindow : public CWnd {
  public:
    /// Makes the frame's window; it need not be shown.
    bool Create(const std::wstring& strTitle);

    /// Shows the frame over the whole display, as the background of the other windows.
    void FillDisplay();

    /// The active view, or null. Not owned.
    CWnd* GetActiveView() const { return m_pActiveView; }
    void SetActiveView(CWnd* pView) { m_pActiveView = pView; }

  private:
    CWnd* m_pActiveView = nullptr;
};

/// A window that receives messages and looks as its handler of WM_PAINT paints it. Its text is what
/// assistive technology is told of it.
class PLATFORM_API CView : public CWnd {
  public:
    bool Create(CWnd* pParent);

    /// Makes the view's window a foot of a dialog: below its client area and the feet that it has,
    /// as wide as those, within the same frame, and shown with it. The client area stays as it is,
    /// the dialog's window grows, and closes up when the view's window is destroyed. A modal
    /// dialog's foot takes input as the dialog does; it never takes the keyboard.
    /// @param nHeight in pixels
    /// @return false when the dialog has no frame of its own, being a child or without a window
    bool CreateFoot(CWnd& dialog, int nHeight);

    /// Makes the view's window stand over a part of a dialog, in front of its controls, which stay
    /// as they are. It takes input in their place, though not the keyboard.
    /// @param area in the dialog's client area
    /// @return as CreateFoot
    bool CreateCover(CWnd& dialog, const CRect& area);
};

/// The application object; at most one exists. It is the per-user settings store.
class PLATFORM_API CApplication {
  public:
    /// @param strSettingsFile the INI file of the settings; empty: the current user's file for
    ///        this application's name
    explicit CApplication(const std::wstring& strName, const std::wstring& strSettingsFile = {});
    virtual ~CApplication();
    CApplication(const CApplication&) = delete;
    CApplication& operator=(const CApplication&) = delete;

    /// The stored integer, or the default when the key is absent or not a number.
    int GetProfileInt(const std::wstring& strSection, const std::wstring& strKey, int nDefault) {
        return m_settings.GetInt(strSection, strKey, nDefault);
    }
    /// @return false when it could not be stored
    bool WriteProfileInt(const std::wstring& strSection, const std::wstring& strKey, int nValue) {
        return m_settings.SetInt(strSection, strKey, nValue);
    }

    CFrameWindow* m_pMainWnd = nullptr;  ///< not owned

  private:
    CSettings m_settings;
};

/// The application object, or null.
PLATFORM_API CApplication* GetApp();
