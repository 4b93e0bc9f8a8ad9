#pragma once

#include "editor/core/CKeyBindings.h"

#include <QLineEdit>

#include <functional>

// Shows a key chord and takes the next one that is pressed at once. Tab, Return and Escape stay the
// dialog's.
class CKeyEdit : public QLineEdit
{
public:
    CKeyEdit(QWidget* pParent, std::function<void(SKeyChord)> onKey);

    void Show(const SKeyChord& chord);

protected:
    bool event(QEvent* pEvent) override;

private:
    std::function<void(SKeyChord)> m_OnKey;
};
