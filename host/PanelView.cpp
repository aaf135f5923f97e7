#include "host/PanelView.h"

#include "acquisition/ObjRTGeneric.h"
#include "host/StrokeJudge.h"
#include "instrument/Instrument.h"

BEGIN_MESSAGE_MAP(CPanelView, CView)
ON_MESSAGE(WM_RT_SENDOBJECT, OnSendObject)
END_MESSAGE_MAP()

LRESULT CPanelView::OnSendObject(WPARAM wParam, LPARAM) {
    const std::unique_ptr<CObjConfig> pMessage(reinterpret_cast<CObjConfig*>(wParam));
    if (pMessage && m_pInstrument) {
        std::string image;
        pMessage->ToBytes(image);
        if (m_pJudge) m_pJudge->OnMessage(image);
        m_pInstrument->Send(image);
    }
    return 0;
}
