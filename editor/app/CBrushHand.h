#pragma once

#include "editor/app/SHeldKey.h"
#include "host/IPluginTools.h"

#include <QPointF>
#include <QString>
#include <QTimer>

#include <functional>
#include <optional>
#include <string>

class CCursorNote;
class CKeyBindings;
class CViewInput;
class QKeyEvent;

constexpr char HAND_COMMAND[] = "brush.hold_"; // and "size", "power", "hardness" or "amount"

// While a key is held, the mouse of a view changes a value of the brush, and digits say it exactly.
// The footprint stays where it was when the key went down. Owned by the view, as all that is
// borrowed here. UI thread.
class CBrushHand
{
public:
    // pTools: null for a plug-in without. onEnd: the mouse is the view's again.
    CBrushHand(IPluginTools* pTools,
               const CKeyBindings& keys,
               CViewInput& input,
               CCursorNote& note,
               std::function<void()> onEnd);

    bool IsHeld() const { return m_pValue != nullptr; }

    // Each is true when the event is not the view's any longer. Positions are the widget's.
    bool Press(const QKeyEvent& event);
    bool Release(const QKeyEvent& event);
    bool Move(const QPointF& position);
    // Whether the key is meant for the value and not for a command of the window.
    bool TakesKey(const QKeyEvent& event) const;

    void End(); // with the value as it is; nothing when no key is held

private:
    struct SValue;
    static const SValue VALUES[];

    const SValue* FindValue(const QKeyEvent& event) const;
    bool Begin(const SValue& value, const QKeyEvent& event);
    bool IsSameTool() const;
    void Type(const QKeyEvent& event);
    void TakeTyped();
    void Set(float fValue);
    void Show();

    IPluginTools* m_pTools;
    const CKeyBindings& m_Keys;
    CViewInput& m_Input;
    CCursorNote& m_Note;
    std::function<void()> m_OnEnd;
    const SValue* m_pValue = nullptr; // null while no key is held
    SHeldKey m_Held;
    std::string m_Function; // of the tool whose value it is
    float m_Old = 0.0F;
    float m_From = 0.0F; // the value at m_Start
    QPointF m_At;        // of the mouse
    std::optional<QPointF> m_Start;
    QString m_Typed;
    QTimer m_NoteTimer; // the note stays as long as the key is held
};
