#pragma once

#include <QFrame>

class QHBoxLayout;
class QMainWindow;

// A bar over the edge of what the window shows in its middle, hidden at first. It takes no room
// there, and takes the keyboard only where a person goes to one of its controls. Owned by the
// window.
class COverlayBar : public QFrame
{
public:
    // eEdge: Qt::TopEdge or Qt::BottomEdge. strName: for tests, style sheets and screen readers.
    COverlayBar(QMainWindow& window, Qt::Edge eEdge, const QString& strName);

protected:
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;
    void showEvent(QShowEvent* pEvent) override;

    QHBoxLayout& GetRow() { return *m_pRow; }

    QMainWindow& GetWindow() { return m_Window; }

private:
    void Place();

    QMainWindow& m_Window;
    Qt::Edge m_Edge;
    QHBoxLayout* m_pRow; // the bar's
};
