#include "host/StatusStrip.h"

#include <QTimer>

#include "host/StripPainter.h"
#include "platform/drawing/DisplayScale.h"
#include "platform/windows/PaintDC.h"
#include "plugin/RealTimeData.h"
#include "plugin/ScreenTemplate.h"

BEGIN_MESSAGE_MAP(CStatusStrip, CView)
ON_WM_PAINT()
END_MESSAGE_MAP()

namespace {

constexpr std::chrono::milliseconds LOOK_EVERY{100};

std::wstring JoinTexts(const StripContents& contents) {
    std::wstring strText;
    const auto add = [&strText](const std::wstring& strPart, wchar_t chBefore) {
        if (!strText.empty() && !strPart.empty()) strText += chBefore;
        strText += strPart;
    };
    for (const StripField& field : {contents.m_instrument, contents.m_file})
        for (const std::wstring& strLine : {field.m_strHead, field.m_strDetail})
            add(strLine, L'\n');
    for (const StripRow& row : contents.m_markers)
        for (const std::wstring& strCell : row) add(strCell, &strCell == row.data() ? L'\n' : L' ');
    return strText;
}

}  // namespace

CStatusStrip::CStatusStrip(const CRealTimeData& session, std::function<StripField()> describe)
    : m_session(session), m_describe(std::move(describe)),
      m_fileListener([this](const FileEvent& event) {
          StripField field = DescribeFile(event);
          const std::lock_guard lock(m_mutex);
          m_file = std::move(field);
      }) {}

CStatusStrip::~CStatusStrip() = default;

void CStatusStrip::Attach(CWnd& screen) {
    if (!CreateFoot(screen, Scaled(STRIP_HEIGHT))) return;
    m_pScreen = &screen;
    Update();
    m_pTimer = std::make_unique<QTimer>();
    QObject::connect(m_pTimer.get(), &QTimer::timeout, [this] { Update(); });
    m_pTimer->start(LOOK_EVERY);
}

void CStatusStrip::Update() {
    if (!GetHandle()) return;
    StripContents contents = Look();
    if (contents == m_shown) return;
    m_shown = std::move(contents);
    SetWindowText(JoinTexts(m_shown));
    Invalidate();
}

StripContents CStatusStrip::Look() {
    StripContents contents;
    contents.m_instrument = m_describe();
    {
        const std::lock_guard lock(m_mutex);
        contents.m_file = m_file;
    }
    contents.m_markers = LookAtMarkers();
    return contents;
}

/// Of the plot on show.
std::vector<StripRow> CStatusStrip::LookAtMarkers() const {
    const SecondInput secondInput{m_session.m_nPositionInput};
    for (std::size_t k = 0; k < std::size(PLOT_CONTROLS); ++k) {
        const CWnd* const pPlot = m_pScreen->GetControl(PLOT_CONTROLS[k]);
        if (pPlot && pPlot->IsWindowVisible())
            return DescribeMarkers(ReadMarkerValues(m_session.m_aPlots[k],
                                                    HasValuePairs(m_session.m_nMode, secondInput)),
                                   secondInput);
    }
    return {};
}

void CStatusStrip::OnPaint() {
    CPaintDC dc(this);
    PaintStrip(dc, GetClientRect(), m_shown);
}
