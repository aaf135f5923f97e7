#include "platform/windows/NoticeBox.h"

#include <algorithm>

#include "platform/drawing/FitText.h"
#include "platform/windows/DialogLook.h"

namespace {

using enum CNoticeBox::Control;

constexpr DialogItem ITEMS[] = {
    {ID_SUMMARY, ControlKind::Static, L"", 9, 9, 332, 30},
    {ID_DETAILS, ControlKind::Static, L"", 9, 42, 332, 88},
    {IDOK, ControlKind::StyledButton, L"OK", 75, 135, 50, 42, CS_HIDDEN, NAME_OK},
    {IDCANCEL, ControlKind::StyledButton, L"Cancel", 225, 135, 50, 42, CS_HIDDEN, NAME_CANCEL},
    {ID_OK_CENTRE, ControlKind::StyledButton, L"OK", 150, 135, 50, 42, CS_HIDDEN, NAME_OK},
};

constexpr DialogTemplate TEMPLATE{707, L"", 350, 184, L"MS Shell Dlg", 8, ITEMS};

constexpr int SUMMARY_ROWS = 2;
constexpr int DETAIL_ROWS = 6;
constexpr int NAME_ROWS = 3;  ///< of the details, at most

}  // namespace

BEGIN_MESSAGE_MAP(CNoticeBox, CDialog)
ON_BN_CLICKED(ID_OK_CENTRE, OnOK)
END_MESSAGE_MAP()

CNoticeBox::CNoticeBox(Kind kind, std::wstring strTitle, std::wstring strSummary,
                       std::wstring strDetails)
    : CDialog(TEMPLATE), m_kind(kind), m_strTitle(std::move(strTitle)),
      m_strSummary(std::move(strSummary)), m_strDetails(std::move(strDetails)) {}

bool CNoticeBox::OnInitDialog() {
    CDialog::OnInitDialog();
    SetWindowText(m_strTitle);
    ShowTexts();
    const CButtonPictures pictures;
    pictures.SetOn(*this, IDOK, PICTURE_OK);
    pictures.SetOn(*this, ID_OK_CENTRE, PICTURE_OK);
    pictures.SetOn(*this, IDCANCEL, PICTURE_CANCEL);
    const bool bQuestion = m_kind == Kind::Question;
    for (const auto& [nID, bShown] :
         {std::pair<int, bool>{IDOK, bQuestion}, {IDCANCEL, bQuestion}, {ID_OK_CENTRE, !bQuestion}})
        if (CWnd* pButton = GetControl(nID)) pButton->ShowWindow(bShown);
    return true;
}

void CNoticeBox::ShowTexts() {
    m_fontSummary.CreatePixelFont(MESSAGE_FONT_HEIGHT, L"MS Shell Dlg", true);
    m_fontDetails.CreatePixelFont(MESSAGE_FONT_HEIGHT, L"MS Shell Dlg", false);
    CWnd* const pSummary = GetControl(ID_SUMMARY);
    CWnd* const pDetails = GetControl(ID_DETAILS);
    pSummary->SetFont(&m_fontSummary);
    pDetails->SetFont(&m_fontDetails);
    // A pixel less than there is: what fills a row to the last would be broken once more.
    const int nWidth = pSummary->GetClientRect().Width() - 1;
    pSummary->SetWindowText(FitText(m_strSummary, m_fontSummary, nWidth, SUMMARY_ROWS));

    const std::size_t nBreak = m_strDetails.rfind(L'\n');
    if (nBreak == std::wstring::npos) {
        pDetails->SetWindowText(FitText(m_strDetails, m_fontDetails, nWidth, DETAIL_ROWS));
        return;
    }
    const std::wstring strName =
        FitText(m_strDetails.substr(0, nBreak), m_fontDetails, nWidth, NAME_ROWS);
    const auto nLeft = DETAIL_ROWS - 1 - static_cast<int>(std::ranges::count(strName, L'\n'));
    pDetails->SetWindowText(strName + L'\n' +
                            FitText(m_strDetails.substr(nBreak + 1), m_fontDetails, nWidth, nLeft));
}

bool AskOperator(const std::wstring& strTitle, const std::wstring& strQuestion,
                 const std::wstring& strDetails) {
    return CNoticeBox(CNoticeBox::Kind::Question, strTitle, strQuestion, strDetails).DoModal() ==
           IDOK;
}
