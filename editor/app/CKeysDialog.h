#pragma once

#include "editor/core/CKeyBindings.h"

#include <QDialog>

class CKeyEdit;
class QDialogButtonBox;
class QLabel;
class QTreeWidget;

// Shows every command with its key and lets the keys be changed. Two commands with one key are
// shown, and the dialog can only be cancelled as long as there are any. Works on a copy.
class CKeysDialog : public QDialog
{
public:
    CKeysDialog(QWidget* pParent, const CKeyBindings& keys);

    const CKeyBindings& GetKeys() const { return m_Keys; } // as they were changed

private:
    void Fill();
    void Choose();
    void SetKey(const SKeyChord& key);
    void ShowClash();

    CKeyBindings m_Keys;
    QTreeWidget* m_pList; // all the dialog's
    CKeyEdit* m_pKey;
    QLabel* m_pClash;
    QDialogButtonBox* m_pButtons;
};
