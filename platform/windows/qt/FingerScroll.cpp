#include "platform/windows/qt/FingerScroll.h"

#include <QMouseEvent>
#include <QScrollBar>
#include <QSignalBlocker>
#include <algorithm>
#include <cmath>

#include "platform/drawing/DisplayScale.h"

namespace {

/// What a finger that taps may slip, in pixels.
constexpr int SLIP = 10;
constexpr int RUN_MS = 500;
/// A finger that has stood still for so long leaves nothing moving.
constexpr int STILL_MS = 100;
/// How far rows run that slow down from a speed in the time above, as a time at that speed: they
/// begin three times as fast as they are on average.
constexpr double RUN_LENGTH_MS = RUN_MS / 3.0;

}  // namespace

FingerScroll::FingerScroll(QAbstractItemView& view)
    : QObject(&view), m_view(view), m_run(view.verticalScrollBar(), "value") {
    m_run.setDuration(RUN_MS);
    m_run.setEasingCurve(QEasingCurve::OutCubic);
    view.viewport()->installEventFilter(this);
    // Whoever else moves the rows ends their running.
    connect(view.verticalScrollBar(), &QScrollBar::valueChanged, this, [this](int nValue) {
        if (nValue != m_run.currentValue().toInt()) m_run.stop();
    });
}

bool FingerScroll::eventFilter(QObject*, QEvent* pEvent) {
    const auto positionOf = [pEvent] {
        return static_cast<QMouseEvent*>(pEvent)->position().toPoint();
    };
    switch (pEvent->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        Press(positionOf().y());
        return true;
    case QEvent::MouseMove:
        if (m_bPressed) Move(positionOf().y());
        return true;
    case QEvent::MouseButtonRelease:
        if (m_bPressed) Release(positionOf());
        return true;
    default:
        return false;
    }
}

void FingerScroll::Press(int y) {
    m_bPressed = true;
    m_bDragging = m_run.state() == QAbstractAnimation::Running;
    m_run.stop();
    m_nPressedAt = m_nLastAt = y;
    m_nValuePressed = m_view.verticalScrollBar()->value();
    m_dVelocity = 0;
    m_sinceMove.start();
}

void FingerScroll::Move(int y) {
    if (!m_bDragging && std::abs(y - m_nPressedAt) < Scaled(SLIP)) return;
    m_bDragging = true;
    m_view.verticalScrollBar()->setValue(m_nValuePressed + m_nPressedAt - y);
    const auto nTime = std::max<qint64>(m_sinceMove.restart(), 1);
    m_dVelocity =
        (m_dVelocity + static_cast<double>(y - m_nLastAt) / static_cast<double>(nTime)) / 2;
    m_nLastAt = y;
}

void FingerScroll::Release(QPoint position) {
    m_bPressed = false;
    if (!m_bDragging) {
        Pick(position);
        return;
    }
    if (m_sinceMove.elapsed() > STILL_MS || m_dVelocity == 0) return;
    const QScrollBar& bar = *m_view.verticalScrollBar();
    const int nEnd = bar.value() - static_cast<int>(std::lround(m_dVelocity * RUN_LENGTH_MS));
    m_run.setStartValue(bar.value());
    m_run.setEndValue(std::clamp(nEnd, bar.minimum(), bar.maximum()));
    m_run.start();
}

void FingerScroll::Pick(QPoint position) {
    const QModelIndex index = m_view.indexAt(position);
    if (!index.isValid()) return;
    {
        const QSignalBlocker quiet(&m_view);
        m_view.clearSelection();
    }
    m_view.setCurrentIndex(index);
}
