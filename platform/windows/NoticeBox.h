// The box in which the layer itself speaks to the operator, in the manner of the panel's message
// box: large text, and buttons that a finger hits.
#pragma once

#include <string>

#include "platform/drawing/Graphics.h"
#include "platform/windows/Dialog.h"

/// Says something that the operator acknowledges, or asks something that is confirmed or cancelled.
class PLATFORM_API CNoticeBox : public CDialog {
  public:
    enum Control : int {
        ID_OK_CENTRE = 3,
        ID_SUMMARY = 1113,
        ID_DETAILS = 1114,
    };
    enum class Kind { Notice, Question };

    /// @param strSummary what it is about; takes two rows
    /// @param strDetails the particulars: a file's name, and a reason behind the last line feed.
    ///        Names and reasons of any length stand in the box, without their middle if need be
    CNoticeBox(Kind kind, std::wstring strTitle, std::wstring strSummary, std::wstring strDetails);

  protected:
    bool OnInitDialog() override;

  private:
    void ShowTexts();
    DECLARE_MESSAGE_MAP()

    Kind m_kind;
    std::wstring m_strTitle;
    std::wstring m_strSummary;
    std::wstring m_strDetails;
    CFont m_fontSummary;
    CFont m_fontDetails;
};

/// Asks the operator, modally. User-interface thread.
/// @return whether it was confirmed
PLATFORM_API bool AskOperator(const std::wstring& strTitle, const std::wstring& strQuestion,
                              const std::wstring& strDetails);
