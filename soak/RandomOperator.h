// An operator who does anything that a hand, a mouse and a keyboard can do, at random.
#pragma once

#include <random>
#include <string>

#include "soak/Counts.h"
#include "tests/support/Panel.h"

/// Looks at what is in front, the screen or one of its dialogs and boxes, and does something there.
/// Belongs to the script thread.
class CRandomOperator {
  public:
    struct Manner {
        bool m_bCloses = true;      ///< the screen too
        unsigned m_nPauseMost = 0;  ///< between two actions, milliseconds
        unsigned m_nRestMost = 0;   ///< now and then, milliseconds
    };

    /// @param strFolder the program folder, which files are written to and read from
    CRandomOperator(TestPanel& panel, const std::wstring& strFolder, std::uint32_t nSeed,
                    CSoakRecord& record, Manner manner);

    /// Works until the screen has closed, or the time is over.
    void Work(unsigned nMilliseconds);

    /// Closes whatever is in front of the screen.
    /// @return whether the screen is still there
    bool ReturnToScreen();

    /// Closes whatever is in front of the screen, and the screen.
    void CloseScreen();

  private:
    /// What is done with the window in front: of the keyboard, a dialog or a box, and the screen.
    using FrontWork = void (CRandomOperator::*)(const CWnd& front);
    struct Action;
    static const Action ON_SCREEN[];

    bool IsOpen() const { return m_panel.m_pDialog->GetHandle() != 0; }
    FrontWork FindWork() const;
    void Act();
    void LeaveFront(int nTry);

    // On the screen
    void WorkScreen(const CWnd&);
    void TapPlot();
    void DragPlot();
    void BarButton();
    void Key();
    void StrayMessage();

    // In what stands in front of it
    void WorkKeyboard(const CWnd& keyboard);
    void WorkNumberPad(const CWnd& pad);
    void WorkSettings(const CWnd& settings);
    void WorkFileList(const CWnd& list);
    void WorkFileDialog(const CWnd&);
    void WorkProgress(const CWnd&);
    void WorkBox(const CWnd&);

    unsigned Pick(unsigned nBelow) { return static_cast<unsigned>(m_random() % nBelow); }
    bool OneIn(unsigned nTimes) { return Pick(nTimes) == 0; }
    CPoint PickPoint();
    std::wstring PickPath();
    void SelectAny(const CWnd& dialog, int nID);
    void EndDialog(const CWnd& dialog);

    TestPanel& m_panel;
    const std::wstring m_strFolder;
    std::mt19937 m_random;
    CSoakRecord& m_record;
    const Manner m_manner;
};
