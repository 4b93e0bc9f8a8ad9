#pragma once

#include "framework/core/Resources.h"
#include "framework/qt/CButtonNode.h"
#include "framework/widgets/CWindow.h"
#include "framework/widgets/IWindowNode.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <cstdint>
#include <optional>

class QKeyEvent;
class QMouseEvent;

// What ties a Qt widget to the framework: its handle and id, the object bound to it and the window
// that hears of it. It is a child object of the widget and ends with it. As the widget's event
// filter it turns events into the hooks of the object.
class CWindowNode : public QObject, public IWindowNode
{
public:
    // Makes the node of a widget, which owns it from then on. pParent: whom the window notifies;
    // null for a window of its own.
    static CWindowNode* Make(QWidget& widget, EControlKind eKind, uint32_t uId, CWindow* pParent);
    ~CWindowNode() override;

    QWidget* GetWidget() const { return m_pWidget; }

    // The widget as what its kind is made of; null for another kind.
    template <class TWidget> TWidget* GetAs() const { return dynamic_cast<TWidget*>(m_pWidget); }

    EControlKind GetKind() const { return m_Kind; }

    void SetStyle(uint32_t uStyle) { m_Style = uStyle; }

    CWindow* GetObject() const { return m_pObject; }

    // IWindowNode
    void Attach(CWindow& object, bool bOwner) override;
    void Detach() override;
    void Destroy() override;

    uintptr_t GetHandle() const override { return m_Handle; }

    uint32_t GetId() const override { return m_Id; }

    uint32_t GetStyle() const override { return m_Style; }

    CWindow* GetParent() const override { return m_pParent; }

    void DoDefault() override;
    void SetText(const char* pszText) override;
    std::string GetText() const override;
    void Enable(bool bEnable) override;
    bool IsEnabled() const override;
    void Show(bool bShow) override;
    bool IsVisible() const override;
    void Focus() override;
    bool HasFocus() const override;
    void SetRedraw(bool bOn) override;
    void Invalidate() override;
    void Move(const SRect& rect) override;
    SRect GetRect() const override;
    SRect GetRectIn(const IWindowNode& around) const override;
    SRect GetClientRect() const override;
    double GetScale() const override;
    IButtonNode* GetButton() override;
    IListNode* GetList() override;
    IComboNode* GetCombo() override;
    IEditNode* GetEdit() override;
    ISliderNode* GetSlider() override;
    ISpinNode* GetSpin() override;
    IReportNode* GetReport() override;
    IDialogNode* GetDialog() override;

    // Where child windows stand: what scrolls of a scrolling window, else the widget.
    QWidget* GetGround() const;

    // Tells the object of the window, then the window's parent. Answers whether one of them has
    // dealt with it. The window may be gone afterwards.
    bool Notify(SNotification& notification);
    bool Notify(ENotify eKind);
    // Watches another widget of the same window, such as the viewport of a list.
    void Watch(QWidget& widget);
    // The widgets call these while they paint; without an object nothing is drawn.
    void Paint(CDrawContext& context);
    void DrawItem(const SDrawItem& item);

    SRect ToPixels(const QRect& rect) const; // Qt's units to device pixels
    QRect FromPixels(const SRect& rect) const;

    static CWindowNode* Find(const QObject* pWidget); // null for a foreign widget
    static QWidget* FindWidget(uintptr_t uHandle);

    static CWindowNode* GetOf(const CWindow& window)
    {
        return static_cast<CWindowNode*>(window.m_Node);
    }

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
    std::optional<CButtonNode> m_Button; // of a button, once it was asked for
    QObject* m_pWatched = nullptr;       // of the event that is being handled
    QEvent* m_pEvent = nullptr;          // null outside, and once its usual processing has run
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
