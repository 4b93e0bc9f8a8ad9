#pragma once

#include "framework/core/Resources.h"
#include "framework/widgets/CWindow.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <cstdint>

class QKeyEvent;
class QMouseEvent;

// What ties a Qt widget to the framework: its handle and id, the object bound to it and the window
// that hears of it. A child object of the widget, ends with it.
class CWindowNode : public QObject
{
public:
    // The widget's. pParent: whom the window notifies; null for a window of its own.
    static CWindowNode* Make(QWidget& widget, EControlKind eKind, uint32_t uId, CWindow* pParent);
    ~CWindowNode() override;

    QWidget* GetWidget() const { return m_pWidget; }

    // The widget as what its kind is made of; null for another kind.
    template <class TWidget> TWidget* GetAs() const { return dynamic_cast<TWidget*>(m_pWidget); }

    EControlKind GetKind() const { return m_Kind; }

    uint32_t GetId() const { return m_Id; }

    uintptr_t GetHandle() const { return m_Handle; }

    uint32_t GetStyle() const { return m_Style; }

    void SetStyle(uint32_t uStyle) { m_Style = uStyle; }

    CWindow* GetObject() const { return m_pObject; }

    CWindow* GetParent() const { return m_pParent; }

    // bOwner: the object made the window and ends it.
    void Attach(CWindow& object, bool bOwner);
    void Detach();
    // Nobody is asked any more. The widget goes at once, or after the event that it is in.
    void Destroy();

    // To its own class, then to its parent. True when somebody has dealt with it.
    bool Notify(SNotification& notification);
    bool Notify(ENotify eKind);
    // Watches another widget of the same window, such as the viewport of a list.
    void Watch(QWidget& widget);
    // For the painting of the widgets.
    void Paint(CDrawContext& context);
    void DrawItem(const SDrawItem& item);
    void DoDefault();

    SRect ToPixels(const QRect& rect) const; // Qt's units to device pixels
    QRect FromPixels(const SRect& rect) const;
    double GetScale() const;

    static CWindowNode* Find(const QObject* pWidget); // null for a foreign widget
    static QWidget* FindWidget(uintptr_t uHandle);

    static CWindowNode* GetOf(const CWindow& window) { return window.m_Node; }

protected:
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    CWindowNode(QWidget& widget, EControlKind eKind, uint32_t uId, CWindow* pParent);

    bool Handle(QObject* pWatched, QEvent* pEvent);
    bool HandleMouse(QMouseEvent& event);
    bool HandleKey(const QKeyEvent& event);
    bool HandleShortcut(QKeyEvent& event);
    void HandleState(bool bOwn, int iType);
    bool HandleToolTip(QEvent& event);

    QWidget* m_pWidget;
    EControlKind m_Kind;
    uint32_t m_Id;
    uint32_t m_Style = 0;
    uintptr_t m_Handle;
    CWindow* m_pObject = nullptr;
    CWindow* m_pParent;
    QObject* m_pWatched = nullptr; // of the event that is being handled
    QEvent* m_pEvent = nullptr;    // null outside, and once its usual processing has run
};

// While one lives, a widget that is destroyed stays until the event loop turns.
class CEventGuard
{
public:
    CEventGuard() { ++s_Depth; }

    ~CEventGuard() { --s_Depth; }

    CEventGuard(const CEventGuard&) = delete;
    CEventGuard& operator=(const CEventGuard&) = delete;

    static bool IsInside() { return s_Depth > 0; }

private:
    static int s_Depth;
};
