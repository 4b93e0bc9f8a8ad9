#pragma once

#include <QGroupBox>

// A group of a form, with a title that folds it: by a click, by the space bar or Enter under the
// keyboard's focus, by the arrows that point the way. Folded it is its title alone. What stands in
// it has its place on the ground.
class CFoldingGroup : public QGroupBox
{
public:
    CFoldingGroup(const QString& strTitle, QWidget* pParent);

    QWidget* GetGround() const { return m_pGround; }

    void SetFolded(bool bFolded);

    bool IsFolded() const { return m_bFolded; }

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* pEvent) override;
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseReleaseEvent(QMouseEvent* pEvent) override;
    bool event(QEvent* pEvent) override; // the base class takes the space bar there

private:
    bool TakeKey(int iKey);
    QRect GetTitleRect() const;
    int GetArrowWidth() const;

    QWidget* m_pGround; // the group's
    bool m_bFolded = false;
    bool m_bPressed = false; // the title is held
};
