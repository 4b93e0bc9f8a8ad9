#pragma once

#include "editor/app/SMouseBindings.h"
#include "editor/core/CKeyBindings.h"

#include <QDialog>

#include <array>

class CKeyEdit;
class QCheckBox;
class QComboBox;
class QDialogButtonBox;
class QLabel;
class QTreeWidget;
class QVBoxLayout;

// Shows every command with its key and lets the keys be changed. Two commands with one key are
// shown, and the dialog can only be cancelled as long as there are any. Works on a copy.
class CKeysDialog : public QDialog
{
public:
    CKeysDialog(QWidget* pParent, const CKeyBindings& keys, const SMouseBindings& mouse);

    const CKeyBindings& GetKeys() const { return m_Keys; } // as they were changed

    const SMouseBindings& GetMouse() const { return m_Mouse; } // the same

private:
    void Fill();
    void Choose();
    void SetKey(const SKeyChord& key);
    void ShowClash();

    void AddMouse(QVBoxLayout& layout);
    void ShowMouse();

    CKeyBindings m_Keys;
    SMouseBindings m_Mouse;
    QTreeWidget* m_pList; // all the dialog's
    CKeyEdit* m_pKey;
    std::array<QComboBox*, 3> m_MouseBoxes = {}; // orbit, pan, zoom
    QCheckBox* m_pFingers;
    QLabel* m_pClash;
    QDialogButtonBox* m_pButtons;
};
