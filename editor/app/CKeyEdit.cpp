#include "editor/app/CKeyEdit.h"

#include "editor/app/KeyChords.h"
#include "editor/core/Words.h"

#include <QKeyEvent>

namespace
{

bool IsForDialog(int iKey)
{
    return iKey == Qt::Key_Tab || iKey == Qt::Key_Backtab || iKey == Qt::Key_Escape ||
           iKey == Qt::Key_Return || iKey == Qt::Key_Enter;
}

bool IsModifier(int iKey)
{
    return iKey == Qt::Key_Shift || iKey == Qt::Key_Control || iKey == Qt::Key_Alt ||
           iKey == Qt::Key_Meta || iKey == Qt::Key_AltGr || iKey == 0;
}

} // namespace

CKeyEdit::CKeyEdit(QWidget* pParent, std::function<void(SKeyChord)> onKey)
    : QLineEdit(pParent)
    , m_OnKey(std::move(onKey))
{
    setReadOnly(true);
    setPlaceholderText(Words("none"));
}

void CKeyEdit::Show(const SKeyChord& chord)
{
    setText(GetSequence(chord).toString(QKeySequence::NativeText));
}

bool CKeyEdit::event(QEvent* pEvent)
{
    const bool bPress = pEvent->type() == QEvent::KeyPress;
    if (!bPress && pEvent->type() != QEvent::ShortcutOverride)
    {
        return QLineEdit::event(pEvent);
    }
    const auto* pKey = static_cast<QKeyEvent*>(pEvent);
    if (IsForDialog(pKey->key()))
    {
        return QLineEdit::event(pEvent);
    }
    pEvent->accept(); // no shortcut of the dialog either
    if (bPress && !IsModifier(pKey->key()))
    {
        const SKeyChord chord = GetChord(*pKey);
        Show(chord);
        m_OnKey(chord);
    }
    return true;
}
