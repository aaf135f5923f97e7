// The main menu bar below the plots: info, export, pass output, close.
#pragma once

#include "ui/DlgLangBase.h"

/// A child dialog of the screen, to which it posts its messages; it does nothing by itself.
class CDlgBarMainMenu : public CDlgLangBase {
  public:
    /// @param pScreen becomes the bar's parent window
    explicit CDlgBarMainMenu(CWnd* pScreen);

  protected:
    bool OnInitDialog() override;

  private:
    void OnInfo();
    void OnExportCsv();
    void OnPassOutput();
    void OnCloseScreen();
    bool OnEraseBkgnd(CDC* pDC);
    DECLARE_MESSAGE_MAP()
};
