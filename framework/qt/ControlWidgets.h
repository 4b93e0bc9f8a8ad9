#pragma once

#include "framework/core/Resources.h"
#include "framework/drawing/CPixelBuffer.h"
#include "framework/widgets/ControlNodes.h"

#include <QAbstractScrollArea>
#include <QBasicTimer>
#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <QSlider>

#include <string>

class CWindow;
class CWindowNode;

// The Qt widgets behind the controls, each with its node. Owned by the widget they stand on.

// Makes a control on the widget pGround, which owns it. pParent: whom the control notifies.
QWidget* MakeControlWidget(const SControlResource& control, QWidget* pGround, CWindow* pParent);

// A window that its object paints.
class CPaintedArea : public QWidget
{
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent* pEvent) override;

private:
    CPixelBuffer m_Pixels;
};

// A push button that its object may draw.
class CPaintedButton : public QPushButton
{
public:
    using QPushButton::QPushButton;

    void SetOwnerDraw();

    QSize sizeHint() const override; // the text and no more than a frame, other than most styles

    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* pEvent) override;
    void mouseDoubleClickEvent(QMouseEvent* pEvent) override;

private:
    void PaintChecked();

    bool m_OwnerDraw = false;
    CPixelBuffer m_Pixels;
};

// A check box with three states that waits for its owner to change it.
class CManualCheckBox : public QCheckBox
{
public:
    using QCheckBox::QCheckBox;

protected:
    void nextCheckState() override {}
};

class CSliderWidget : public QSlider, public ISliderNode
{
public:
    explicit CSliderWidget(QWidget* pGround);

    void SetSliderRange(int iMin, int iMax) override;

    int GetLow() const override { return minimum(); }

    int GetHigh() const override { return maximum(); }

    void SetPos(int iPos) override { setValue(iPos); }

    int GetPos() const override { return value(); }

    void SetPageSize(int iPage) override;

    int GetPageSize() const override { return pageStep(); }

protected:
    void wheelEvent(QWheelEvent* pEvent) override;

private:
    void OnAction(int iAction);
    void OnReleased();

    bool m_bOwnPage = false; // the page was set by code, so a new range keeps it
};

// Two arrows above each other. The longer one is held, the more steps each repeat counts for.
class CSpinWidget : public QWidget, public ISpinNode
{
public:
    explicit CSpinWidget(QWidget* pGround);

    void SetRange(int iLower, int iUpper) override;
    void SetPos(int iPos) override;
    void SetBuddy(uint32_t uBuddyId) override;

    void Step(bool bUp) override { StepBy(bUp, 1); }

    void StopRepeat() override { m_Timer.stop(); }

    int GetLower() const override { return m_Lower; }

    int GetUpper() const override { return m_Upper; }

    int GetPos() const override { return m_Pos; }

    uint32_t GetBuddyId() const override { return m_BuddyId; }

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* pEvent) override;
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseReleaseEvent(QMouseEvent* pEvent) override;
    void timerEvent(QTimerEvent* pEvent) override;
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override; // the buddy's arrow keys

private:
    void StepBy(bool bUp, int iSteps);

    int m_Lower = 100;
    int m_Upper = 0;
    int m_Pos = 0;
    uint32_t m_BuddyId = 0;
    int m_iHeld = 0;    // 1: the upper arrow is held, -1: the lower one
    int m_nRepeats = 0; // since the arrow, or a key of the buddy, went down
    QBasicTimer m_Timer;
};

// A drop-down list that tells only of choices that change it.
class CDropDown : public QComboBox, public IComboNode
{
public:
    explicit CDropDown(QWidget* pGround);

    int AddItem(const char* pszText) override;
    void RemoveItems() override;

    int GetItemCount() const override { return count(); }

    std::string GetItemText(int iItem) const override;
    int FindItem(const char* pszText) const override;
    void SetItemNumber(int iItem, uintptr_t uData) override;
    uintptr_t GetItemNumber(int iItem) const override;
    void Select(int iItem) override;

    int GetSelected() const override { return currentIndex(); }

    void ShowList(bool bShow) override;

private:
    void OnActivated(int iItem);

    int m_Last = -1; // what is shown as far as its owner knows
};
