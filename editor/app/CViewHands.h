#pragma once

#include "editor/app/CBrushHand.h"
#include "editor/app/CSunHand.h"

// What the mouse of a view changes while a key is held: values of the brush, or the sun, one at a
// time. Owned by the view. UI thread.
class CViewHands
{
public:
    // As CBrushHand and CSunHand.
    CViewHands(IPluginTools* pTools,
               SRenderSettings* pRender,
               const CKeyBindings& keys,
               CViewInput& input,
               CCursorNote& note,
               const std::function<void()>& onTurn,
               const std::function<void()>& onEnd)
        : m_Brush(pTools, keys, input, note, onEnd)
        , m_Sun(pRender, keys, input, note, onTurn, onEnd)
    {
    }

    bool IsHeld() const { return m_Brush.IsHeld() || m_Sun.IsHeld(); }

    // Each is true when the event is not the view's any longer.
    bool Press(const QKeyEvent& event)
    {
        return (!m_Sun.IsHeld() && m_Brush.Press(event)) ||
               (!m_Brush.IsHeld() && m_Sun.Press(event));
    }

    bool Release(const QKeyEvent& event) { return m_Brush.Release(event) || m_Sun.Release(event); }

    bool Move(const QPointF& position)
    {
        const bool bBrush = m_Brush.Move(position); // both note where the mouse is
        return m_Sun.Move(position) || bBrush;
    }

    bool TakesKey(const QKeyEvent& event) const
    {
        return m_Brush.TakesKey(event) || m_Sun.TakesKey(event);
    }

    void End()
    {
        m_Brush.End();
        m_Sun.End();
    }

private:
    CBrushHand m_Brush;
    CSunHand m_Sun;
};
