#pragma once

#include <QWidget>

class CViewWidget;
class QVBoxLayout;

// What stands around a view: a thin frame, coloured while the view is the active one of several,
// and the view's name in a corner. The frame lies beside the picture and covers nothing of it.
// Owned by the area of the views.
class CViewFrame : public QWidget
{
public:
    CViewFrame();

    void SetView(CViewWidget& view); // once; the view is made as this one's child

    void SetActive(bool bActive);

    bool IsActive() const { return m_bActive; }

protected:
    void paintEvent(QPaintEvent* pEvent) override;

private:
    QVBoxLayout* m_pLayout; // the widget's
    bool m_bActive = false;
};
