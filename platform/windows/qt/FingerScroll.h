// A list that a finger moves by dragging its rows.
#pragma once

#include <QAbstractItemView>
#include <QElapsedTimer>
#include <QPropertyAnimation>

/// Takes the mouse, which a finger on a panel comes as, from a list that scrolls by pixels. What is
/// dragged follows the finger, and runs on for a moment when the finger leaves it moving. A tap
/// picks its row when the finger is lifted, also one that is picked already; a tap on rows that run
/// stops them. Lives as long as the list.
class FingerScroll : public QObject {
  public:
    explicit FingerScroll(QAbstractItemView& view);

    bool eventFilter(QObject*, QEvent* pEvent) override;

  private:
    void Press(int y);
    void Move(int y);
    void Release(QPoint position);
    void Pick(QPoint position);

    QAbstractItemView& m_view;
    QPropertyAnimation m_run;
    QElapsedTimer m_sinceMove;
    bool m_bPressed = false;
    bool m_bDragging = false;  ///< from the press on when that has stopped running rows
    int m_nPressedAt = 0;
    int m_nLastAt = 0;
    int m_nValuePressed = 0;  ///< of the scroll bar
    double m_dVelocity = 0;   ///< of the finger, pixels per millisecond
};
