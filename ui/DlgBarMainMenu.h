// The main menu bar below the plots: info, export, pass output, close.
#pragma once

#include "ui/DlgLangBase.h"

/// A child dialog of the screen, to which it posts its messages; it does nothing by itself.
class CDlgBarMainMenu : public CDlgLangBase {
  public:
    enum Control : int {
        ID_CLOSE_SCREEN = 1,
        ID_INFO = 2,
        ID_PASS_OUTPUT = 4,
        ID_EXPORT_CSV = 1047,
        ID_TOOLS = 1203,  ///< never shown
    };

    /// @param pScreen becomes the bar's parent window
    explicit CDlgBarMainMenu(CWnd* pScreen);

  protected:
    bool OnInitDialog() override;

  private:
    void OnInfo();
    void OnExportCsv();
    void OnPassOutput();
    void OnCloseScreen();
    DECLARE_MESSAGE_MAP()
};
